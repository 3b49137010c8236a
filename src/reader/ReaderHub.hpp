#pragma once

#include "base/Url.hpp"
#include "desktop/RequestedBy.hpp"

#include <string>

namespace pagora {

class Window;

// What the readers need from the hub.
class ReaderHub {
public:
    virtual ~ReaderHub() = default;
    // Ends the reading: saves the position and brings the library back.
    virtual void _closeEPUB() = 0;
    virtual Window& mainWindow() = 0;
    virtual bool fullScreenMode() const = 0;
    virtual void setFullScreenMode(bool fullScreen) = 0;
    virtual bool inCloseEpubMethod() const = 0;
    virtual void setInCloseEpubMethod(bool closing) = 0;
    // A window has left full screen.
    virtual void windowDidExitFullScreen() = 0;
    // Opens the URL in the desktop's program for it.
    virtual void openURL(const Url& url, RequestedBy requestedBy) = 0;
    // Looks the text up in the desktop's dictionary, or on the web without one.
    virtual void lookUp(const std::string& text) = 0;
};

}
