#include "controls/gtk/ButtonControl.hpp"

namespace pagora {

ButtonControl::ButtonControl(Gtk::Button& button)
    : WidgetControl(button)
{
    _clicked = button.signal_clicked().connect([this] {
        // Copied, because the action may destroy the button.
        if (const auto action = _action)
            action();
    });
}

ButtonControl::~ButtonControl()
{
    _clicked.disconnect();
}

}
