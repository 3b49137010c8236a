#pragma once

#include "library_views/BookMenu.hpp"

#include <giomm/simpleactiongroup.h>
#include <gtkmm/popovermenu.h>
#include <gtkmm/widget.h>

namespace pagora {

// Shows context menus over a widget, one at a time. Main thread.
class BookPopover {
public:
    explicit BookPopover(Gtk::Widget& parent);
    ~BookPopover();

    // `place` is in the parent's points.
    void popUp(const BookMenu& menu, const Gdk::Rectangle& place);

    Gtk::PopoverMenu& popover() { return _popover; }
    // What was shown last.
    const BookMenu& menu() const { return _menu; }

private:
    Gtk::Widget& _parent;
    BookMenu _menu;
    Gtk::PopoverMenu _popover;
};

}
