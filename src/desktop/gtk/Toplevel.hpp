#pragma once

#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>
#include <gtkmm/box.h>
#include <gtkmm/stack.h>

#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The program's only window on the desktop. Several windows of the program share it: it shows the one that was ordered
// front last, and is hidden while none is ordered in. Its position and its maximized, tiled or full-screen state do not
// change when another window comes to the front. Must outlive the windows. Main thread only.
class Toplevel {
public:
    struct Size {
        int width = 0;
        int height = 0;
        bool operator==(const Size&) const = default;
    };
    // The frame of a window that is not in front.
    struct Placement {
        Size size;
        // The size when not maximized, and whether the window was maximized; nullopt if only the size is known.
        std::optional<Size> freeSize = std::nullopt;
        bool isMaximized = false;
    };
    // One of the windows that share the toplevel.
    class Member {
    public:
        virtual ~Member() = default;
        virtual Gtk::Widget& content() = 0;
        virtual const std::string& title() const = 0;
        virtual void didComeToFront() = 0;
        virtual void willLeaveFront() = 0;
        // Called when the state of the window, or of the toplevel while the window is in front, may have changed.
        virtual void stateDidChange() = 0;
        virtual void activeDidChange() = 0;
        virtual void fullScreenDidChange(bool isFullScreen) = 0;
        // Returns whether the toplevel may close.
        virtual bool shouldClose() = 0;
        // Stores the widget of the content that has the focus when the window is in front.
        virtual void rememberFocus(Gtk::Widget* focus) = 0;
        // Returns false if there is no such widget.
        virtual bool restoreFocus() = 0;
    };

    // The window belongs to the application while it is shown. Tests have no application.
    explicit Toplevel(Glib::RefPtr<Gtk::Application> application = {});
    ~Toplevel();
    Toplevel(const Toplevel&) = delete;
    Toplevel& operator=(const Toplevel&) = delete;

    Gtk::ApplicationWindow& window() { return _window; }
    // Returns the window that is shown; null if there is none.
    const Member* front() const { return _ordered.empty() ? nullptr : _ordered.back(); }
    // Hides the window permanently. Later orders change only the windows' own state: the display may be gone, and the
    // toolkit would wait for it forever.
    void end();

    // Called by the members.
    void add(Member& window);
    void remove(Member& window);
    void orderFront(Member& window);
    void orderOut(Member& window);
    void present();
    void showTitle();

    // The size on the screen, in the units of `setSize`.
    Size size() const;
    void setSize(Size size);
    Placement placement() const;
    void place(const Placement& placement);
    // Returns whether the desktop decides the size: maximized, tiled or full screen.
    bool isSizedByDesktop() const;
    bool isBeingResized() const { return _sizeAfterMaximized.has_value(); }
    bool hasAskedSize() const;
    bool isFullScreen() const;
    void setFullScreen(bool isFullScreen, Member& by);

private:
    // A full-screen request that the desktop has not confirmed, and the window that made it; null if that window was
    // destroyed.
    struct Asked {
        bool isFullScreen = false;
        Member* by = nullptr;
    };

    bool isOrderedIn(const Member& window) const;
    void showFront();
    void hideSoon();
    // Returns the size to use when the desktop lets the window choose.
    Size freeSize() const;
    bool isMaximized() const;
    void ask(Size size);
    void keepAskedSize();
    void sizeDidCome(Size size);
    void maximizedDidChange();
    void fullScreenDidChange();
    void keepFocusInFront();
    Member* ownerOf(const Gtk::Widget& widget) const;

    Glib::RefPtr<Gtk::Application> _application;
    Gtk::ApplicationWindow _window;
    Gtk::Box _noTitlebar;
    Gtk::Stack _contents;
    std::vector<Member*> _windows;
    // The windows that are ordered in; the last one is in front.
    std::vector<Member*> _ordered;
    std::optional<Asked> _asked;
    // Requested sizes that the desktop has not applied, in order.
    std::vector<Size> _askedSizes;
    // The size to apply when the window is no longer maximized.
    std::optional<Size> _sizeAfterMaximized;
    sigc::connection _hiding;
    bool _ended = false;
    std::vector<sigc::connection> _connections;
};

}
