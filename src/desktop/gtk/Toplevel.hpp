#pragma once

#include "desktop/gtk/SharedWindow.hpp"

#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>
#include <gtkmm/box.h>
#include <gtkmm/stack.h>

#include <optional>
#include <vector>

namespace pagora {

// The one window that the program has on the desktop. Several windows of the program share it: it shows the one that
// was ordered front last, and is hidden while none is ordered in. Where the desktop has it, and whether it is
// maximised, tiled or full screen, does not change when another window comes to the front. It outlives the windows.
// Main thread.
class Toplevel {
public:
    // Belongs to the application for as long as it is shown; without one, for tests, to none.
    explicit Toplevel(Glib::RefPtr<Gtk::Application> application = {});
    ~Toplevel();
    Toplevel(const Toplevel&) = delete;
    Toplevel& operator=(const Toplevel&) = delete;

    Gtk::ApplicationWindow& window() { return _window; }
    // The window that is shown; null for none.
    const SharedWindow* front() const { return _ordered.empty() ? nullptr : _ordered.back(); }
    // Hides the window for good. Later orders change what the windows say of themselves and nothing on the display,
    // which may be gone: the toolkit would wait for its answer for ever.
    void end();

private:
    friend class SharedWindow;
    using Size = SharedWindow::Size;
    // A change that the desktop has not reported yet, and who asked for it; null once that window is gone or covered.
    struct Asked {
        bool isFullScreen = false;
        SharedWindow* by = nullptr;
    };

    void add(SharedWindow& window);
    void remove(SharedWindow& window);
    void orderFront(SharedWindow& window);
    void orderOut(SharedWindow& window);
    void present();
    bool isOrderedIn(const SharedWindow& window) const;
    void showFront();
    void showTitle();
    void hideSoon();

    // On the screen, in the units of `setSize`.
    Size size() const;
    // Where the desktop leaves the choice.
    Size freeSize() const;
    void setSize(Size size);
    bool isMaximized() const;
    SharedWindow::Placement placement() const;
    void place(const SharedWindow::Placement& placement);
    // Whether the desktop decides the size: maximised, tiled or full screen.
    bool isSizedByDesktop() const;
    bool isBeingResized() const { return _sizeAfterMaximized.has_value(); }
    bool hasAskedSize() const;
    void maximizedDidChange();

    bool isFullScreen() const;
    void setFullScreen(bool isFullScreen, SharedWindow& by);
    void fullScreenDidChange();

    void keepFocusInFront();
    SharedWindow* ownerOf(const Gtk::Widget& widget) const;

    Glib::RefPtr<Gtk::Application> _application;
    Gtk::ApplicationWindow _window;
    Gtk::Box _noTitlebar;
    Gtk::Stack _contents;
    std::vector<SharedWindow*> _windows;
    // Those that are ordered in; the last is in front.
    std::vector<SharedWindow*> _ordered;
    std::optional<Asked> _asked;
    // The size that it gets as soon as it is not maximised any more.
    std::optional<Size> _sizeAfterMaximized;
    sigc::connection _hiding;
    bool _ended = false;
    std::vector<sigc::connection> _connections;
};

}
