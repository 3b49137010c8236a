#include "library_views/gtk/BookPopover.hpp"

#include <giomm/menu.h>

namespace pagora {

BookPopover::BookPopover(Gtk::Widget& parent)
    : _parent(parent)
{
    _popover.set_parent(parent);
    _popover.set_has_arrow(false);
    _popover.set_halign(Gtk::Align::START);
}

BookPopover::~BookPopover()
{
    _popover.unparent();
}

void BookPopover::popUp(const BookMenu& menu, const Gdk::Rectangle& place)
{
    _menu = menu;
    const auto model = Gio::Menu::create();
    const auto actions = Gio::SimpleActionGroup::create();
    auto section = Gio::Menu::create();
    model->append_section(section);
    for (std::size_t i = 0; i < _menu.size(); ++i) {
        if (_menu[i].isSeparator()) {
            section = Gio::Menu::create();
            model->append_section(section);
            continue;
        }
        const auto name = "item" + std::to_string(i);
        section->append(_menu[i].title, "book." + name);
        actions->add_action(name, _menu[i].action);
    }
    _parent.insert_action_group("book", actions);
    _popover.set_menu_model(model);
    _popover.set_pointing_to(place);
    _popover.popup();
}

}
