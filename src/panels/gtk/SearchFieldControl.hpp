#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtk/gtk.h>
#include <gtkmm/widget.h>

#include <functional>

namespace pagora {

// A GtkSearchEntry of a layout. Uses the C functions, because gtkmm's class changed between 4.12 and 4.14. Main thread
// only.
class SearchFieldControl : public TextField, public WidgetControl {
public:
    explicit SearchFieldControl(Gtk::Widget& entry);
    ~SearchFieldControl() override;

    void setStringValue(const std::string& text) override;
    std::string stringValue() const override;
    // Does nothing: the field is as wide as its pane.
    void sizeToFit() override { }

    // Sets the callbacks for Enter and for Escape.
    void setActions(std::function<void()> search, std::function<void()> leave);
    // Sets the callback for each change of the text.
    void setChanged(std::function<void()> changed) { _changed = std::move(changed); }

private:
    GtkEditable* _entry;
    std::function<void()> _search;
    std::function<void()> _leave;
    std::function<void()> _changed;
};

}
