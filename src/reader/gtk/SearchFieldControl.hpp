#pragma once

#include "platform/gtk/WidgetControl.hpp"

#include <gtkmm/searchentry.h>

namespace pagora {

// The search field of a layout. Main thread.
class SearchFieldControl : public TextField, public WidgetControl {
public:
    explicit SearchFieldControl(Gtk::SearchEntry& entry)
        : WidgetControl(entry)
        , _entry(entry)
    {
    }

    void setStringValue(const std::string& text) override { _entry.set_text(text); }
    std::string stringValue() const override { return _entry.get_text(); }
    // It is as wide as its pane.
    void sizeToFit() override { }

private:
    Gtk::SearchEntry& _entry;
};

}
