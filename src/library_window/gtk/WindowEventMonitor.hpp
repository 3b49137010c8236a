#pragma once

#include "library_window/LibraryWindow.hpp"

#include <gtkmm/window.h>

#include <functional>
#include <memory>

namespace pagora {

// Receives key presses and left-button presses of the watched windows before any control. Key presses that edit text in
// a field are left to it. Main thread only.
class WindowEventMonitor {
public:
    WindowEventMonitor() = default;
    ~WindowEventMonitor() { *_passing = nullptr; }
    WindowEventMonitor(const WindowEventMonitor&) = delete;
    WindowEventMonitor& operator=(const WindowEventMonitor&) = delete;

    // The answer says whether the event is swallowed.
    using Monitor = std::function<bool(const LibraryEvent&)>;

    // An empty one ends the watching.
    void setMonitor(Monitor monitor) { *_monitor = std::move(monitor); }
    // From now on, for as long as the window lives.
    void watch(Gtk::Window& window);
    // Control and A in this field are not the field's: they select every book.
    void passSelectAll(Gtk::Widget& field) { *_passing = &field; }

private:
    // Shared with the windows, which may live longer.
    std::shared_ptr<Monitor> _monitor = std::make_shared<Monitor>();
    std::shared_ptr<Gtk::Widget*> _passing = std::make_shared<Gtk::Widget*>(nullptr);
};

}
