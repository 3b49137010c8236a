#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The progress of the launch, and whether the library is being reset. Main thread only.
class Launch {
public:
    enum class Stage { NotBegun, WillFinish, LoadingLibrary, Running, Resetting };

    void willFinish() { _stage = Stage::WillFinish; }
    void didFinish() { _stage = Stage::LoadingLibrary; }
    void libraryIsLoaded() { _stage = Stage::Running; }
    void beginReset() { _stage = Stage::Resetting; }
    void endReset() { _stage = Stage::Running; }

    bool _PagoraLaunched() const { return _stage >= Stage::LoadingLibrary; }
    bool _initProcessing() const { return _stage == Stage::WillFinish || _stage == Stage::LoadingLibrary; }
    bool isResetting() const { return _stage == Stage::Resetting; }
    // Returns whether files must wait for the end of the launch or the reset.
    bool filesHaveToWait() const { return _initProcessing() || isResetting(); }

    // Files that the desktop asked to open and that are being processed.
    std::optional<std::vector<std::string>> _filesToOpenByApp;

private:
    Stage _stage = Stage::NotBegun;
};

}
