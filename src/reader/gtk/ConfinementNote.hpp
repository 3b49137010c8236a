#pragma once

#include "reader/gtk/ClosableNote.hpp"

#include <gtkmm/menubutton.h>
#include <gtkmm/popover.h>

#include <functional>

namespace pagora {

// A line that says that the book's scripts are disabled because this system does not allow confinement, with an
// explanation in a popover. Main thread only.
class ConfinementNote : public ClosableNote {
public:
    // `whenDone` is called when the user has closed the line or the explanation.
    explicit ConfinementNote(std::function<void()> whenDone);

    Gtk::Popover& explanation() { return _explanation; }

private:
    Gtk::MenuButton _more;
    Gtk::Popover _explanation;
};

}
