#include "library_window/gtk/ProgressWindow.hpp"

#include <glibmm/main.h>

#include <utility>

namespace pagora {

ProgressWindow::ProgressWindow(Gtk::Window& window, std::function<void()> changed)
    : DesktopWindow(window)
    , _changed(std::move(changed))
{
}

ProgressWindow::~ProgressWindow()
{
    _timer.disconnect();
}

void ProgressWindow::orderFront()
{
    if (_isOrderedFront)
        return;
    _timer = Glib::signal_timeout().connect(
        [this] {
            DesktopWindow::orderFront();
            return false;
        },
        delay);
    setOrderedFront(true);
}

void ProgressWindow::makeKeyAndOrderFront()
{
    _timer.disconnect();
    DesktopWindow::makeKeyAndOrderFront();
    setOrderedFront(true);
}

void ProgressWindow::orderOut()
{
    _timer.disconnect();
    DesktopWindow::orderOut();
    setOrderedFront(false);
}

void ProgressWindow::setOrderedFront(bool isOrderedFront)
{
    if (_isOrderedFront == isOrderedFront)
        return;
    _isOrderedFront = isOrderedFront;
    _changed();
}

}
