#include "contents/gtk/TocViewGtk.hpp"

#include "contents/gtk/TocRow.hpp"
#include "contents/tocLinkTextField.hpp"
#include "desktop/gtk/DisplayText.hpp"

#include <gtkmm/adjustment.h>
#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/noselection.h>
#include <gtkmm/root.h>
#include <gtkmm/signallistitemfactory.h>
#include <gtkmm/stringlist.h>

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

// Letters typed within this time extend one search. In microseconds.
constexpr gint64 typingPause = 1'000'000;
constexpr std::size_t maxLabelLength = 1'000;

// Returns the number of pixels in a point of the contents.
double pixelsInPoint()
{
    return TocRow::rowHeight() / tocLinkTextField::height;
}

}

TocViewGtk::TocViewGtk(Gtk::ListView& list, Gtk::ScrolledWindow& clip, ActionQueue& queue)
    : _list(list)
    , _clip(clip)
    , _queue(queue)
{
    connectRows();
    connectPointer();
    connectKeys();
}

TocViewGtk::~TocViewGtk()
{
    _hovered.reset();
    for (auto& connection : _connections)
        connection.disconnect();
    for (const auto& controller : _controllers)
        _list.remove_controller(controller);
    for (const auto& [tag, row] : _rows)
        row->setLink(nullptr);
}

void TocViewGtk::connectRows()
{
    const auto factory = Gtk::SignalListItemFactory::create();
    factory->signal_setup().connect(
        [](const Glib::RefPtr<Gtk::ListItem>& item) { item->set_child(*Gtk::make_managed<TocRow>()); });
    _connections.push_back(factory->signal_bind().connect(sigc::mem_fun(*this, &TocViewGtk::bind)));
    _connections.push_back(factory->signal_unbind().connect(sigc::mem_fun(*this, &TocViewGtk::unbind)));
    _list.set_factory(factory);

    const auto scroll = _clip.get_vadjustment();
    _connections.push_back(scroll->signal_changed().connect([this] { scrollWherePending(); }));
    // Scrolling may move another link under the pointer.
    _connections.push_back(scroll->signal_value_changed().connect([this] { pointerIsAt(_pointerY); }));
}

void TocViewGtk::connectPointer()
{
    const auto motion = Gtk::EventControllerMotion::create();
    _connections.push_back(motion->signal_enter().connect([this](double, double y) { pointerIsAt(y); }));
    _connections.push_back(motion->signal_motion().connect([this](double, double y) { pointerIsAt(y); }));
    _connections.push_back(motion->signal_leave().connect([this] { pointerIsAt({}); }));

    // The click is claimed before the rows get it, so that the focus stays on the page.
    const auto click = Gtk::GestureClick::create();
    click->set_button(GDK_BUTTON_PRIMARY);
    click->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _connections.push_back(click->signal_pressed().connect([this, gesture = click.get()](int, double, double y) {
        gesture->set_state(Gtk::EventSequenceState::CLAIMED);
        if (const auto* link = linkAt(y))
            open(link->tag());
    }));
    for (const Glib::RefPtr<Gtk::EventController>& controller :
        { Glib::RefPtr<Gtk::EventController>(motion), Glib::RefPtr<Gtk::EventController>(click) }) {
        _list.add_controller(controller);
        _controllers.push_back(controller);
    }
}

void TocViewGtk::connectKeys()
{
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _connections.push_back(keys->signal_key_pressed().connect(
        [this](guint keyval, guint, Gdk::ModifierType state) { return keyPressed(keyval, state); }, false));
    _list.add_controller(keys);
    _controllers.push_back(keys);

    // Focus enters at the current chapter.
    const auto focusing = Gtk::EventControllerFocus::create();
    _connections.push_back(focusing->signal_enter().connect([this] {
        _queue.post([this] {
            const auto isActive = [](const auto* link) { return link && link->isActive(); };
            const auto active = std::find_if(_links.begin(), _links.end(), isActive);
            if (active != _links.end() && (focused() || _list.has_focus()))
                focus((*active)->tag());
            else if (_list.has_focus() && !_links.empty())
                focus(0);
        });
    }));
    _list.add_controller(focusing);
    _controllers.push_back(focusing);
}

