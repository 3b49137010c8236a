#include "app/gtk/LateReaderWindows.hpp"

#include "app/gtk/ReaderModule.hpp"

#include <glibmm/main.h>

#include <utility>

namespace pagora {

namespace {

// The interval at which the loading of the module is checked, in milliseconds.
constexpr unsigned loadingInterval = 10;

}

LateReaderWindows::LateReaderWindows(
    ReaderModule& module, std::string temporaryFolder, Toplevel& toplevel, RunLoop& runLoop)
    : _module(module)
    , _temporaryFolder(std::move(temporaryFolder))
    , _toplevel(toplevel)
    , _runLoop(runLoop)
{
}

LateReaderWindows::~LateReaderWindows()
{
    _preparation.disconnect();
}

ReaderWindowFactory& LateReaderWindows::factory()
{
    if (!_factory)
        _factory = _module.makeWindowFactory(_temporaryFolder, _toplevel, _runLoop);
    return *_factory;
}

void LateReaderWindows::prepareNextWindow()
{
    _module.load();
    _preparation.disconnect();
    if (_module.isLoaded())
        return factory().prepareNextWindow();
    _preparation = Glib::signal_timeout().connect(
        [this] {
            if (_module.isLoaded())
                factory().prepareNextWindow();
            return !_module.isLoaded();
        },
        loadingInterval);
}

}
