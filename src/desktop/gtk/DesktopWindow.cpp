#include "desktop/gtk/DesktopWindow.hpp"

#include "desktop/gtk/DisplayText.hpp"

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

int points(double length)
{
    return static_cast<int>(std::lround(std::clamp(length, 1.0, 32'767.0)));
}

}

void DesktopWindow::setTitle(const std::string& title)
{
    _window.set_title(displayText(title, 1'000));
}

Rect DesktopWindow::frame() const
{
    // The default size, which follows resizing by the user. The widget's own size excludes the decorations, so windows
    // that pass their frames on would shrink.
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

}
