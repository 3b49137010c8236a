#pragma once

#include "fixed/FixedLayoutWindowController.hpp"
#include "reflowable/EpubWindowController.hpp"

#include <memory>

namespace pagora {

// The switch between the library's window and a reader's, which may have to leave full screen first. Main thread only.
class WindowSwitch {
public:
    // `Closed`: the reading has ended. `LeavingFullScreen`: it has ended, and its window was told to leave full screen.
    // `LeftFullScreen`: the window has left it and has shown the library.
    enum class Stage { Reading, Closed, LeavingFullScreen, LeftFullScreen };

    void open() { _stage = Stage::Reading; }
    // Remembers for the next reflowable book whether this one ended in full screen. A window that is not in full
    // screen, since it has not entered it yet or was just told to leave it, need not be told.
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
    // A reader window whose reading has ended and that is still leaving full screen.
    std::unique_ptr<EpubWindowController> leavingEpubWindow;
    std::unique_ptr<FixedLayoutWindowController> leavingFixedWindow;

private:
    Stage _stage = Stage::Reading;
};

}
