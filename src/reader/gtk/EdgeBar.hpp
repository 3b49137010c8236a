#pragma once

#include <gtkmm/box.h>
#include <gtkmm/overlay.h>
#include <gtkmm/revealer.h>

#include <vector>

namespace pagora {

// A bar below the page. In full screen it overlays the page and is revealed by the pointer at the bottom edge or by a
// key. Main thread.
class EdgeBar {
public:
    // `bar` is a child of `place`, not the first; `page` is the overlay for full screen. All outlive this.
    EdgeBar(Gtk::Widget& bar, Gtk::Box& place, Gtk::Overlay& page);
    ~EdgeBar();
    EdgeBar(const EdgeBar&) = delete;
    EdgeBar& operator=(const EdgeBar&) = delete;

    void setFullScreen(bool isFullScreen);
    // Keeps it revealed in full screen.
    void setCalled(bool isCalled);
    // Whether it is visible; outside of full screen always.
    bool isRevealed() const { return !_isFullScreen || _revealer.get_reveal_child(); }

private:
    // Pixels from the page's top edge.
    void pointerIsAt(double y);

    Gtk::Widget& _bar;
    Gtk::Box& _place;
    Gtk::Overlay& _page;
    Gtk::Widget* _before;
    Gtk::Revealer _revealer;
    bool _isFullScreen = false;
    bool _isCalled = false;
    Glib::RefPtr<Gtk::EventController> _pointer;
    std::vector<sigc::connection> _connections;
};

}
