#pragma once

#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>
#include <gtkmm/box.h>
#include <gtkmm/stack.h>

#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The only window of the program on the desktop. Several windows of the program share it: it shows the one that was
// ordered front last, and is hidden while none is ordered in. Its place and whether it is maximised, tiled or full
// screen do not change when another window comes to the front. Outlives the windows. Main thread.
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
        // The size when it is not maximised, and whether it was maximised; missing when only the size is known.
        std::optional<Size> freeSize = std::nullopt;
        bool isMaximized = false;
    };
    // One of the windows that share it.
    class Member {
    public:
        virtual ~Member() = default;
        virtual Gtk::Widget& content() = 0;
        virtual const std::string& title() const = 0;
        virtual void didComeToFront() = 0;
        virtual void willLeaveFront() = 0;
        // Its own state, or that of the toplevel while it is in front, may have changed.
        virtual void stateDidChange() = 0;
        virtual void activeDidChange() = 0;
        virtual void fullScreenDidChange(bool isFullScreen) = 0;
        // Whether the toplevel may close.
        virtual bool shouldClose() = 0;
        // The widget of the content that has the focus when the window is in front.
        virtual void rememberFocus(Gtk::Widget* focus) = 0;
        // False when there is none.
        virtual bool restoreFocus() = 0;
    };

    // Belongs to the application while it is shown. Tests have no application.
    explicit Toplevel(Glib::RefPtr<Gtk::Application> application = {});
    ~Toplevel();
    Toplevel(const Toplevel&) = delete;
    Toplevel& operator=(const Toplevel&) = delete;

    Gtk::ApplicationWindow& window() { return _window; }
    // The window that is shown; null for none.
    const Member* front() const { return _ordered.empty() ? nullptr : _ordered.back(); }
    // Hides the window permanently. Later orders change only the windows' own state: the display may be gone, and the
    // toolkit would wait for it forever.
    void end();

    // For its members.
    void add(Member& window);
    void remove(Member& window);
    void orderFront(Member& window);
    void orderOut(Member& window);
    void present();
    void showTitle();

    // On the screen, in the units of `setSize`.
    Size size() const;
    void setSize(Size size);
    Placement placement() const;
    void place(const Placement& placement);
    // Whether the desktop decides the size: maximised, tiled or full screen.
    bool isSizedByDesktop() const;
    bool isBeingResized() const { return _sizeAfterMaximized.has_value(); }
    bool hasAskedSize() const;
    bool isFullScreen() const;
    void setFullScreen(bool isFullScreen, Member& by);

private:
    // A full-screen request that the desktop has not confirmed, and the window that made it; null when that window was
    // destroyed.
    struct Asked {
        bool isFullScreen = false;
        Member* by = nullptr;
    };

    bool isOrderedIn(const Member& window) const;
    void showFront();
    void hideSoon();
    // Used when the desktop lets the window choose.
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
    // The windows that are ordered in; the last is in front.
    std::vector<Member*> _ordered;
    std::optional<Asked> _asked;
    // Requested sizes that the desktop has not applied, in order.
    std::vector<Size> _askedSizes;
    // The size to apply when the window is no longer maximised.
    std::optional<Size> _sizeAfterMaximized;
    sigc::connection _hiding;
    bool _ended = false;
    std::vector<sigc::connection> _connections;
};

}
