#pragma once

#include "app/MainController.hpp"
#include "desktop/gtk/DesktopWorkspace.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/support/FakeEpubWindow.hpp"
#include "tests/support/FakeLibraryWindow.hpp"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace pagora::bench {

// The program without a display, in a home folder, with fake windows. Store, files, threads and Trash are real. Main
// thread only.
class BenchLibrary {
public:
    // Launches the program and returns when the launch has ended.
    explicit BenchLibrary(const std::string& home);
    ~BenchLibrary();

    MainController& controller() { return *_controller; }
    // Runs `work` in the background, and the main loop meanwhile.
    void performInBackground(const std::function<void()>& work);
    // Runs the main loop until the condition holds.
    void waitFor(const std::function<bool()>& condition);

private:
    UserDefaults _defaults;
    DesktopWorkspace _workspace;
    GLibRunLoop _runLoop;
    test::FakeLibraryWindow _window;
    test::FakeReaderWindowFactory _readerWindows;
    std::unique_ptr<MainController> _controller;
};

}
