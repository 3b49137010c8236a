#include "app/gtk/ReaderModule.hpp"

#include "base/Log.hpp"
#include "reader/EpubWindow.hpp"

#include <cstdlib>
#include <filesystem>

namespace pagora {

namespace {

constexpr const char* fileName = "pagora-reader.so";

// Beside the program in a build tree, or where it is installed.
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
        // dlopen would risk a deadlock: a library of the page engine opens a GLib module while it is initialized, and
        // takes GLib's module lock after the linker's lock. Another thread that opens a module to read a picture takes
        // them in the opposite order.
        _handle = g_module_open(modulePath().c_str(), G_MODULE_BIND_LOCAL);
        if (_handle)
            g_module_make_resident(_handle);
        else
            _problem = g_module_error();
        _isLoaded = true;
    });
}

std::unique_ptr<ReaderWindowFactory> ReaderModule::makeWindowFactory(
    const std::string& temporaryFolder, Toplevel& toplevel, RunLoop& runLoop)
{
    load();
    _loading->wait();
    using Make = ReaderWindowFactory* (*)(const std::string&, Toplevel&, RunLoop&);
    void* found = nullptr;
    if (_handle)
        g_module_symbol(_handle, "pagoraMakeReaderWindowFactory", &found);
    const auto make = reinterpret_cast<Make>(found);
    if (!make) {
        log("Pagora is not installed completely. " + _problem);
        std::_Exit(EXIT_FAILURE);
    }
    return std::unique_ptr<ReaderWindowFactory>(make(temporaryFolder, toplevel, runLoop));
}

}
