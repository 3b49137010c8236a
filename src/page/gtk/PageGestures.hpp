#pragma once

#include "page/FlickGesture.hpp"

#include <gtkmm/widget.h>

#include <functional>

namespace pagora {

// Takes the fingers' gestures on a page before the page sees them: everything that scrolls or scales on a touchpad, and
// a horizontal drag of one finger on a touchscreen. Tells of those that turn a page. Main thread.
class PageGestures {
public:
    // `page` outlives this, and hands out no more events afterwards.
    explicit PageGestures(Gtk::Widget& page);
    PageGestures(const PageGestures&) = delete;
    PageGestures& operator=(const PageGestures&) = delete;

    // Called once a gesture that turns a page: positive when the fingers move the page to the right.
    void setFlickHandler(std::function<void(double)> handler) { _onFlick = std::move(handler); }

    // A swipe of several fingers on a touchpad: it is logged when it begins, and does nothing.
    static void swipeWithEvent(GdkTouchpadGesturePhase phase, unsigned fingers);

private:
    void takeScrolling(Gtk::Widget& page);
    void takePinches(Gtk::Widget& page);
    void takeDrags(Gtk::Widget& page);
    void turn(double dx);

    std::function<void(double)> _onFlick;
    FlickGesture _scroll;
    FlickGesture _drag;
    // What the finger does is none of a page turn any more: there is another finger, or it selects text.
    bool _isDragSpent = false;
    int _fingers = 0;
};

}
