#pragma once

#include "library_views/LibraryViews.hpp"
#include "library_window/LibraryWindow.hpp"

#include <functional>

namespace pagora {

// Watches the key presses and left-button presses that go to the program's windows: tells the list whether Control is
// held, selects every book, asks for the removal of the selected ones. Installed from launch to termination. Main
// thread.
class LibraryEventMonitor {
public:
    LibraryEventMonitor(LibraryWindow& window, LibraryViews& views, std::function<void()> removeBooks);
    ~LibraryEventMonitor();

    void install();
    void remove();
    bool isInstalled() const { return _installed; }

    // Whether the hub hears of windows that leave full screen; it does from the first event on.
    bool observesFullScreen() const { return _observesFullScreen; }

    // True when the event is swallowed.
    bool handle(const LibraryEvent& event);

private:
    LibraryWindow& _window;
    LibraryViews& _views;
    std::function<void()> _removeBooks;
    bool _installed = false;
    bool _observesFullScreen = false;
};

}
