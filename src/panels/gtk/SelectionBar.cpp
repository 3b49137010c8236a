#include "panels/gtk/SelectionBar.hpp"

#include "desktop/gtk/AccessibleNames.hpp"

#include <gtkmm/root.h>

#include <cmath>

namespace pagora {

namespace {

Gtk::Box& makeBar()
{
    auto* const bar = g_object_new(GTK_TYPE_BOX, "accessible-role", GTK_ACCESSIBLE_ROLE_TOOLBAR, nullptr);
    return *Glib::wrap(GTK_BOX(bar));
}

int naturalLength(const Gtk::Widget& widget, Gtk::Orientation orientation)
{
    int minimum = 0;
    int natural = 0;
    int minimumBaseline = -1;
    int naturalBaseline = -1;
    widget.measure(orientation, -1, minimum, natural, minimumBaseline, naturalBaseline);
    return natural;
}

}

SelectionBar::SelectionBar(
    Gtk::Overlay& place, const Glib::ustring& name, std::vector<Action> actions, std::function<void()> onLeave)
    : _place(place)
    , _actions(std::move(actions))
    , _onLeave(std::move(onLeave))
    , _bar(makeBar())
{
    _bar.add_css_class("selection-bar");
    _bar.set_visible(false);
    _bar.set_halign(Gtk::Align::START);
    _bar.set_valign(Gtk::Align::START);
    setAccessibleName(_bar, name);
    for (const auto& action : _actions) {
        auto* const button = Gtk::make_managed<Gtk::Button>(action.title);
        button->set_focus_on_click(false);
        if (!action.cssClass.empty())
            button->add_css_class(action.cssClass);
        if (!action.name.empty())
            setAccessibleName(*button, action.name);
        button->signal_clicked().connect([this, run = action.run] {
            hide();
            run();
        });
        _bar.append(*button);
    }
    _place.add_overlay(_bar);
}

SelectionBar::~SelectionBar()
{
    _place.remove_overlay(_bar);
}

void SelectionBar::show(const PlacedText& text)
{
    // A hidden widget has no size.
    _bar.set_visible(true);
    _bar.set_margin_start(0);
    _bar.set_margin_top(0);
    const Size size { static_cast<double>(naturalLength(_bar, Gtk::Orientation::HORIZONTAL)),
        static_cast<double>(naturalLength(_bar, Gtk::Orientation::VERTICAL)) };
    const Size view { static_cast<double>(_place.get_width()), static_cast<double>(_place.get_height()) };
    const auto bar = placeOfBar(text, size, view);
    // In right-to-left interfaces, the start margin is on the right.
    const bool fromRight = _bar.get_direction() == Gtk::TextDirection::RTL;
    const double start = fromRight ? view.width - bar.x - bar.width : bar.x;
    _bar.set_margin_start(static_cast<int>(std::lround(std::max(0.0, start))));
    _bar.set_margin_top(static_cast<int>(std::lround(bar.y)));
}

void SelectionBar::focus()
{
    if (auto* const first = _bar.get_first_child())
        first->grab_focus();
}

bool SelectionBar::hasFocus() const
{
    const auto* const root = _bar.get_root();
    const auto* const focus = root ? root->get_focus() : nullptr;
    return focus && focus->is_ancestor(_bar);
}

void SelectionBar::hide()
{
    const bool hadFocus = hasFocus();
    _bar.set_visible(false);
    if (hadFocus)
        _onLeave();
}

}
