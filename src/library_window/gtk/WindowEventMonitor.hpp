#pragma once

#include "library_window/LibraryWindow.hpp"

#include <gtkmm/window.h>

#include <functional>
#include <memory>

namespace pagora {

// Receives key presses and left-button presses in the watched windows before any control. Keys that edit text in a
// field are left to the field. Main thread only.
class WindowEventMonitor {
public:
    WindowEventMonitor() = default;
    ~WindowEventMonitor() { *_passing = nullptr; }
    WindowEventMonitor(const WindowEventMonitor&) = delete;
    WindowEventMonitor& operator=(const WindowEventMonitor&) = delete;

    // Returns whether the event is swallowed.
    using Monitor = std::function<bool(const LibraryEvent&)>;

    // Sets the monitor; an empty function stops watching.
    void setMonitor(Monitor monitor) { *_monitor = std::move(monitor); }
    // Watches the window for the rest of its lifetime.
    void watch(Gtk::Window& window);
    // Control and A in this field select every book instead of the field's text.
    void passSelectAll(Gtk::Widget& field) { *_passing = &field; }

private:
    // Shared with the windows, which may live longer.
    std::shared_ptr<Monitor> _monitor = std::make_shared<Monitor>();
    std::shared_ptr<Gtk::Widget*> _passing = std::make_shared<Gtk::Widget*>(nullptr);
};

}
