#pragma once

#include <gtkmm/box.h>
#include <gtkmm/button.h>

#include <functional>

namespace pagora {

// A notice in a line of a reader window, with a button that closes it. Main thread only.
class ClosableNote : public Gtk::Box {
protected:
    ClosableNote();
    // Appends the button. `whenDone` is called when the user has closed the notice.
    Gtk::Button& addCloseButton(const std::function<void()>& whenDone);
};

}
