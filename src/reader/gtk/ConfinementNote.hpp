#pragma once

#include <gtkmm/box.h>
#include <gtkmm/menubutton.h>
#include <gtkmm/popover.h>

#include <functional>

namespace pagora {

// The line that says that the book's own scripts are off because this system lets no program confine its processes,
// with an explanation to unfold. Main thread.
class ConfinementNote : public Gtk::Box {
public:
    // `whenDone`: the person has closed the line or the explanation.
    explicit ConfinementNote(std::function<void()> whenDone);

    Gtk::Popover& explanation() { return _explanation; }

private:
    Gtk::MenuButton _more;
    Gtk::Popover _explanation;
};

}
