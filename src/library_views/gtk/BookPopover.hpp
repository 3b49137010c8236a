#pragma once

#include "library_views/BookMenu.hpp"

#include <giomm/simpleactiongroup.h>
#include <gtkmm/popovermenu.h>
#include <gtkmm/widget.h>

#include <memory>

namespace pagora {

// Shows context menus over a widget, one at a time. Main thread only.
class BookPopover {
public:
    // `parent` must not be scrolled, or the menus would be clipped.
    explicit BookPopover(Gtk::Widget& parent)
        : _parent(parent)
    {
    }
    ~BookPopover();

    // `place` is in points of the parent.
    void popUp(const BookMenu& menu, const Gdk::Rectangle& place);

    // Null until a menu is shown.
    Gtk::PopoverMenu* popover() { return _popover.get(); }

private:
    void dropPopover();

    Gtk::Widget& _parent;
    // Created again for each menu.
    std::unique_ptr<Gtk::PopoverMenu> _popover;
};

}
