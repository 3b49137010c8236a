#pragma once

#include "fixed/FixedLayoutWindowController.hpp"
#include "reflowable/EpubWindowController.hpp"

#include <memory>

namespace pagora {

// The switch between the library's window and a reader's, which may have to leave full screen first. Main thread only.
class WindowSwitch {
public:
    // `Closed`: the book was closed. `LeavingFullScreen`: it was closed, and its window was told to leave full screen.
    // `LeftFullScreen`: the window has left full screen and has shown the library.
    enum class Stage { Reading, Closed, LeavingFullScreen, LeftFullScreen };

    void open() { _stage = Stage::Reading; }
    // Stores for the next reflowable book whether this one was closed in full screen. The window is not told to leave
    // full screen if it has not entered it yet or is already leaving it.
    void close(bool isFullScreen)
    {
        epubWinInFullScreen = fullScreenMode;
        fullScreenMode = fullScreenMode && isFullScreen;
        _stage = fullScreenMode ? Stage::LeavingFullScreen : Stage::Closed;
    }
    bool inCloseEpubMethod() const { return _stage == Stage::Closed || _stage == Stage::LeavingFullScreen; }
    void setInCloseEpubMethod(bool closing)
    {
        if (exitedByCode())
            _stage = closing ? Stage::LeavingFullScreen : Stage::LeftFullScreen;
        else
            _stage = closing ? Stage::Closed : Stage::Reading;
    }
    bool exitedByCode() const { return _stage == Stage::LeavingFullScreen || _stage == Stage::LeftFullScreen; }

    bool fullScreenMode = false;
    bool epubWinInFullScreen = false;
    // A reader window whose book was closed and that is still leaving full screen.
    std::unique_ptr<EpubWindowController> leavingEpubWindow;
    std::unique_ptr<FixedLayoutWindowController> leavingFixedWindow;

private:
    Stage _stage = Stage::Reading;
};

}
