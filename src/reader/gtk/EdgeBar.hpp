#pragma once

#include <gtkmm/box.h>
#include <gtkmm/overlay.h>
#include <gtkmm/revealer.h>

#include <vector>

namespace pagora {

// A bar at an edge of a reader window: the header bar or the location. In full screen it overlays `area`, and is
// revealed by the pointer at its edge or by a key. Main thread only.
class EdgeBar {
public:
    enum class Edge : bool { Top, Bottom };
    // `bar` is a child of `place`, and returns there after full screen. All widgets must outlive this object.
    EdgeBar(Edge edge, Gtk::Widget& bar, Gtk::Box& place, Gtk::Overlay& area);
    ~EdgeBar();
    EdgeBar(const EdgeBar&) = delete;
    EdgeBar& operator=(const EdgeBar&) = delete;

    void setFullScreen(bool isFullScreen);
    // Keeps the bar revealed in full screen.
    void setCalled(bool isCalled);
    // Returns whether the bar is visible. Always true outside full screen.
    bool isRevealed() const { return !_isFullScreen || _revealer.get_reveal_child(); }

private:
    // Takes the distance of the pointer from the top of the area, in points.
    void pointerIsAt(double y);
    bool hasFocus() const;

    Edge _edge;
    Gtk::Widget& _bar;
    Gtk::Box& _place;
    Gtk::Overlay& _area;
    // The child of `place` before the bar, or null.
    Gtk::Widget* _before;
    Gtk::Revealer _revealer;
    bool _isFullScreen = false;
    bool _isCalled = false;
    Glib::RefPtr<Gtk::EventController> _pointer;
    std::vector<sigc::connection> _connections;
};

}
