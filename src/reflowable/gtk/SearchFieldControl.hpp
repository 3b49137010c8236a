#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtk/gtk.h>
#include <gtkmm/widget.h>

#include <functional>

namespace pagora {

// The GtkSearchEntry of a layout. It is used by GTK's own functions: gtkmm has one class of it up to 4.12 and another
// one from 4.14 on. Main thread.
class SearchFieldControl : public TextField, public WidgetControl {
public:
    explicit SearchFieldControl(Gtk::Widget& entry);
    ~SearchFieldControl() override;

    void setStringValue(const std::string& text) override;
    std::string stringValue() const override;
    // It is as wide as its pane.
    void sizeToFit() override { }

    // Called when the person presses Enter, and Escape.
    void setActions(std::function<void()> search, std::function<void()> leave);

private:
    GtkEditable* _entry;
    std::function<void()> _search;
    std::function<void()> _leave;
};

}
