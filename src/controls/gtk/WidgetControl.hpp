#pragma once

#include "controls/Controls.hpp"

#include <gtkmm/widget.h>

namespace pagora {

// Where the widget is in its parent, in points with the origin at the parent's bottom left; empty before it is laid
// out.
Rect frameInParent(const Gtk::Widget& widget);

// What every control does, over a widget of a layout. The widget belongs to its window, which outlives the control.
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
    // Asks for the size; the place too where the parent leaves places to its children.
    void setFrame(const Rect& frame) override;
    void makeFirstResponder() override { _widget.grab_focus(); }

    Gtk::Widget& widget() { return _widget; }

private:
    Gtk::Widget& _widget;
};

}
