#pragma once

#include "base/Url.hpp"
#include "desktop/RequestedBy.hpp"

#include <string>

namespace pagora {

class Window;

// The hub's operations that the readers use.
class ReaderHub {
public:
    virtual ~ReaderHub() = default;
    // Closes the book: saves the position and shows the library again.
    virtual void _closeEPUB() = 0;
    virtual Window& mainWindow() = 0;
    virtual bool fullScreenMode() const = 0;
    virtual void setFullScreenMode(bool fullScreen) = 0;
    virtual bool inCloseEpubMethod() const = 0;
    virtual void setInCloseEpubMethod(bool closing) = 0;
    // Called when a window has left full screen.
    virtual void windowDidExitFullScreen() = 0;
    // Opens the URL in its default program on the desktop.
    virtual void openURL(const Url& url, RequestedBy requestedBy) = 0;
    // Looks the text up in the desktop's dictionary, or on the web if there is no dictionary.
    virtual void lookUp(const std::string& text) = 0;
};

}
