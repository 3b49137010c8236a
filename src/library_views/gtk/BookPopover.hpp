#pragma once

#include "library_views/BookMenu.hpp"

#include <giomm/simpleactiongroup.h>
#include <gtkmm/popovermenu.h>
#include <gtkmm/widget.h>

#include <memory>

namespace pagora {

// Shows context menus over a widget, one at a time. Main thread.
class BookPopover {
public:
    // A scrolled parent would cut the menus.
    explicit BookPopover(Gtk::Widget& parent)
        : _parent(parent)
    {
    }
    ~BookPopover();

    // `place` is in the parent's points.
    void popUp(const BookMenu& menu, const Gdk::Rectangle& place);

    // Null until a menu is shown.
    Gtk::PopoverMenu* popover() { return _popover.get(); }

private:
    void dropPopover();

    Gtk::Widget& _parent;
    // Made anew for each menu.
    std::unique_ptr<Gtk::PopoverMenu> _popover;
};

}
