#include "app/gtk/ReaderModule.hpp"

#include "base/Log.hpp"
#include "reader/EpubWindow.hpp"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>

namespace pagora {

namespace {

constexpr const char* fileName = "pagora-reader.so";

// Beside the program where it was built, or where it is installed.
std::string modulePath()
{
    std::error_code ignored;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
    const auto built = folder / fileName;
    return std::filesystem::exists(built, ignored) ? built : folder.parent_path() / PAGORA_MODULES / fileName;
}

}

void ReaderModule::load()
{
    if (_loading)
        return;
    _loading = std::make_unique<Worker>();
    _loading->perform([this] {
        _handle = ::dlopen(modulePath().c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
        if (!_handle)
            _problem = ::dlerror();
        _isLoaded = true;
    });
}

std::unique_ptr<ReaderWindowFactory> ReaderModule::makeWindowFactory(
    const std::string& temporaryFolder, Toplevel& toplevel, RunLoop& runLoop)
{
    load();
    _loading->wait();
    using Make = ReaderWindowFactory* (*)(const std::string&, Toplevel&, RunLoop&);
    const auto make = _handle ? reinterpret_cast<Make>(::dlsym(_handle, "pagoraMakeReaderWindowFactory")) : nullptr;
    if (!make) {
        log("Pagora is not installed completely. " + _problem);
        std::_Exit(EXIT_FAILURE);
    }
    return std::unique_ptr<ReaderWindowFactory>(make(temporaryFolder, toplevel, runLoop));
}

}
