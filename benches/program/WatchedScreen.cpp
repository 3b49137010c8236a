#include "WatchedScreen.hpp"

#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <poll.h>
#include <set>
#include <span>
#include <string_view>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <thread>
#include <utility>
#include <vector>

namespace pagora::bench {

namespace {

// An area with fewer colours is treated as blank.
constexpr std::size_t minColors = 8;

void pause(double seconds)
{
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

}

void fail(const std::string& what)
{
    std::cerr << "bench: " << what << '\n';
    std::exit(1);
}

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

WatchedScreen::WatchedScreen()
    : _display(XOpenDisplay(nullptr), XCloseDisplay)
{
    int errors = 0;
    if (!_display)
        fail("there is no display");
    if (!XDamageQueryExtension(_display.get(), &_damageEvent, &errors))
        fail("the display does not tell what is drawn");
    // Windows may be destroyed during a query.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    _root = DefaultRootWindow(_display.get());
    shareMemory();
    XDamageCreate(_display.get(), _root, XDamageReportRawRectangles);
    XSync(_display.get(), False);
}

WatchedScreen::~WatchedScreen()
{
    XShmDetach(_display.get(), &_shared);
    shmdt(_shared.shmaddr);
}

// Allocates shared memory for the whole screen.
void WatchedScreen::shareMemory()
{
    const int screen = DefaultScreen(_display.get());
    const auto pixelCount = static_cast<std::size_t>(DisplayWidth(_display.get(), screen))
        * static_cast<std::size_t>(DisplayHeight(_display.get(), screen));
    _shared.shmid = shmget(IPC_PRIVATE, pixelCount * sizeof(std::uint32_t), IPC_CREAT | 0600);
    void* const memory = _shared.shmid < 0 ? nullptr : shmat(_shared.shmid, nullptr, 0);
    if (!memory || memory == reinterpret_cast<void*>(-1) || !XShmQueryExtension(_display.get()))
        fail("the display shares no memory");
    _shared.shmaddr = static_cast<char*>(memory);
    XShmAttach(_display.get(), &_shared);
    XSync(_display.get(), False);
    // The memory is freed when both processes have released it.
    shmctl(_shared.shmid, IPC_RMID, nullptr);
}

// A copy of the last content of the shared memory.
struct WatchedScreen::Picture {
    std::unique_ptr<XImage, int (*)(XImage*)> image;

    // Returns the pixels row by row.
    std::span<const std::uint32_t> pixels() const
    {
        return { reinterpret_cast<const std::uint32_t*>(image->data),
            static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) };
    }
};

WatchedScreen::Picture WatchedScreen::take(const Area& area)
{
    const int screen = DefaultScreen(_display.get());
    const auto release = [](XImage* image) { return XDestroyImage(image); };
    Picture picture { { XShmCreateImage(_display.get(), DefaultVisual(_display.get(), screen),
                            static_cast<unsigned>(DefaultDepth(_display.get(), screen)), ZPixmap, _shared.shmaddr,
                            &_shared, static_cast<unsigned>(area.width), static_cast<unsigned>(area.height)),
        release } };
    if (!picture.image || picture.image->bits_per_pixel != 32
        || !XShmGetImage(_display.get(), _root, picture.image.get(), area.x, area.y, AllPlanes))
        fail("the screen cannot be read");
    return picture;
}

void WatchedScreen::pointAt(int x, int y)
{
    XTestFakeMotionEvent(_display.get(), -1, x, y, 0);
    XSync(_display.get(), False);
}

double WatchedScreen::click(int count)
{
    double pressed = 0;
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            pause(0.06);
        pressed = now();
        XTestFakeButtonEvent(_display.get(), 1, True, 0);
        XTestFakeButtonEvent(_display.get(), 1, False, 0);
        XFlush(_display.get());
    }
    return pressed;
}

double WatchedScreen::press(KeySym key, KeySym modifier)
{
    const auto code = XKeysymToKeycode(_display.get(), key);
    const auto held = modifier ? XKeysymToKeycode(_display.get(), modifier) : 0;
    if (held)
        XTestFakeKeyEvent(_display.get(), held, True, 0);
    const double pressed = now();
    XTestFakeKeyEvent(_display.get(), code, True, 0);
    XTestFakeKeyEvent(_display.get(), code, False, 0);
    if (held)
        XTestFakeKeyEvent(_display.get(), held, False, 0);
    XFlush(_display.get());
    return pressed;
}

Window WatchedScreen::activeWindow()
{
    const Atom name = XInternAtom(_display.get(), "_NET_ACTIVE_WINDOW", False);
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* data = nullptr;
    Window window = 0;
    if (XGetWindowProperty(
            _display.get(), _root, name, 0, 1, False, AnyPropertyType, &type, &format, &count, &rest, &data)
            == Success
        && data) {
        if (count == 1 && format == 32)
            window = *reinterpret_cast<Window*>(data);
        XFree(data);
    }
    return window;
}

std::string WatchedScreen::activeTitle()
{
    const Window window = activeWindow();
    XTextProperty text {};
    std::string title;
    const Atom name = XInternAtom(_display.get(), "_NET_WM_NAME", False);
    if (window && XGetTextProperty(_display.get(), window, &text, name) && text.value) {
        title = reinterpret_cast<const char*>(text.value);
        XFree(text.value);
    }
    return title;
}

