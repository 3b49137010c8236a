#pragma once

#include "app/LibraryState.hpp"
#include "epub/EpubImport.hpp"

namespace pagora {

// Closes the open book: saves the position and the display settings of a reflowable book, and shows the library window
// in place of the reader's. Main thread only.
class BookClosing {
public:
    BookClosing(const Platform& platform, LibraryState& state, EpubImport& import)
        : _platform(platform)
        , _state(state)
        , _import(import)
    {
    }

    void close();
    // Called when a window has left full screen: finishes a close that had to wait for it, or clears full screen for
    // the next book.
    void windowDidExitFullScreen();
    // Immediately destroys a window that is still leaving full screen, because another book opens.
    void makeWay();

private:
    void closeReflowable();
    void closeFixed();
    void savePosition(EpubController& reader, WebView& webView);
    void waitForFullScreen();
    void showLibrary();
    // Destroys the window that was leaving full screen, outside its own event handling.
    void dropLeavingWindow();

    Platform _platform;
    LibraryState& _state;
    EpubImport& _import;
    // Shows the library if the window manager never reports the exit from full screen.
    std::unique_ptr<RunLoop::Timer> _fullScreenTimer;
};

}
