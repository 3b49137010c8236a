#pragma once

#include "desktop/Window.hpp"

#include <gtkmm/popover.h>

namespace pagora {

// A popover that is anchored to a widget of its window. The widget must outlive this object. Main thread only.
class PopoverPanel : public Panel {
public:
    PopoverPanel(Gtk::Popover& popover, Gtk::Widget& anchor);
    ~PopoverPanel() override;

    void makeKeyAndOrderFront() override { _popover.popup(); }
    void orderOut() override { _popover.popdown(); }
    bool isVisible() const override { return _popover.get_visible(); }

private:
    Gtk::Popover& _popover;
};

}
