#pragma once

#include "desktop/Window.hpp"
#include "desktop/gtk/MainThread.hpp"

#include <gtkmm/window.h>

#include <atomic>
#include <vector>

namespace pagora {

// A small window of its own, like a dialog. It belongs to a layout, which outlives it. The desktop places windows: the
// origin of the frame is what was last set. Ordering a window in or out, and asking whether it is visible or key, may
// be done on any thread.
class DesktopWindow : public Window, protected MainThreadOwner {
public:
    explicit DesktopWindow(Gtk::Window& window);
    ~DesktopWindow() override;

    void setTitle(const std::string& title) override;
    Rect frame() const override;
    void setFrame(const Rect& frame) override;
    void animateToFrame(const Rect& frame) override { setFrame(frame); }
    // The desktop centres a window over the one that it is transient for.
    void center() override { }

    void orderFront() override;
    void makeKeyAndOrderFront() override;
    void orderOut() override;
    bool isVisible() const override { return _visible; }
    // The toolkit may leave a window active that was hidden while it had the keyboard.
    bool isKeyWindow() const override { return _active && _visible; }

    void toggleFullScreen() override { }
    Reply<void> laidOut() override { return Reply<void>::of(); }

    Gtk::Window& window() { return _window; }

private:
    Gtk::Window& _window;
    double _x = 0;
    double _y = 0;
    std::atomic<bool> _visible;
    std::atomic<bool> _active;
    std::vector<sigc::connection> _connections;
};

}
