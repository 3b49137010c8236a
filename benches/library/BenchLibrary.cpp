#include "benches/library/BenchLibrary.hpp"

#include "benches/data/MadeCatalogue.hpp"

#include <glib.h>

#include <filesystem>

namespace pagora::bench {

namespace {

std::string madeFolder(const std::string& path)
{
    std::filesystem::create_directories(path);
    return path;
}

}

BenchLibrary::BenchLibrary(const std::string& home)
    : _defaults(madeFolder(defaultsFolderIn(home)))
{
    const ProgramInfo program { home + "/Documents", home + "/.cache", home, PAGORA_IDENTIFIER, PAGORA_VERSION };
    _controller = std::make_unique<MainController>(
        Platform { program, _defaults, _workspace, _runLoop, _window, _readerWindows },
        [](const std::string&) { return std::string(); });
    _controller->applicationWillFinishLaunching();
    _controller->applicationDidFinishLaunching();
    waitFor([this] {
        return _controller->state().launch._PagoraLaunched() && !_controller->state().launch._initProcessing();
    });
    _defaults.waitForBackup();
}

BenchLibrary::~BenchLibrary()
{
    _runLoop.finishBackgroundWork();
    _controller = nullptr;
}

void BenchLibrary::performInBackground(const std::function<void()>& work)
{
    bool done = false;
    auto finished = _runLoop.performInBackground([&] {
        work();
        _runLoop.postToMainThread([&] { done = true; });
    });
    waitFor([&] { return done; });
}

void BenchLibrary::waitFor(const std::function<bool()>& condition)
{
    while (!condition())
        g_main_context_iteration(nullptr, TRUE);
}

}
