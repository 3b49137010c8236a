#pragma once

#include "reader/EpubWindow.hpp"

#include <memory>
#include <sigc++/connection.h>
#include <string>

namespace pagora {

class ReaderModule;
class RunLoop;
class Toplevel;

// Creates reader windows with the module, which it loads when a window is created or prepared. Main thread only.
class LateReaderWindows : public ReaderWindowFactory {
public:
    // See ReaderWindowFactoryGtk. The module must outlive this object.
    LateReaderWindows(ReaderModule& module, std::string temporaryFolder, Toplevel& toplevel, RunLoop& runLoop);
    ~LateReaderWindows() override;

    // These functions wait for the module.
    std::unique_ptr<EpubWindow> makeEpubWindow() override { return factory().makeEpubWindow(); }
    std::unique_ptr<FixedWindow> makeFixedWindow() override { return factory().makeFixedWindow(); }
    // Continues when the module is loaded.
    void prepareNextWindow() override;

private:
    ReaderWindowFactory& factory();

    ReaderModule& _module;
    std::string _temporaryFolder;
    Toplevel& _toplevel;
    RunLoop& _runLoop;
    std::unique_ptr<ReaderWindowFactory> _factory;
    sigc::connection _preparation;
};

}
