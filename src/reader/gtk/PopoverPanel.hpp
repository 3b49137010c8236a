#pragma once

#include "desktop/Window.hpp"

#include <gtkmm/popover.h>

namespace pagora {

// A panel that hangs from a widget of its window, which outlives it. Main thread.
class PopoverPanel : public Window {
public:
    PopoverPanel(Gtk::Popover& popover, Gtk::Widget& anchor);
    ~PopoverPanel() override;

    // A panel has no title bar, and its place and size are its anchor's and its content's matter.
    void setTitle(const std::string&) override { }
    Rect frame() const override;
    void setFrame(const Rect&) override { }
    void animateToFrame(const Rect&) override { }
    void center() override { }

    void orderFront() override { _popover.popup(); }
    void makeKeyAndOrderFront() override { _popover.popup(); }
    void orderOut() override { _popover.popdown(); }
    bool isVisible() const override { return _popover.get_visible(); }
    bool isKeyWindow() const override { return _popover.get_visible(); }
    void toggleFullScreen() override { }
    Reply<void> laidOut() override { return Reply<void>::of(); }

private:
    Gtk::Popover& _popover;
};

}
