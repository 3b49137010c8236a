#pragma once

#include "page/FlickGesture.hpp"

#include <gtkmm/widget.h>

#include <functional>

namespace pagora {

// Intercepts gestures before the page gets them: everything that scrolls or zooms on a touchpad, and horizontal
// one-finger drags on a touchscreen. Reports those that turn a page. Main thread only.
class PageGestures {
public:
    // `page` must outlive this object and must not deliver events afterwards.
    explicit PageGestures(Gtk::Widget& page);
    PageGestures(const PageGestures&) = delete;
    PageGestures& operator=(const PageGestures&) = delete;

    // Sets the callback for a gesture that turns a page. The distance is positive if the fingers move the page to the
    // right.
    void setFlickHandler(std::function<void(double)> handler) { _onFlick = std::move(handler); }

    // Called for a touchpad swipe with several fingers. Logs its start and does nothing else.
    static void swipeWithEvent(GdkTouchpadGesturePhase phase, unsigned fingers);

private:
    void takeScrolling(Gtk::Widget& page);
    void takePinches(Gtk::Widget& page);
    void takeDrags(Gtk::Widget& page);
    void turn(double dx);

    std::function<void(double)> _onFlick;
    FlickGesture _scroll;
    FlickGesture _drag;
    // True if the touch cannot turn a page any more: a second finger touched or text is being selected.
    bool _isDragSpent = false;
    int _fingers = 0;
};

}
