#include "reader/gtk/NaviButton.hpp"

#include "base/Log.hpp"

#include <glibmm/main.h>
#include <gtkmm/eventcontrollermotion.h>

#include <cmath>

namespace pagora {

NaviButton::NaviButton(Gtk::Button& button, ActionQueue& queue)
    : WidgetControl(button)
    , _button(button)
{
    _clicked = _button.signal_clicked().connect([this, &queue] {
        queue.post([this] {
            // Copied, because the action may close the window.
            if (const auto action = _action)
                action();
        });
    });
    const auto pointer = Gtk::EventControllerMotion::create();
    _entered = pointer->signal_enter().connect([this](double, double) { cursorUpdate(); });
    _button.add_controller(pointer);
    _pointer = pointer;
    setHandCursor();
    // The left button stays left in right-to-left interfaces.
    _button.set_direction(Gtk::TextDirection::LTR);
    if (auto* const icon = _button.get_child())
        icon->set_direction(Gtk::TextDirection::LTR);
}

NaviButton::~NaviButton()
{
    _clicked.disconnect();
    _entered.disconnect();
    for (auto& reset : _cursorResets)
        reset.disconnect();
    _button.remove_controller(_pointer);
}

void NaviButton::cursorUpdate()
{
    log("cursor update");
    for (auto& reset : _cursorResets)
        reset.disconnect();
    _cursorResets.clear();
    // The cursor is set repeatedly for a second, because the page below sets its own.
    float delay = 0;
    for (int i = 0; i < 20; ++i, delay += 0.05f) {
        const auto milliseconds = static_cast<unsigned>(std::lround(delay * 1000));
        _cursorResets.push_back(Glib::signal_timeout().connect(
            [this] {
                setHandCursor();
                return false;
            },
            milliseconds));
    }
}

void NaviButton::setHandCursor()
{
    _button.set_cursor("pointer");
}

}
