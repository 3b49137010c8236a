#include "desktop/gtk/Toplevel.hpp"

#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "desktop/gtk/FocusMark.hpp"

#include <gdk/gdk.h>
#include <gdkmm/surface.h>
#include <glibmm/main.h>

#include <algorithm>
#include <utility>

namespace pagora {

namespace {

// The default size.
constexpr int firstWidth = 1032;
constexpr int firstHeight = 720;

constexpr std::size_t maxTitleLength = 1'000;

constexpr int sizedByDesktop = GDK_TOPLEVEL_STATE_MAXIMIZED | GDK_TOPLEVEL_STATE_FULLSCREEN | GDK_TOPLEVEL_STATE_TILED
    | GDK_TOPLEVEL_STATE_TOP_TILED | GDK_TOPLEVEL_STATE_RIGHT_TILED | GDK_TOPLEVEL_STATE_BOTTOM_TILED
    | GDK_TOPLEVEL_STATE_LEFT_TILED;

}

Toplevel::Toplevel(Glib::RefPtr<Gtk::Application> application)
    : _application(std::move(application))
{
    _window.set_title("Pagora");
    _window.set_icon_name(PAGORA_IDENTIFIER);
    _window.set_default_size(firstWidth, firstHeight);
    _window.add_css_class("pagora");
    // Each window's content has its own title bar.
    _noTitlebar.set_visible(false);
    _window.set_titlebar(_noTitlebar);
    _contents.add_css_class("contents-of-windows");
    _contents.set_overflow(Gtk::Overflow::HIDDEN);
    _contents.set_hhomogeneous(false);
    _contents.set_vhomogeneous(false);
    _window.set_child(_contents);
    keepFocusMarked(_window);
    leaveUnnamed(_window);

    _connections = {
        _window.property_is_active().signal_changed().connect([this] {
            for (auto* const window : _windows)
                window->activeDidChange();
        }),
        _window.property_fullscreened().signal_changed().connect([this] { fullScreenDidChange(); }),
        _window.property_default_width().signal_changed().connect([this] { keepAskedSize(); }),
        _window.property_default_height().signal_changed().connect([this] { keepAskedSize(); }),
        _window.signal_realize().connect([this] {
            _window.get_surface()->signal_layout().connect([this](int width, int height) {
                sizeDidCome({ width, height });
            });
        }),
        _window.property_maximized().signal_changed().connect([this] { maximizedDidChange(); }),
        _window.property_focus_widget().signal_changed().connect([this] { keepFocusInFront(); }),
        _window.signal_close_request().connect(
            [this] { return _ordered.empty() || !_ordered.back()->shouldClose(); }, false),
    };
    if (_application) {
        _window.set_application(_application);
        // GTK removes a hidden window from its application, and with it the program's actions and keys.
        _connections.push_back(_window.signal_show().connect([this] { _window.set_application(_application); }));
    }
}

Toplevel::~Toplevel()
{
    _hiding.disconnect();
    for (auto& connection : _connections)
        connection.disconnect();
}

void Toplevel::add(Member& window)
{
    window.content().set_visible(false);
    _contents.add(window.content());
    leaveUnnamed(_contents);
    _windows.push_back(&window);
}

void Toplevel::remove(Member& window)
{
    orderOut(window);
    std::erase(_windows, &window);
    if (_asked && _asked->by == &window)
        _asked->by = nullptr;
    _contents.remove(window.content());
}

void Toplevel::orderFront(Member& window)
{
    auto* const before = _ordered.empty() ? nullptr : _ordered.back();
    if (before != &window) {
        if (before)
            before->willLeaveFront();
        std::erase(_ordered, &window);
        _ordered.push_back(&window);
        showFront();
        if (before)
            before->stateDidChange();
    }
    _hiding.disconnect();
    if (!_ended)
        _window.set_visible(true);
}

void Toplevel::present()
{
    if (!_ended)
        _window.present();
}

void Toplevel::end()
{
    _ended = true;
    _hiding.disconnect();
    _window.set_visible(false);
}

void Toplevel::orderOut(Member& window)
{
    const bool wasFront = front() == &window;
    if (wasFront)
        window.willLeaveFront();
    std::erase(_ordered, &window);
    if (!wasFront)
        window.content().set_visible(false);
    else if (_ordered.empty())
        hideSoon();
    else
        showFront();
    window.stateDidChange();
}

// Deferred, because another window may be ordered in directly afterwards.
void Toplevel::hideSoon()
{
    _hiding.disconnect();
    _hiding = Glib::signal_idle().connect(
        [this] {
            _window.set_visible(false);
            return false;
        },
        Glib::PRIORITY_HIGH);
}

void Toplevel::showFront()
{
    auto& front = *_ordered.back();
    // The stack would focus the first control of the content.
    _window.unset_focus();
    front.content().set_visible(true);
    _contents.set_visible_child(front.content());
    for (auto* const window : _windows) {
        if (!isOrderedIn(*window))
            window->content().set_visible(false);
    }
    showTitle();
    front.didComeToFront();
    front.stateDidChange();
}

bool Toplevel::isOrderedIn(const Member& window) const
{
    return std::find(_ordered.begin(), _ordered.end(), &window) != _ordered.end();
}

void Toplevel::showTitle()
{
    _window.set_title(displayText(_ordered.back()->title(), maxTitleLength));
}

bool Toplevel::isSizedByDesktop() const
{
    const auto surface = _window.get_surface();
    return surface && _window.get_mapped()
        && (gdk_toplevel_get_state(GDK_TOPLEVEL(const_cast<GdkSurface*>(surface->gobj()))) & sizedByDesktop) != 0;
}

Toplevel::Size Toplevel::freeSize() const
{
    Size size;
    _window.get_default_size(size.width, size.height);
    return size;
}

// Returns the default size. The widget's size excludes the decorations, so windows that pass their frames on would
// shrink.
Toplevel::Size Toplevel::size() const
{
    if (_sizeAfterMaximized || !isSizedByDesktop())
        return freeSize();
    const auto surface = _window.get_surface();
    return { surface->get_width(), surface->get_height() };
}

void Toplevel::setSize(Size size)
{
    if (size == this->size())
        return;
    if (_window.is_maximized() && !_window.is_fullscreen()) {
        // The desktop restores the previous size first; this size is applied afterwards.
        _sizeAfterMaximized = size;
        _window.unmaximize();
    }
    ask(size);
}

void Toplevel::ask(Size size)
{
    _askedSizes.push_back(size);
    _window.set_default_size(size.width, size.height);
}

// The toolkit adopts each size that the desktop reports as the requested one. A late answer to an earlier request must
// not replace the last request.
void Toplevel::keepAskedSize()
{
    if (_askedSizes.empty() || _askedSizes.back() == freeSize())
        return;
    const auto last = _askedSizes.back();
    if (std::find(_askedSizes.begin(), _askedSizes.end(), freeSize()) != _askedSizes.end())
        _window.set_default_size(last.width, last.height);
}

// Called with the size that was requested last, or that the desktop or the user has chosen.
void Toplevel::sizeDidCome(Size size)
{
    const auto asked = std::find(_askedSizes.begin(), _askedSizes.end(), size);
    if (asked == _askedSizes.end() || size == _askedSizes.back())
        _askedSizes.clear();
}

bool Toplevel::isMaximized() const
{
    return _window.is_maximized() && !_sizeAfterMaximized;
}

Toplevel::Placement Toplevel::placement() const
{
    return { size(), freeSize(), isMaximized() };
}

void Toplevel::place(const Placement& placement)
{
    if (!placement.freeSize)
        return setSize(placement.size);
    if (!placement.isMaximized || isMaximized())
        return setSize(placement.isMaximized ? placement.size : *placement.freeSize);
    _sizeAfterMaximized.reset();
    ask(*placement.freeSize);
    _window.maximize();
}

void Toplevel::maximizedDidChange()
{
    if (_window.is_maximized() || !_sizeAfterMaximized)
        return;
    ask(*std::exchange(_sizeAfterMaximized, std::nullopt));
}

bool Toplevel::hasAskedSize() const
{
    const auto surface = _window.get_surface();
    return surface && freeSize() == Size { surface->get_width(), surface->get_height() };
}

// Returns the requested state, because the desktop answers later.
bool Toplevel::isFullScreen() const
{
    return _asked ? _asked->isFullScreen : _window.is_fullscreen();
}

void Toplevel::setFullScreen(bool isFullScreen, Member& by)
{
    _asked = Asked { isFullScreen, &by };
    if (isFullScreen)
        _window.fullscreen();
    else
        _window.unfullscreen();
}

void Toplevel::fullScreenDidChange()
{
    const bool isFullScreen = _window.is_fullscreen();
    auto* told = _ordered.empty() ? nullptr : _ordered.back();
    if (told)
        told->stateDidChange();
    if (_asked) {
        // This is a late answer to an earlier request.
        if (_asked->isFullScreen != isFullScreen)
            return;
        told = std::exchange(_asked, std::nullopt)->by;
    }
    if (told)
        told->fullScreenDidChange(isFullScreen);
}

Toplevel::Member* Toplevel::ownerOf(const Gtk::Widget& widget) const
{
    const auto owns
        = [&widget](Member* window) { return &widget == &window->content() || widget.is_ancestor(window->content()); };
    const auto owner = std::find_if(_windows.begin(), _windows.end(), owns);
    return owner == _windows.end() ? nullptr : *owner;
}

// A focus change in a window that is not in front is applied when it comes to the front.
void Toplevel::keepFocusInFront()
{
    auto* const focus = _window.get_focus();
    auto* const owner = focus ? ownerOf(*focus) : nullptr;
    if (!owner || _ordered.empty())
        return;
    auto& front = *_ordered.back();
    owner->rememberFocus(focus);
    if (owner == &front)
        return;
    if (!front.restoreFocus())
        _window.unset_focus();
}

}
