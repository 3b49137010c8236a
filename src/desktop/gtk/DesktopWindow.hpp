#pragma once

#include "desktop/Window.hpp"

#include <gtkmm/window.h>

namespace pagora {

// A separate toplevel such as a dialog. Its layout must outlive it. The desktop positions windows, so the origin of the
// frame is the one that was last set.
class DesktopWindow : public Window {
public:
    explicit DesktopWindow(Gtk::Window& window)
        : _window(window)
    {
    }

    void setTitle(const std::string& title) override;
    Rect frame() const override;
    void setFrame(const Rect& frame) override;
    void animateToFrame(const Rect& frame) override { setFrame(frame); }
    // The desktop centres a window over the one that it is transient for.
    void center() override { }

    void orderFront() override { _window.set_visible(true); }
    void makeKeyAndOrderFront() override { _window.present(); }
    void orderOut() override { _window.set_visible(false); }
    bool isVisible() const override { return _window.get_visible(); }
    // GTK may still report a hidden window as active if it had the keyboard.
    bool isKeyWindow() const override { return _window.is_active() && isVisible(); }

    void toggleFullScreen() override { }
    Reply<void> laidOut() override { return Reply<void>::of(); }

    Gtk::Window& window() { return _window; }

private:
    Gtk::Window& _window;
    double _x = 0;
    double _y = 0;
};

}
