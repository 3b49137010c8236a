#include "library_views/gtk/BooksSurface.hpp"

#include <glibmm/main.h>
#include <gtkmm/bitset.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/eventcontrollerlegacy.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/native.h>
#include <gtkmm/root.h>

// Input of a library view: clicks, keys, drops and menus.
namespace pagora {

namespace {

// The key under which a cell stores its list item.
constexpr const char* listItemKey = "pagora-list-item";

}

void BooksSurface::watchInput(Gtk::Widget& view, Gtk::Widget& items)
{
    _items = &items;
    watchLeftButton(view);
    watchRightButton(view);
    watchKeys(view);
    _dropTarget = std::make_unique<FileDropTarget>(
        widget(), [this] { return _dropDelegate; },
        [this](const DropHover& hover) {
            if (_dragAction)
                _dragAction(hover);
        });
}

void BooksSurface::stopWatching()
{
    _clickReport.disconnect();
    _dropTarget = nullptr;
    _contextMenu = nullptr;
}

void BooksSurface::watchLeftButton(Gtk::Widget& view)
{
    // The items claim clicks, so releases are captured before the items get them, and reported when idle.
    const auto events = Gtk::EventControllerLegacy::create();
    events->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    events->signal_event().connect(
        [this, &view](const Glib::RefPtr<const Gdk::Event>& event) {
            if (event->get_event_type() == Gdk::Event::Type::BUTTON_RELEASE
                && event->get_button() == GDK_BUTTON_PRIMARY)
                reportClick(isOverItem(view, *event));
            return false;
        },
        false);
    view.add_controller(events);

    const auto beside = Gtk::GestureClick::create();
    beside->set_button(GDK_BUTTON_PRIMARY);
    beside->signal_pressed().connect([this, &view, &click = *beside.get()](int, double x, double y) {
        const auto* const pressed = view.pick(x, y);
        const auto held = click.get_current_event_state() & Gdk::ModifierType::CONTROL_MASK;
        if ((pressed == &view || pressed == _items) && held == Gdk::ModifierType())
            _selection->unselect_all();
    });
    view.add_controller(beside);
}

bool BooksSurface::isOverItem(Gtk::Widget& view, const Gdk::Event& event) const
{
    // The coordinates of events are relative to the window's surface.
    double x = 0;
    double y = 0;
    double left = 0;
    double top = 0;
    auto* const native = view.get_native();
    if (!native || !event.get_position(x, y))
        return false;
    native->get_surface_transform(left, top);
    auto& root = dynamic_cast<Gtk::Widget&>(*view.get_root());
    double viewX = 0;
    double viewY = 0;
    return root.translate_coordinates(view, x - left, y - top, viewX, viewY) && itemHolding(view.pick(viewX, viewY));
}

void BooksSurface::reportClick(bool onItem)
{
    if (onItem && _handler)
        _handler->userWillClick();
    _clickReport.disconnect();
    _clickReport = Glib::signal_idle().connect(
        [this] {
            if (_handler)
                _handler->mouseDown(1);
            return false;
        },
        Glib::PRIORITY_HIGH_IDLE);
}

void BooksSurface::watchRightButton(Gtk::Widget& view)
{
    const auto rightClick = Gtk::GestureClick::create();
    rightClick->set_button(GDK_BUTTON_SECONDARY);
    rightClick->signal_released().connect([this, &view](int, double x, double y) {
        auto* const item = itemHolding(view.pick(x, y));
        double menuX = 0;
        double menuY = 0;
        view.translate_coordinates(widget(), x, y, menuX, menuY);
        _menuPlace = Gdk::Rectangle(static_cast<int>(menuX), static_cast<int>(menuY), 1, 1);
        if (_handler)
            _handler->rightMouseUp(item ? indexOf(*item) : std::nullopt);
    });
    view.add_controller(rightClick);
}

void BooksSurface::watchKeys(Gtk::Widget& view)
{
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this, &view](guint key, guint, Gdk::ModifierType state) {
            const bool shift = (state & Gdk::ModifierType::SHIFT_MASK) != Gdk::ModifierType();
            if (key == GDK_KEY_Return || key == GDK_KEY_KP_Enter)
                return activateSelected();
            if (key != GDK_KEY_Menu && !(key == GDK_KEY_F10 && shift))
                return false;
            if (_handler)
                _handler->rightMouseUp(itemForKeys(view));
            return true;
        },
        false);
    view.add_controller(keys);
}

// A focused item handles the key itself. In newer versions of the toolkit the view may have the focus while an item is
// selected.
bool BooksSurface::activateSelected()
{
    const auto selected = _selection->get_selection();
    if (selected->get_size() != 1)
        return false;
    activate(selected->get_minimum());
    return true;
}

Gtk::Widget* BooksSurface::itemHolding(Gtk::Widget* widget) const
{
    while (widget && widget->get_parent() != _items)
        widget = widget->get_parent();
    return widget;
}

std::optional<std::size_t> BooksSurface::positionOf(Gtk::Widget& item)
{
    for (auto* widget = &item; widget; widget = widget->get_first_child()) {
        if (auto* const known = g_object_get_data(G_OBJECT(widget->gobj()), listItemKey))
            return gtk_list_item_get_position(GTK_LIST_ITEM(known));
    }
    return std::nullopt;
}

std::optional<std::size_t> BooksSurface::indexOf(Gtk::Widget& item) const
{
    const auto position = positionOf(item);
    const auto& shown = _model->books();
    return position && *position < shown.size() && showsContent() ? std::optional(shown.indexAt(*position))
                                                                  : std::nullopt;
}

std::optional<std::size_t> BooksSurface::itemForKeys(Gtk::Widget& view)
{
    auto* const root = view.get_root();
    auto* const focused = root ? itemHolding(root->get_focus()) : nullptr;
    graphene_rect_t bounds;
    if (focused && gtk_widget_compute_bounds(focused->gobj(), widget().gobj(), &bounds)) {
        _menuPlace = Gdk::Rectangle(static_cast<int>(bounds.origin.x + bounds.size.width / 2),
            static_cast<int>(bounds.origin.y + bounds.size.height / 2), 1, 1);
        return indexOf(*focused);
    }
    _menuPlace = Gdk::Rectangle(widget().get_width() / 2, widget().get_height() / 2, 1, 1);
    const auto& selected = _books.selectionIndexes();
    return selected.empty() ? std::nullopt : std::optional(selected.front());
}

void BooksSurface::popUpContextMenu(const BookMenu& menu)
{
    if (!_contextMenu)
        _contextMenu = std::make_unique<BookPopover>(widget());
    _contextMenu->popUp(menu, _menuPlace);
}

void BooksSurface::rememberItem(Gtk::Widget& cell, GtkListItem* item)
{
    g_object_set_data(G_OBJECT(cell.gobj()), listItemKey, item);
}

}
