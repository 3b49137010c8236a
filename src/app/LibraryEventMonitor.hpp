#pragma once

#include "library_views/LibraryViews.hpp"
#include "library_window/LibraryWindow.hpp"

#include <functional>

namespace pagora {

// Monitors key presses and left-button presses in the program's windows: tells the list whether Control is held, and
// handles the keys for selecting all books and for removing the selected ones. Installed from launch to termination.
// Main thread only.
class LibraryEventMonitor {
public:
    LibraryEventMonitor(LibraryWindow& window, LibraryViews& views, std::function<void()> removeBooks);
    ~LibraryEventMonitor();

    void install();
    void remove();
    bool isInstalled() const { return _installed; }

    // Returns whether the hub is notified when windows leave full screen. Set by the first event.
    bool observesFullScreen() const { return _observesFullScreen; }

    // Handles an event. Returns true if it is swallowed.
    bool handle(const LibraryEvent& event);

private:
    LibraryWindow& _window;
    LibraryViews& _views;
    std::function<void()> _removeBooks;
    bool _installed = false;
    bool _observesFullScreen = false;
};

}
