#pragma once

#include "controls/Controls.hpp"

#include <gtkmm/widget.h>

namespace pagora {

// Returns the widget's frame in its parent, in points with the origin at the bottom left; empty before the layout.
Rect frameInParent(const Gtk::Widget& widget);

// The common part of all controls. The widget belongs to its window, which must outlive the control.
class WidgetControl : public virtual Control {
public:
    explicit WidgetControl(Gtk::Widget& widget)
        : _widget(widget)
    {
    }

    void setHidden(bool hidden) override { _widget.set_visible(!hidden); }
    bool isHidden() const override { return !_widget.get_visible(); }
    void setEnabled(bool enabled) override { _widget.set_sensitive(enabled); }
    bool isEnabled() const override { return _widget.get_sensitive(); }
    Rect frame() const override { return frameInParent(_widget); }
    // Requests the size, and the position if the parent is a Gtk::Fixed.
    void setFrame(const Rect& frame) override;
    void makeFirstResponder() override { _widget.grab_focus(); }

    Gtk::Widget& widget() { return _widget; }

private:
    Gtk::Widget& _widget;
};

}
