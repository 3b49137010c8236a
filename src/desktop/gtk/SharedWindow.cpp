#include "desktop/gtk/SharedWindow.hpp"

#include <glibmm/main.h>
#include <gtkmm/settings.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace pagora {

namespace {

// In milliseconds. Covered and minimised windows are not laid out.
constexpr unsigned layoutTimeout = 1'000;

// The duration of a resize animation, in microseconds of the frame clock, and the largest fraction of it in one step.
constexpr double animationTime = 150'000;
constexpr double maxStep = 0.25;
// Time to wait for the desktop to apply the size of a step.
constexpr std::int64_t stepTimeout = 250'000;

int between(int from, int to, double progress)
{
    return from + static_cast<int>(std::lround((to - from) * progress));
}

int points(double length)
{
    return static_cast<int>(std::lround(std::clamp(length, 1.0, 32'767.0)));
}

}

SharedWindow::SharedWindow(Toplevel& toplevel, Gtk::Widget& content)
    : _toplevel(toplevel)
    , _content(content)
    , _placement(toplevel.placement())
{
    _toplevel.add(*this);
}

SharedWindow::~SharedWindow()
{
    stopAnimation();
    _stateAction = nullptr;
    _fullScreenAction = nullptr;
    _toplevel.remove(*this);
}

void SharedWindow::setTitle(const std::string& title)
{
    _title = title;
    if (isFront())
        _toplevel.showTitle();
    if (const auto action = _titleAction)
        action();
}

Rect SharedWindow::frame() const
{
    const auto size = _animation ? _animation->to : isFront() ? _toplevel.size() : _placement.size;
    return { _x, _y, static_cast<double>(size.width), static_cast<double>(size.height) };
}

void SharedWindow::animateToFrame(const Rect& frame)
{
    const bool moves = window().get_settings()->property_gtk_enable_animations().get_value();
    if (!isFront() || !_content.get_mapped() || _toplevel.isSizedByDesktop() || !moves)
        return setFrame(frame);
    stopAnimation();
    _x = frame.x;
    _y = frame.y;
    const auto animation
        = std::make_shared<Animation>(Animation { _toplevel.size(), { points(frame.width), points(frame.height) } });
    if (animation->to == animation->from)
        return;
    _animation = animation;
    window().add_tick_callback([this, animation](const Glib::RefPtr<Gdk::FrameClock>& clock) {
        // The animation ends with this object.
        return !animation->isOver && showStep(*animation, clock->get_frame_time());
    });
}

// Returns whether there are more steps. Each step waits until the desktop has applied the one before it, so that each
// is drawn.
bool SharedWindow::showStep(Animation& animation, std::int64_t time)
{
    if (animation.start == 0)
        animation.start = animation.lastStep = time;
    else if (!_toplevel.hasAskedSize() && time - animation.lastStep < stepTimeout)
        return true;
    if (_toplevel.isSizedByDesktop()) {
        stopAnimation();
        return false;
    }
    animation.lastStep = time;
    const double due = static_cast<double>(time - animation.start) / animationTime;
    animation.progress = std::min({ due, animation.progress + maxStep, 1.0 });
    if (animation.progress >= 1) {
        endAnimation();
        return false;
    }
    _toplevel.setSize({ between(animation.from.width, animation.to.width, animation.progress),
        between(animation.from.height, animation.to.height, animation.progress) });
    return true;
}

// Ends a running animation and applies its final size.
void SharedWindow::endAnimation()
{
    if (!_animation)
        return;
    const auto size = _animation->to;
    stopAnimation();
    _toplevel.setSize(size);
}

// Ends a running animation at its current size.
void SharedWindow::stopAnimation()
{
    if (const auto animation = std::exchange(_animation, nullptr))
        animation->isOver = true;
}

void SharedWindow::setFrame(const Rect& frame)
{
    stopAnimation();
    _x = frame.x;
    _y = frame.y;
    const Size size { points(frame.width), points(frame.height) };
    if (isFront())
        _toplevel.setSize(size);
    else if (size != _placement.size)
        _placement = { size };
}

void SharedWindow::orderFront()
{
    _visible = true;
    _toplevel.orderFront(*this);
}

void SharedWindow::makeKeyAndOrderFront()
{
    _visible = true;
    _toplevel.orderFront(*this);
    _toplevel.present();
}

void SharedWindow::orderOut()
{
    _visible = false;
    _toplevel.orderOut(*this);
}

bool SharedWindow::isFront() const
{
    return _toplevel.front() == this;
}

bool SharedWindow::isFullScreen() const
{
    return isFront() && _toplevel.isFullScreen();
}

void SharedWindow::toggleFullScreen()
{
    _toplevel.setFullScreen(!_toplevel.isFullScreen(), *this);
}

void SharedWindow::addController(const Glib::RefPtr<Gtk::EventController>& controller)
{
    _controllers.push_back(controller);
    if (isFront())
        window().add_controller(controller);
}

Gtk::Window& SharedWindow::window()
{
    return _toplevel.window();
}

Gtk::Widget* SharedWindow::focus()
{
    auto* const focus = window().get_focus();
    return focus && (focus == &_content || focus->is_ancestor(_content)) ? focus : nullptr;
}

void SharedWindow::didComeToFront()
{
    for (const auto& controller : _controllers)
        window().add_controller(controller);
    _toplevel.place(_placement);
    restoreFocus();
    activeDidChange();
}

void SharedWindow::willLeaveFront()
{
    endAnimation();
    _placement = _toplevel.placement();
    for (const auto& controller : _controllers)
        window().remove_controller(controller);
    rememberFocus(focus());
    _key = false;
}

void SharedWindow::stateDidChange()
{
    if (const auto action = _stateAction)
        action();
}

void SharedWindow::activeDidChange()
{
    _key = isFront() && _visible && window().is_active();
}

void SharedWindow::fullScreenDidChange(bool isFullScreen)
{
    if (const auto action = _fullScreenAction)
        action(isFullScreen);
}

bool SharedWindow::shouldClose()
{
    const auto action = _closeAction;
    return action && action();
}

bool SharedWindow::restoreFocus()
{
    auto* const focus = _focus.get();
    if (!focus || !gtk_widget_is_ancestor(focus, _content.gobj()))
        return false;
    gtk_widget_grab_focus(focus);
    return true;
}

void SharedWindow::rememberFocus(Gtk::Widget* focus)
{
    _focus = GObjectPtr<GtkWidget>::share(focus ? focus->gobj() : nullptr);
}

// Returns nullopt while the window is not on the screen.
std::optional<SharedWindow::Size> SharedWindow::contentSize() const
{
    if (!_content.get_mapped() || _content.get_width() <= 0)
        return std::nullopt;
    return Size { _content.get_width(), _content.get_height() };
}

Reply<void> SharedWindow::laidOut()
{
    Reply<void> reply;
    struct Layout {
        Reply<void>::Resolver resolver;
        std::optional<Size> seen = std::nullopt;
        bool answered = false;

        void answer()
        {
            if (!std::exchange(answered, true))
                resolver();
        }
    };
    const auto layout = std::make_shared<Layout>(Layout { reply.resolver() });
    // The layout is finished if the size is the requested one, or the same in two frames.
    const auto look = [this, self = std::weak_ptr(_self), layout] {
        if (self.expired())
            return;
        const auto size = contentSize();
        if (size && !_animation && !_toplevel.isBeingResized() && (_toplevel.hasAskedSize() || size == layout->seen))
            layout->answer();
        layout->seen = size;
    };
    window().add_tick_callback([layout, look](const Glib::RefPtr<Gdk::FrameClock>&) {
        // The frame is laid out after this callback, so the coroutine continues outside of it.
        if (!layout->answered)
            Glib::signal_idle().connect_once(look, Glib::PRIORITY_DEFAULT);
        return !layout->answered;
    });
    Glib::signal_timeout().connect_once([layout] { layout->answer(); }, layoutTimeout);
    return reply;
}

}
