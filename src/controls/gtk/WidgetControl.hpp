#pragma once

#include "controls/Controls.hpp"
#include "desktop/gtk/MainThread.hpp"

#include <gtkmm/widget.h>

#include <atomic>

namespace pagora {

// Where the widget is in its parent, in points with the origin at the parent's bottom left; empty before it is laid
// out.
Rect frameInParent(const Gtk::Widget& widget);

// What every control does, over a widget of a layout. The widget belongs to its window, which outlives the control.
// Hiding and enabling may be called on any thread, and so may asking for both; the rest on the main thread.
class WidgetControl : public virtual Control, protected MainThreadOwner {
public:
    explicit WidgetControl(Gtk::Widget& widget);
    ~WidgetControl() override;

    void setHidden(bool hidden) override;
    bool isHidden() const override { return _hidden; }
    void setEnabled(bool enabled) override;
    bool isEnabled() const override { return _enabled; }
    Rect frame() const override { return frameInParent(_widget); }
    // Asks for the size; the place too where the parent leaves places to its children.
    void setFrame(const Rect& frame) override;
    void makeFirstResponder() override { _widget.grab_focus(); }

    Gtk::Widget& widget() { return _widget; }

private:
    Gtk::Widget& _widget;
    std::atomic<bool> _hidden;
    std::atomic<bool> _enabled;
    sigc::connection _visibleChanged;
    sigc::connection _sensitiveChanged;
};

}
