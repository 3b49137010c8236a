#pragma once

#include <X11/Xlib.h>
#include <X11/extensions/XShm.h>
#include <X11/keysym.h>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace pagora::bench {

// In pixels of the screen.
struct Area {
    int x = 0, y = 0, width = 0, height = 0;
    bool meets(const Area& other) const
    {
        return x < other.x + other.width && other.x < x + width && y < other.y + other.height && other.y < y + height;
    }
};

[[noreturn]] void fail(const std::string& what);
// Seconds on the monotonic clock.
double now();

// Controls and observes the display: moves the pointer, presses keys, and records what is drawn and when. A failure
// ends the program with one line.
class WatchedScreen {
public:
    WatchedScreen();
    ~WatchedScreen();
    WatchedScreen(const WatchedScreen&) = delete;
    WatchedScreen& operator=(const WatchedScreen&) = delete;

    void pointAt(int x, int y);
    // Each returns the time directly before the last press.
    double click(int count = 1);
    double press(KeySym key, KeySym modifier = 0);

    // Waits until the active window has this title.
    void waitForWindow(const std::string& title, double seconds = 20);
    // Raises and focuses that window.
    void activate(Window window);
    Window activeWindow();
    // Sets the position and size of the active window, and waits for the change.
    void placeWindow(const Area& area);

    // Discards recorded changes.
    void forget();
    // Returns the time of the last change of the area before `quiet` seconds without drawing; nullopt if it stays blank
    // for `timeout`.
    std::optional<double> shown(const Area& area, double quiet = 0.15, double timeout = 90);
    // The time from the request to the area's first picture, and the number of its pixels that changed afterwards,
    // until nothing is drawn for `quiet` seconds; nullopt if the area stays blank for `timeout`.
    struct FirstPicture {
        double time;
        std::size_t changedPixels;
    };
    std::optional<FirstPicture> firstPicture(const Area& area, double quiet, double timeout = 90);
    // Waits until the area is no longer blank.
    void waitForPicture(const Area& area, double timeout = 60);
    // Waits until drawing stops.
    void settle(double quiet = 0.4);

    // Returns the number of colours; small if nothing is shown.
    std::size_t colors(const Area& area);

private:
    struct Picture;

    void shareMemory();
    Picture take(const Area& area);
    std::optional<Area> nextDrawing(double deadline);
    std::string activeTitle();
    bool isPlaced(Window window, const Area& area);
    std::optional<std::size_t> look(const Area& area);
    static bool isBlank(const Picture& picture);

    std::unique_ptr<Display, int (*)(Display*)> _display;
    Window _root;
    int _damageEvent = 0;
    // Shared memory for pictures of the screen. Sending them through a socket would distort the measurement.
    XShmSegmentInfo _shared {};
};

}
