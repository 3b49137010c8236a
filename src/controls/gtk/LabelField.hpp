#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/label.h>
#include <gtkmm/textview.h>

namespace pagora {

// A text field over a label, or over a text view for multi-line texts.
class LabelField : public TextField, public WidgetControl {
public:
    explicit LabelField(Gtk::Label& label);
    explicit LabelField(Gtk::TextView& textView);

    void setStringValue(const std::string& text) override;
    std::string stringValue() const override { return _text; }
    void sizeToFit() override;

private:
    Gtk::Label* _label = nullptr;
    Gtk::TextView* _textView = nullptr;
    std::string _text;
};

}
