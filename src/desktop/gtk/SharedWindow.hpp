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
// and key while it is in front and the toplevel is active. Main thread only.
class SharedWindow : public Window, public Toplevel::Member {
public:
    // `content` has no parent and must outlive this object. The controls of the content belong to the layout, as does
    // its title bar.
    SharedWindow(Toplevel& toplevel, Gtk::Widget& content);
    ~SharedWindow() override;

    void setTitle(const std::string& title) override;
    const std::string& title() const override { return _title; }
    // Sets the callback for a changed title.
    void setTitleAction(std::function<void()> action) { _titleAction = std::move(action); }
    // The desktop positions windows, so the origin is the one that was last set.
    Rect frame() const override;
    void setFrame(const Rect& frame) override;
    // Does not animate if the window is hidden, if the desktop decides its size, or if animations are disabled.
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

    // Sets the callback for entering and leaving full screen while this window is in front, or at its request.
    void setFullScreenAction(std::function<void(bool isFullScreen)> action) { _fullScreenAction = std::move(action); }
    // Sets the callback for this window coming to the front or leaving it, and for the toplevel entering or leaving
    // full screen while it is in front.
    void setStateAction(std::function<void()> action) { _stateAction = std::move(action); }
    // Sets the callback for closing the toplevel while this window is in front. It returns whether the toplevel may
    // close.
    void setCloseAction(std::function<bool()> action) { _closeAction = std::move(action); }
    // Adds a controller to the toplevel while this window is in front.
    void addController(const Glib::RefPtr<Gtk::EventController>& controller);

    // Returns the toplevel's window.
    Gtk::Window& window();
    // Returns this window's widget that has the toplevel's focus; null if there is none.
    Gtk::Widget* focus();

private:
    using Size = Toplevel::Size;

    // A running resize animation.
    struct Animation {
        Size from;
        Size to;
        // In microseconds of the frame clock.
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
    // Null while no animation is running.
    std::shared_ptr<Animation> _animation;
    bool _visible = false;
    bool _key = false;
    GObjectPtr<GtkWidget> _focus;
    std::vector<Glib::RefPtr<Gtk::EventController>> _controllers;
    std::function<void()> _titleAction;
    std::function<void(bool)> _fullScreenAction;
    std::function<void()> _stateAction;
    std::function<bool()> _closeAction;
    // Expires with the window. Used by delayed callbacks.
    std::shared_ptr<SharedWindow*> _self = std::make_shared<SharedWindow*>(this);
};

}
