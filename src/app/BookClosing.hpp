#pragma once

#include "app/LibraryState.hpp"
#include "epub/EpubImport.hpp"

namespace pagora {

// Ends the reading: saves the position and the display settings of a reflowable book, and puts the library window back
// in the reader's place. Main thread only.
class BookClosing {
public:
    BookClosing(const Platform& platform, LibraryState& state, EpubImport& import)
        : _platform(platform)
        , _state(state)
        , _import(import)
    {
    }

    void close();
    // A window has left full screen: finishes a close that had to wait for it, or forgets full screen for the next
    // book.
    void windowDidExitFullScreen();
    // Closes a window that is still leaving full screen at once, because another book opens.
    void makeWay();

private:
    void closeReflowable();
    void closeFixed();
    void savePosition(EpubController& reader, WebView& webView);
    void waitForFullScreen();
    void showLibrary();
    // Destroys the window that was leaving full screen, outside of its own event handling.
    void dropLeavingWindow();

    Platform _platform;
    LibraryState& _state;
    EpubImport& _import;
    // Shows the library when the window manager never reports the exit from full screen.
    std::unique_ptr<RunLoop::Timer> _fullScreenTimer;
};

}
