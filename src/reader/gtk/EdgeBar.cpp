#include "reader/gtk/EdgeBar.hpp"

#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/root.h>

namespace pagora {

namespace {

// Distance in pixels at which the pointer reveals the bar, the distance at which it hides again, and the animation time
// in milliseconds.
constexpr double touch = 2;
constexpr double slack = 12;
constexpr unsigned duration = 180;

}

EdgeBar::EdgeBar(Gtk::Widget& bar, Gtk::Box& place, Gtk::Overlay& page)
    : _bar(bar)
    , _place(place)
    , _page(page)
    , _before(bar.get_prev_sibling())
{
    _revealer.set_valign(Gtk::Align::END);
    _revealer.set_transition_type(Gtk::RevealerTransitionType::SLIDE_UP);
    _revealer.set_transition_duration(duration);
    _revealer.set_visible(false);
    _page.add_overlay(_revealer);
    const auto pointer = Gtk::EventControllerMotion::create();
    pointer->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _connections.push_back(pointer->signal_enter().connect([this](double, double y) { pointerIsAt(y); }));
    _connections.push_back(pointer->signal_motion().connect([this](double, double y) { pointerIsAt(y); }));
    _page.add_controller(pointer);
    _pointer = pointer;
}

EdgeBar::~EdgeBar()
{
    for (auto& connection : _connections)
        connection.disconnect();
    _page.remove_controller(_pointer);
    setFullScreen(false);
    _page.remove_overlay(_revealer);
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
        _bar.insert_after(_place, *_before);
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
    const auto* const root = _page.get_root();
    const auto* const focus = root ? root->get_focus() : nullptr;
    if (y >= _page.get_height() - touch)
        _revealer.set_reveal_child(true);
    else if (y < _page.get_height() - _bar.get_height() - slack && !(focus && focus->is_ancestor(_bar)))
        _revealer.set_reveal_child(false);
}

}
