#pragma once

#include "base/Geometry.hpp"
#include "running/Reply.hpp"

#include <string>

namespace pagora {

// A panel that can be shown and hidden. Main thread.
class Panel {
public:
    virtual ~Panel() = default;
    virtual void makeKeyAndOrderFront() = 0;
    virtual void orderOut() = 0;
    virtual bool isVisible() const = 0;
};

// A window of the program with its own frame and title. Several can share one toplevel, which shows the one that was
// ordered front last. Main thread only.
class Window : public Panel {
public:
    virtual void setTitle(const std::string& title) = 0;
    virtual Rect frame() const = 0;
    virtual void setFrame(const Rect& frame) = 0;
    // Sets the frame with an animation.
    virtual void animateToFrame(const Rect& frame) = 0;
    virtual void center() = 0;

    virtual void orderFront() = 0;
    virtual bool isKeyWindow() const = 0;

    // Returns whether the window is in full screen or entering it.
    virtual bool isFullScreen() const { return false; }
    // Enters or leaves full screen. Notifies the window's delegate when this is finished.
    virtual void toggleFullScreen() = 0;

    // Replies when the window's content has its size on screen.
    virtual Reply<void> laidOut() = 0;
};

}
