#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/label.h>
#include <gtkmm/textview.h>

#include <mutex>

namespace pagora {

// A text field over a label, or over a text view for texts of many lines. The text may be set and read on any thread.
class LabelField : public TextField, public WidgetControl {
public:
    explicit LabelField(Gtk::Label& label);
    explicit LabelField(Gtk::TextView& textView);

    void setStringValue(const std::string& text) override;
    std::string stringValue() const override;
    void sizeToFit() override;

private:
    Gtk::Label* _label = nullptr;
    Gtk::TextView* _textView = nullptr;
    mutable std::mutex _mutex;
    std::string _text;
};

}
