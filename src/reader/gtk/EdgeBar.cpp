#include "reader/gtk/EdgeBar.hpp"

#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/root.h>

namespace pagora {

namespace {

// The bar is shown when the pointer is at most this far from the edge, in points.
constexpr double revealDistance = 2;
// The bar is hidden when the pointer is more than this far from the bar, in points.
constexpr double hideDistance = 12;
// The duration of the animation in milliseconds.
constexpr unsigned duration = 180;

}

EdgeBar::EdgeBar(Edge edge, Gtk::Widget& bar, Gtk::Box& place, Gtk::Overlay& area)
    : _edge(edge)
    , _bar(bar)
    , _place(place)
    , _area(area)
    , _before(bar.get_prev_sibling())
{
    const bool isTop = edge == Edge::Top;
    _revealer.set_valign(isTop ? Gtk::Align::START : Gtk::Align::END);
    _revealer.set_transition_type(
        isTop ? Gtk::RevealerTransitionType::SLIDE_DOWN : Gtk::RevealerTransitionType::SLIDE_UP);
    _revealer.set_transition_duration(duration);
    _revealer.set_visible(false);
    _area.add_overlay(_revealer);
    const auto pointer = Gtk::EventControllerMotion::create();
    pointer->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _connections.push_back(pointer->signal_enter().connect([this](double, double y) { pointerIsAt(y); }));
    _connections.push_back(pointer->signal_motion().connect([this](double, double y) { pointerIsAt(y); }));
    _area.add_controller(pointer);
    _pointer = pointer;
}

EdgeBar::~EdgeBar()
{
    for (auto& connection : _connections)
        connection.disconnect();
    _area.remove_controller(_pointer);
    setFullScreen(false);
    _area.remove_overlay(_revealer);
}

void EdgeBar::setFullScreen(bool isFullScreen)
{
    if (_isFullScreen == isFullScreen)
        return;
    _isFullScreen = isFullScreen;
    _isCalled = false;
    _revealer.set_reveal_child(false);
    _bar.reference();
    if (isFullScreen) {
        _place.remove(_bar);
        _revealer.set_child(_bar);
    } else {
        _revealer.unset_child();
        if (_before)
            _bar.insert_after(_place, *_before);
        else
            _place.prepend(_bar);
    }
    _bar.unreference();
    _revealer.set_visible(isFullScreen);
}

void EdgeBar::setCalled(bool isCalled)
{
    _isCalled = isCalled;
    if (_isFullScreen)
        _revealer.set_reveal_child(isCalled);
}

void EdgeBar::pointerIsAt(double y)
{
    if (!_isFullScreen || _isCalled)
        return;
    const double distance = _edge == Edge::Top ? y : _area.get_height() - y;
    if (distance <= revealDistance)
        _revealer.set_reveal_child(true);
    else if (distance > _bar.get_height() + hideDistance && !hasFocus())
        _revealer.set_reveal_child(false);
}

bool EdgeBar::hasFocus() const
{
    const auto* const root = _area.get_root();
    const auto* const focus = root ? root->get_focus() : nullptr;
    return focus && focus->is_ancestor(_bar);
}

}
