#include "library_views/gtk/BookPopover.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"

#include <giomm/menu.h>

namespace pagora {

BookPopover::~BookPopover()
{
    dropPopover();
}

void BookPopover::dropPopover()
{
    if (_popover)
        _popover->unparent();
    _popover = nullptr;
}

void BookPopover::popUp(const BookMenu& menu, const Gdk::Rectangle& place)
{
    const auto model = Gio::Menu::create();
    const auto actions = Gio::SimpleActionGroup::create();
    auto section = Gio::Menu::create();
    model->append_section(section);
    for (std::size_t i = 0; i < menu.size(); ++i) {
        if (menu[i].isSeparator()) {
            section = Gio::Menu::create();
            model->append_section(section);
            continue;
        }
        const auto name = "item" + std::to_string(i);
        section->append(menu[i].title, "book." + name);
        actions->add_action(name, menu[i].action);
    }
    _parent.insert_action_group("book", actions);
    dropPopover();
    _popover = std::make_unique<Gtk::PopoverMenu>(model);
    leaveUnnamed(*_popover);
    setAccessibleName(*_popover, _("Books"));
    _popover->set_parent(_parent);
    _popover->set_has_arrow(false);
    _popover->set_halign(Gtk::Align::START);
    _popover->set_pointing_to(place);
    _popover->popup();
}

}