bool TocViewGtk::keyPressed(guint keyval, Gdk::ModifierType state)
{
    const auto tag = focused();
    const auto other = Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::ALT_MASK | Gdk::ModifierType::SUPER_MASK;
    if (!tag || (state & other) != Gdk::ModifierType())
        return false;
    const bool isTyping = !_typed.empty() && g_get_monotonic_time() < _typingEnds;
    const bool opens = keyval == GDK_KEY_Return || keyval == GDK_KEY_KP_Enter || keyval == GDK_KEY_ISO_Enter;
    if (opens || (keyval == GDK_KEY_space && !isTyping)) {
        if (linkWithTag(*tag))
            open(*tag);
        return true;
    }
    const gunichar character = gdk_keyval_to_unicode(keyval);
    if (!g_unichar_isprint(character))
        return false;
    type(character);
    return true;
}

void TocViewGtk::type(gunichar character)
{
    const gint64 now = g_get_monotonic_time();
    if (now >= _typingEnds)
        _typed.clear();
    _typed = (_typed + Glib::ustring(1, character)).casefold();
    _typingEnds = now + typingPause;

    // The first letter moves to the next match; further letters may keep the focused entry.
    const auto count = static_cast<std::int64_t>(_links.size());
    const auto first = focused().value_or(0) + (_typed.size() == 1 ? 1 : 0);
    for (std::int64_t i = 0; i < count; ++i) {
        const auto tag = (first + i) % count;
        const auto* const link = linkWithTag(tag);
        if (link && displayText(link->text(), maxLabelLength).casefold().compare(0, _typed.size(), _typed) == 0)
            return focus(tag);
    }
}

void TocViewGtk::focus(std::int64_t tag)
{
    _list.activate_action("list.scroll-to-item", Glib::Variant<guint32>::create(static_cast<guint32>(tag)));
    if (const auto row = _rows.find(tag); row != _rows.end())
        row->second->get_parent()->grab_focus();
}

std::optional<std::int64_t> TocViewGtk::focused() const
{
    const auto* const root = _list.get_root();
    auto* const focus = root ? root->get_focus() : nullptr;
    if (!focus || focus->get_parent() != &_list)
        return std::nullopt;
    const auto row = std::find_if(
        _rows.begin(), _rows.end(), [focus](const auto& entry) { return entry.second->get_parent() == focus; });
    return row == _rows.end() ? std::nullopt : std::optional(row->first);
}

std::string TocViewGtk::activeTitle() const
{
    for (const auto* link : _links) {
        if (link && link->isActive())
            return link->text();
    }
    return {};
}

Rect TocViewGtk::frame() const
{
    return { 0, 0, _clip.get_width() / pixelsInPoint(), _height.value_or(clipHeight()) };
}

double TocViewGtk::clipHeight() const
{
    return _clip.get_height() / pixelsInPoint();
}

void TocViewGtk::removeAllSubviews()
{
    ++_generation;
    _hovered.reset();
    _height.reset();
    _pendingBottom.reset();
    for (const auto& [tag, row] : _rows)
        row->setLink(nullptr);
    _links.clear();
    _list.set_model({});
    tellLinksChanged();
}

void TocViewGtk::addSubviews(const std::vector<tocLinkTextField*>& links)
{
    ++_generation;
    for (auto* const link : links) {
        const auto tag = static_cast<std::size_t>(link->tag());
        if (_links.size() <= tag)
            _links.resize(tag + 1);
        _links[tag] = link;
    }
    std::vector<Glib::ustring> texts(_links.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (_links[i])
            texts[i] = displayText(_links[i]->text(), 200);
    }
    _list.set_model(Gtk::NoSelection::create(Gtk::StringList::create(texts)));
    // The pointer may already be over the links.
    pointerIsAt(_pointerY);
    tellLinksChanged();
}

