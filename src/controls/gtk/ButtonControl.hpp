#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/button.h>

namespace pagora {

// A button of a layout.
class ButtonControl : public Button, public WidgetControl {
public:
    explicit ButtonControl(Gtk::Button& button);
    ~ButtonControl() override;

    void setAction(std::function<void()> action) override { _action = std::move(action); }

private:
    std::function<void()> _action;
    sigc::connection _clicked;
};

}
