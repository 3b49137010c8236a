#include "page/gtk/PageGestures.hpp"

#include "base/Log.hpp"

#include <gtkmm/eventcontrollerlegacy.h>
#include <gtkmm/eventcontrollerscroll.h>
#include <gtkmm/gesturedrag.h>
#include <gtkmm/gesturelongpress.h>

#include <algorithm>
#include <string>
#include <utility>

namespace pagora {

namespace {

// Some displays report wheel steps for touchpad scrolling. A step is this many points.
constexpr double pointsPerStep = 15;

double pointsOf(const Gtk::EventControllerScroll& scrolling)
{
    auto* const controller = const_cast<GtkEventControllerScroll*>(scrolling.gobj());
    return gtk_event_controller_scroll_get_unit(controller) == GDK_SCROLL_UNIT_WHEEL ? pointsPerStep : 1;
}

}

PageGestures::PageGestures(Gtk::Widget& page)
{
    takeScrolling(page);
    takePinches(page);
    takeDrags(page);
}

void PageGestures::swipeWithEvent(GdkTouchpadGesturePhase phase, unsigned fingers)
{
    if (phase == GDK_TOUCHPAD_GESTURE_PHASE_BEGIN)
        log("Pagora -> swipeEvent: " + std::to_string(fingers) + " fingers");
}

void PageGestures::turn(double dx)
{
    if (dx != 0 && _onFlick)
        _onFlick(dx);
}

// Scroll deltas have the opposite sign of finger movement.
void PageGestures::takeScrolling(Gtk::Widget& page)
{
    auto scrolling = Gtk::EventControllerScroll::create();
    scrolling->set_flags(Gtk::EventControllerScroll::Flags::BOTH_AXES | Gtk::EventControllerScroll::Flags::KINETIC);
    scrolling->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    const auto& controller = *scrolling.get();
    scrolling->signal_scroll_begin().connect([this] { _scroll = {}; });
    scrolling->signal_scroll().connect(
        [this, &controller](double x, double y) {
            const double points = pointsOf(controller);
            _scroll.moveBy(-x * points, -y * points);
            return true;
        },
        false);
    // Called when the fingers were lifted, with their speed.
    scrolling->signal_decelerate().connect([this, &controller](double velocityX, double velocityY) {
        const double points = pointsOf(controller);
        turn(std::exchange(_scroll, {}).turnAtSpeed(-velocityX * points, -velocityY * points));
    });
    page.add_controller(scrolling);
}

void PageGestures::takePinches(Gtk::Widget& page)
{
    auto events = Gtk::EventControllerLegacy::create();
    events->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    events->signal_event().connect(
        [this](const Glib::RefPtr<const Gdk::Event>& event) {
            switch (event->get_event_type()) {
            case Gdk::Event::Type::TOUCHPAD_PINCH:
                return true;
            case Gdk::Event::Type::TOUCHPAD_SWIPE:
                swipeWithEvent(gdk_touchpad_event_get_gesture_phase(const_cast<GdkEvent*>(event->gobj())),
                    gdk_touchpad_event_get_n_fingers(const_cast<GdkEvent*>(event->gobj())));
                return true;
            case Gdk::Event::Type::TOUCH_BEGIN:
                _isDragSpent = ++_fingers > 1;
                return false;
            case Gdk::Event::Type::TOUCH_END:
            case Gdk::Event::Type::TOUCH_CANCEL:
                _fingers = std::max(0, _fingers - 1);
                return false;
            default:
                return false;
            }
        },
        false);
    page.add_controller(events);
}

void PageGestures::takeDrags(Gtk::Widget& page)
{
    auto pressing = Gtk::GestureLongPress::create();
    pressing->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    pressing->set_touch_only(true);
    auto dragging = Gtk::GestureDrag::create();
    dragging->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    dragging->set_touch_only(true);
    auto* const drag = dragging.get();
    // A long press selects text.
    pressing->signal_pressed().connect([this](double, double) { _isDragSpent = true; });
    dragging->signal_drag_begin().connect([this](double, double) {
        _drag = {};
        _isDragSpent = _fingers > 1;
    });
    dragging->signal_drag_update().connect([this, drag](double x, double y) {
        _drag.moveTo(x, y);
        if (_isDragSpent)
            drag->set_state(Gtk::EventSequenceState::DENIED);
        else if (_drag.isHorizontal())
            // The sequence is claimed, so that the page neither follows a link nor scrolls.
            drag->set_state(Gtk::EventSequenceState::CLAIMED);
    });
    dragging->signal_drag_end().connect([this](double x, double y) {
        _drag.moveTo(x, y);
        if (!std::exchange(_isDragSpent, true))
            turn(_drag.turnAtRest());
    });
    dragging->signal_cancel().connect([this](Gdk::EventSequence*) { _isDragSpent = true; });
    page.add_controller(pressing);
    page.add_controller(dragging);
}

}