tocLinkTextField* TocViewGtk::linkWithTag(std::int64_t tag) const
{
    return tag >= 0 && tag < static_cast<std::int64_t>(_links.size()) ? _links[tag] : nullptr;
}

tocLinkTextField* TocViewGtk::linkAt(double y) const
{
    const double fromTop = y + _clip.get_vadjustment()->get_value();
    return linkWithTag(static_cast<std::int64_t>(std::floor(fromTop / TocRow::rowHeight())));
}

void TocViewGtk::bind(const Glib::RefPtr<Gtk::ListItem>& item)
{
    auto* const row = dynamic_cast<TocRow*>(item->get_child());
    if (!row)
        return;
    const auto tag = static_cast<std::int64_t>(item->get_position());
    item->set_activatable(false);
    row->setLink(linkWithTag(tag));
    _rows[tag] = row;
    describe(*row);
}

void TocViewGtk::unbind(const Glib::RefPtr<Gtk::ListItem>& item)
{
    auto* const row = dynamic_cast<TocRow*>(item->get_child());
    if (!row)
        return;
    std::erase_if(_rows, [row](const auto& entry) { return entry.second == row; });
    row->setLink(nullptr);
}

// Assistive technology gets the name from the list item around the row.
void TocViewGtk::describe(TocRow& row)
{
    auto* const item = row.get_parent();
    if (!item || !row.link())
        return;
    auto* const accessible = GTK_ACCESSIBLE(item->gobj());
    gtk_accessible_update_property(
        accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, displayText(row.link()->text(), maxLabelLength).c_str(), -1);
    gtk_accessible_update_state(accessible, GTK_ACCESSIBLE_STATE_SELECTED, row.link()->isActive(), -1);
}

void TocViewGtk::setNeedsDisplay(std::int64_t tag)
{
    if (const auto row = _rows.find(tag); row != _rows.end()) {
        describe(*row->second);
        row->second->queue_draw();
    }
    tellLinksChanged();
}

void TocViewGtk::tellLinksChanged()
{
    if (_linksChanged)
        _linksChanged();
}

void TocViewGtk::scrollToPoint(double, double y)
{
    _pendingBottom = y;
    scrollWherePending();
}

void TocViewGtk::scrollWherePending()
{
    const auto scroll = _clip.get_vadjustment();
    const double rows = static_cast<double>(_links.size()) * TocRow::rowHeight();
    const bool isLaidOut = scroll->get_page_size() > 0 && scroll->get_upper() >= rows;
    if (!_pendingBottom || !isLaidOut)
        return;
    const double top = (frame().height - *_pendingBottom) * pixelsInPoint() - scroll->get_page_size();
    _pendingBottom.reset();
    scroll->set_value(std::clamp(top, 0.0, std::max(0.0, scroll->get_upper() - scroll->get_page_size())));
}

void TocViewGtk::pointerIsAt(std::optional<double> y)
{
    _pointerY = y;
    const auto* const under = y ? linkAt(*y) : nullptr;
    const auto tag = under ? std::optional(under->tag()) : std::nullopt;
    if (tag == _hovered)
        return;
    const auto left = std::exchange(_hovered, tag);
    if (auto* const link = left ? linkWithTag(*left) : nullptr)
        link->mouseExited();
    if (auto* const link = tag ? linkWithTag(*tag) : nullptr)
        link->mouseEntered();
}

void TocViewGtk::open(std::int64_t tag)
{
    _queue.post([this, tag, generation = _generation] {
        auto* const link = linkWithTag(tag);
        if (link && generation == _generation)
            link->mouseDown();
    });
}

}
