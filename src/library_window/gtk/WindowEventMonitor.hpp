#pragma once

#include "library_window/LibraryWindow.hpp"

#include <gtkmm/window.h>

#include <functional>
#include <memory>

namespace pagora {

// Sees key presses and presses of the left button on their way to the windows that it watches, before any control does.
// A key press that edits the text of a field is the field's. Main thread.
class WindowEventMonitor {
public:
    // The answer says whether the event is swallowed.
    using Monitor = std::function<bool(const LibraryEvent&)>;

    // An empty one ends the watching.
    void setMonitor(Monitor monitor) { *_monitor = std::move(monitor); }
    // From now on, for as long as the window lives.
    void watch(Gtk::Window& window);

private:
    // Shared with the windows, which may live longer.
    std::shared_ptr<Monitor> _monitor = std::make_shared<Monitor>();
};

}
