#include "library_window/gtk/ToolBarMenu.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"

#include <gtkmm/button.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

namespace pagora {

namespace {

// Visits the content of every button that has an image and a label.
template <typename Visit>
void visitFaces(Gtk::Widget& widget, const Visit& visit)
{
    for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling()) {
        if (dynamic_cast<Gtk::Button*>(&widget) && dynamic_cast<Gtk::Image*>(child->get_first_child()))
            visit(*child);
        else
            visitFaces(*child, visit);
    }
}

}

ToolBarMenu::ToolBarMenu(Gtk::Widget& toolBar)
    : _toolBar(toolBar)
    , _items({ { _("Icon and Text"), "toolbar.display-mode::icon-and-text" },
          { _("Icon Only"), "toolbar.display-mode::icon-only" }, { _("Text Only"), "toolbar.display-mode::text-only" },
          { _("Use Small Size"), "toolbar.small-size" }, { _("Customize Toolbar…"), "toolbar.customize" } })
    , _model(Gio::Menu::create())
    , _actions(Gio::SimpleActionGroup::create())
    , _popover(_model)
{
    addActions();
    rebuild();
    leaveUnnamed(_popover);
    setAccessibleName(_popover, _("View"));
    _popover.set_parent(toolBar);
    _popover.set_has_arrow(false);
    _popover.set_halign(Gtk::Align::START);

    // Captured before the title bar, which would open the window's own menu.
    const auto rightClick = Gtk::GestureClick::create();
    rightClick->set_button(GDK_BUTTON_SECONDARY);
    rightClick->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    rightClick->signal_pressed().connect([this, gesture = rightClick.get()](int, double x, double y) {
        gesture->set_state(Gtk::EventSequenceState::CLAIMED);
        popUp(x, y);
    });
    toolBar.add_controller(rightClick);
}

ToolBarMenu::~ToolBarMenu()
{
    _popover.unparent();
}

void ToolBarMenu::addActions()
{
    const auto mode = _actions->add_action_radio_string("display-mode", "icon-and-text");
    mode->signal_activate().connect([this, action = mode.get()](const Glib::VariantBase& parameter) {
        action->change_state_variant(parameter);
        setDisplayMode(Glib::VariantBase::cast_dynamic<Glib::Variant<Glib::ustring>>(parameter).get());
    });
    const auto small = _actions->add_action_bool("small-size", false);
    small->signal_activate().connect([this, action = small.get()](const Glib::VariantBase&) {
        bool isSmall = false;
        action->get_state(isSmall);
        action->change_state(!isSmall);
        if (isSmall)
            _toolBar.remove_css_class("small-size");
        else
            _toolBar.add_css_class("small-size");
    });
    _toolBar.insert_action_group("toolbar", _actions);
}

void ToolBarMenu::setDisplayMode(const Glib::ustring& mode)
{
    visitFaces(_toolBar, [&](Gtk::Widget& face) {
        for (auto* part = face.get_first_child(); part; part = part->get_next_sibling())
            part->set_visible(dynamic_cast<Gtk::Image*>(part) ? mode != "text-only" : mode != "icon-only");
    });
}

void ToolBarMenu::setItemHidden(int index, bool hidden)
{
    if (index < 0 || index >= numberOfItems())
        return;
    _items[index].hidden = hidden;
    rebuild();
}

void ToolBarMenu::insertSeparator(int index)
{
    if (index < 0 || index > numberOfItems())
        return;
    _items.insert(_items.begin() + index, Item {});
    rebuild();
}

std::vector<std::string> ToolBarMenu::visibleTitles() const
{
    std::vector<std::string> titles;
    for (const auto& item : _items) {
        if (!item.hidden)
            titles.push_back(item.isSeparator() ? "-" : item.title);
    }
    return titles;
}

void ToolBarMenu::rebuild()
{
    _model->remove_all();
    auto section = Gio::Menu::create();
    _model->append_section(section);
    for (const auto& item : _items) {
        if (item.hidden)
            continue;
        if (item.isSeparator()) {
            section = Gio::Menu::create();
            _model->append_section(section);
        } else {
            section->append(item.title, item.action);
        }
    }
}

void ToolBarMenu::popUp(double x, double y)
{
    _popover.set_pointing_to(Gdk::Rectangle(static_cast<int>(x), static_cast<int>(y), 1, 1));
    _popover.popup();
}

}
