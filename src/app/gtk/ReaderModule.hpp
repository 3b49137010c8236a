#pragma once

#include "running/Worker.hpp"

#include <atomic>
#include <gmodule.h>
#include <memory>
#include <string>

namespace pagora {

class ReaderWindowFactory;
class RunLoop;
class Toplevel;

// The part of the program that shows books. It is a separate file, linked with the libraries of the page engine, which
// take about as long to load as all others together. The module stays loaded until the program ends. Main thread only.
class ReaderModule {
public:
    // Starts to load the module on another thread, if that has not been done.
    void load();
    bool isLoaded() const { return _isLoaded; }
    // Returns a ReaderWindowFactoryGtk. Waits for the module. If the module cannot be loaded, the program exits with an
    // error message.
    std::unique_ptr<ReaderWindowFactory> makeWindowFactory(
        const std::string& temporaryFolder, Toplevel& toplevel, RunLoop& runLoop);

private:
    // The handle of the module, or the reason of a failure. Written by the worker until `_isLoaded` is set.
    GModule* _handle = nullptr;
    std::string _problem;
    std::atomic<bool> _isLoaded = false;
    std::unique_ptr<Worker> _loading;
};

}
