#pragma once

#include "desktop/gtk/DesktopWindow.hpp"

#include <functional>

namespace pagora {

// A window that is shown only if it has been ordered front for `delay` milliseconds, so that a short job does not open
// a window that takes the keyboard focus for a moment. Main thread only.
class ProgressWindow : public DesktopWindow {
public:
    static constexpr unsigned delay = 250;

    // Calls `changed` when the window has been ordered front or out.
    ProgressWindow(Gtk::Window& window, std::function<void()> changed);
    ~ProgressWindow() override;
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;

    void orderFront() override;
    void makeKeyAndOrderFront() override;
    void orderOut() override;
    // Returns whether the window has been ordered front. It may not be shown yet.
    bool isVisible() const override { return _isOrderedFront; }

private:
    void setOrderedFront(bool isOrderedFront);

    std::function<void()> _changed;
    bool _isOrderedFront = false;
    sigc::connection _timer;
};

}