void WatchedScreen::waitForWindow(const std::string& title, double seconds)
{
    for (const double deadline = now() + seconds; now() < deadline; pause(0.01)) {
        if (activeTitle() == title)
            return;
    }
    fail("no window \"" + title + "\" but \"" + activeTitle() + '"');
}

void WatchedScreen::activate(Window window)
{
    XEvent event {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(_display.get(), "_NET_ACTIVE_WINDOW", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = 2;
    XSendEvent(_display.get(), _root, False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
    XSync(_display.get(), False);
    for (const double deadline = now() + 5; activeWindow() != window && now() < deadline;)
        pause(0.01);
}

void WatchedScreen::placeWindow(const Area& area)
{
    // The first size of a new window may be set after this one.
    constexpr int lasting = 4;
    int placed = 0;
    for (const double deadline = now() + 10; placed < lasting; pause(0.05)) {
        const Window window = activeWindow();
        placed = isPlaced(window, area) ? placed + 1 : 0;
        if (now() > deadline)
            fail("the window does not take its place");
        if (placed > 0)
            continue;
        XMoveResizeWindow(_display.get(), window, area.x, area.y, static_cast<unsigned>(area.width),
            static_cast<unsigned>(area.height));
        XSync(_display.get(), False);
    }
}

bool WatchedScreen::isPlaced(Window window, const Area& area)
{
    XWindowAttributes is {};
    int x = 0, y = 0;
    Window child = 0;
    return XGetWindowAttributes(_display.get(), window, &is)
        && XTranslateCoordinates(_display.get(), window, _root, 0, 0, &x, &y, &child) && x == area.x && y == area.y
        && is.width == area.width && is.height == area.height;
}

void WatchedScreen::forget()
{
    XSync(_display.get(), True);
}

std::optional<Area> WatchedScreen::nextDrawing(double deadline)
{
    for (;;) {
        while (XPending(_display.get()) > 0) {
            XEvent event;
            XNextEvent(_display.get(), &event);
            if (event.type != _damageEvent + XDamageNotify)
                continue;
            const auto& area = reinterpret_cast<XDamageNotifyEvent&>(event).area;
            return Area { area.x, area.y, area.width, area.height };
        }
        const double left = deadline - now();
        if (left <= 0)
            return std::nullopt;
        pollfd waiting { ConnectionNumber(_display.get()), POLLIN, 0 };
        poll(&waiting, 1, static_cast<int>(left * 1000) + 1);
    }
}

std::optional<double> WatchedScreen::shown(const Area& area, double quiet, double timeout)
{
    const double start = now();
    std::optional<double> since, last;
    std::size_t picture = 0;
    for (;;) {
        // Blank content is ignored.
        const auto drawn = nextDrawing(since ? *last + quiet : start + timeout);
        if (!drawn)
            return since;
        if (!drawn->meets(area))
            continue;
        last = now();
        const auto seen = look(area);
        if (!seen)
            since = std::nullopt;
        else if (!since || *seen != picture)
            since = last;
        picture = seen.value_or(0);
        if (now() > start + timeout)
            fail("the screen does not come to rest");
    }
}

std::optional<WatchedScreen::FirstPicture> WatchedScreen::firstPicture(const Area& area, double quiet, double timeout)
{
    const double end = now() + timeout;
    std::optional<FirstPicture> first;
    std::vector<std::uint32_t> pixels;
    std::set<std::size_t> changed;
    // Drawing must stop after the first picture.
    while (nextDrawing(first ? now() + quiet : end)) {
        const double time = now();
        const auto picture = take(area);
        const auto seen = picture.pixels();
        if (!first && !isBlank(picture)) {
            first = FirstPicture { time, 0 };
            pixels.assign(seen.begin(), seen.end());
        }
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            if (pixels[i] != seen[i])
                changed.insert(i);
        }
        if (now() > end)
            fail("the screen does not come to rest");
    }
    if (first)
        first->changedPixels = changed.size();
    return first;
}

void WatchedScreen::waitForPicture(const Area& area, double timeout)
{
    const double end = now() + timeout;
    while (!look(area)) {
        if (now() > end)
            fail("there is nothing to be seen");
        nextDrawing(now() + 0.1);
    }
}

void WatchedScreen::settle(double quiet)
{
    while (nextDrawing(now() + quiet))
        ;
}

// Returns a hash of the area's content; nullopt if it is blank.
std::optional<std::size_t> WatchedScreen::look(const Area& area)
{
    const auto picture = take(area);
    if (isBlank(picture))
        return std::nullopt;
    const auto pixels = picture.pixels();
    return std::hash<std::string_view>()({ reinterpret_cast<const char*>(pixels.data()), pixels.size_bytes() });
}

bool WatchedScreen::isBlank(const Picture& picture)
{
    const auto pixels = picture.pixels();
    std::set<std::uint32_t> colors;
    std::uint32_t last = ~pixels.front();
    for (const auto pixel : pixels) {
        if (std::exchange(last, pixel) == pixel)
            continue;
        colors.insert(pixel);
        if (colors.size() == minColors)
            return false;
    }
    return true;
}

std::size_t WatchedScreen::colors(const Area& area)
{
    const auto picture = take(area);
    return std::set<std::uint32_t>(picture.pixels().begin(), picture.pixels().end()).size();
}

}
