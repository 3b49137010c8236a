#include "platform/gtk/DesktopWindow.hpp"

#include "platform/gtk/DisplayText.hpp"

#include <gdkmm/surface.h>
#include <glibmm/main.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace pagora {

namespace {

// How long a window that the desktop does not draw, because it is covered or minimised, is waited for.
constexpr unsigned layoutPatience = 1'000;

int points(double length)
{
    return static_cast<int>(std::lround(std::clamp(length, 1.0, 32'767.0)));
}

}

DesktopWindow::DesktopWindow(Gtk::Window& window)
    : _window(window)
    , _visible(window.get_visible())
    , _active(window.is_active())
{
    _connections = {
        window.property_visible().signal_changed().connect([this] { _visible = _window.get_visible(); }),
        window.property_is_active().signal_changed().connect([this] { _active = _window.is_active(); }),
        window.property_fullscreened().signal_changed().connect([this] {
            if (const auto action = _fullScreenAction)
                action(_window.is_fullscreen());
        }),
    };
}

DesktopWindow::~DesktopWindow()
{
    for (auto& connection : _connections)
        connection.disconnect();
}

void DesktopWindow::setTitle(const std::string& title)
{
    _window.set_title(displayText(title, 1'000));
}

Rect DesktopWindow::frame() const
{
    // The size that `setFrame` takes, which follows what the user does to the window. The widget's own size leaves out
    // what the toolkit draws around it, so windows that hand their frames on would shrink.
    int width = 0;
    int height = 0;
    _window.get_default_size(width, height);
    if (width <= 0 || height <= 0) {
        width = _window.get_width();
        height = _window.get_height();
    }
    return { _x, _y, static_cast<double>(std::max(width, 0)), static_cast<double>(std::max(height, 0)) };
}

void DesktopWindow::setFrame(const Rect& frame)
{
    _x = frame.x;
    _y = frame.y;
    _window.set_default_size(points(frame.width), points(frame.height));
}

void DesktopWindow::orderFront()
{
    _visible = true;
    onMainThread([this] { _window.set_visible(true); });
}

void DesktopWindow::makeKeyAndOrderFront()
{
    _visible = true;
    onMainThread([this] { _window.present(); });
}

void DesktopWindow::orderOut()
{
    _visible = false;
    onMainThread([this] { _window.set_visible(false); });
}

void DesktopWindow::toggleFullScreen()
{
    if (_window.is_fullscreen())
        _window.unfullscreen();
    else
        _window.fullscreen();
}

// The size of its content; missing while it is not on screen.
std::optional<DesktopWindow::Size> DesktopWindow::contentSize() const
{
    const auto* const child = _window.get_child();
    const auto& content = child ? *child : static_cast<const Gtk::Widget&>(_window);
    if (!_window.get_mapped() || content.get_width() <= 0)
        return std::nullopt;
    return Size { content.get_width(), content.get_height() };
}

bool DesktopWindow::hasAskedSize() const
{
    Size asked;
    _window.get_default_size(asked.width, asked.height);
    const auto surface = _window.get_surface();
    return surface && asked == Size { surface->get_width(), surface->get_height() };
}

Reply<void> DesktopWindow::laidOut()
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
    // Laid out is the size that was asked for, or one that two frames in a row agree on.
    const auto look = whileAlive([this, layout] {
        const auto size = contentSize();
        if (size && (hasAskedSize() || size == layout->seen))
            layout->answer();
        layout->seen = size;
    });
    _window.add_tick_callback([layout, look](const Glib::RefPtr<Gdk::FrameClock>&) {
        // The frame is laid out after this, and the coroutine that waits goes on outside of it.
        if (!layout->answered)
            Glib::signal_idle().connect_once(look, Glib::PRIORITY_DEFAULT);
        return !layout->answered;
    });
    Glib::signal_timeout().connect_once([layout] { layout->answer(); }, layoutPatience);
    return reply;
}

}
