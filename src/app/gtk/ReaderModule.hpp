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

// The part of the program that shows books, in a file of its own with the libraries of the page engine. These take
// about as long to load as all others together. The module stays loaded until the program ends. Main thread only.
class ReaderModule {
public:
    // Begins to load the module on another thread, unless that was done.
    void load();
    bool isLoaded() const { return _isLoaded; }
    // A ReaderWindowFactoryGtk. Waits for the module; a program whose module cannot be loaded ends with a line.
    std::unique_ptr<ReaderWindowFactory> makeWindowFactory(
        const std::string& temporaryFolder, Toplevel& toplevel, RunLoop& runLoop);

private:
    // The handle of the module, or why there is none. The worker's until `_isLoaded`.
    GModule* _handle = nullptr;
    std::string _problem;
    std::atomic<bool> _isLoaded = false;
    std::unique_ptr<Worker> _loading;
};

}
