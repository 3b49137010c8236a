#pragma once

#include "base/GObjectPtr.hpp"
#include "desktop/Window.hpp"
#include "desktop/gtk/Toplevel.hpp"

#include <gtkmm/eventcontroller.h>
#include <gtkmm/window.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace pagora {

// One of the windows that share a toplevel. Has its own content, title and frame. It is visible while it is ordered in,
// and key while it is in front and the toplevel is active. Main thread.
class SharedWindow : public Window, public Toplevel::Member {
public:
    // The content outlives it and has no parent. Controls of the content belong to the layout, and so to its title bar.
    SharedWindow(Toplevel& toplevel, Gtk::Widget& content);
    ~SharedWindow() override;

    void setTitle(const std::string& title) override;
    const std::string& title() const override { return _title; }
    // Called when the title has changed.
    void setTitleAction(std::function<void()> action) { _titleAction = std::move(action); }
    // The desktop places windows, so the origin is the one that was last set.
    Rect frame() const override;
    void setFrame(const Rect& frame) override;
    // Without animation when the window is not visible, the desktop decides its size, or animations are disabled.
    void animateToFrame(const Rect& frame) override;
    void center() override { }

    void orderFront() override;
    void makeKeyAndOrderFront() override;
    void orderOut() override;
    bool isVisible() const override { return _visible; }
    bool isKeyWindow() const override { return _key; }
    bool isFront() const;

    bool isFullScreen() const override;
    void toggleFullScreen() override;
    Reply<void> laidOut() override;

    // Called when the toplevel has entered or left full screen with this window in front, or because this window asked
    // for it; with which of the two.
    void setFullScreenAction(std::function<void(bool isFullScreen)> action) { _fullScreenAction = std::move(action); }
    // Called when this window has come to the front or left it, and when the toplevel has entered or left full screen
    // while it is in front.
    void setStateAction(std::function<void()> action) { _stateAction = std::move(action); }
    // Called when the toplevel is about to close while this window is in front. Returns whether it may.
    void setCloseAction(std::function<bool()> action) { _closeAction = std::move(action); }
    // The controller is attached to the toplevel while this window is in front.
    void addController(const Glib::RefPtr<Gtk::EventController>& controller);

    // The toplevel's.
    Gtk::Window& window();
    // The widget of this window that has the toplevel's focus; null for none.
    Gtk::Widget* focus();

private:
    using Size = Toplevel::Size;

    // A running change of size.
    struct Animation {
        Size from;
        Size to;
        // Microseconds of the frame clock.
        std::int64_t start = 0;
        std::int64_t lastStep = 0;
        double progress = 0;
        bool isOver = false;
    };

    Gtk::Widget& content() override { return _content; }
    void didComeToFront() override;
    void willLeaveFront() override;
    void stateDidChange() override;
    void activeDidChange() override;
    void fullScreenDidChange(bool isFullScreen) override;
    bool shouldClose() override;
    void rememberFocus(Gtk::Widget* focus) override;
    bool restoreFocus() override;
    bool showStep(Animation& animation, std::int64_t time);
    void endAnimation();
    void stopAnimation();
    std::optional<Size> contentSize() const;

    Toplevel& _toplevel;
    Gtk::Widget& _content;
    std::string _title;
    double _x = 0;
    double _y = 0;
    Toplevel::Placement _placement;
    // Null while no change of size is running.
    std::shared_ptr<Animation> _animation;
    bool _visible = false;
    bool _key = false;
    GObjectPtr<GtkWidget> _focus;
    std::vector<Glib::RefPtr<Gtk::EventController>> _controllers;
    std::function<void()> _titleAction;
    std::function<void(bool)> _fullScreenAction;
    std::function<void()> _stateAction;
    std::function<bool()> _closeAction;
    // Expires with the window, for callbacks that come later.
    std::shared_ptr<SharedWindow*> _self = std::make_shared<SharedWindow*>(this);
};

}
