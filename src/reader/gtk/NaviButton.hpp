#pragma once

#include "contents/gtk/ActionQueue.hpp"
#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/button.h>

#include <vector>

namespace pagora {

// A page button: a strip over the page's edge that is transparent except while the pointer is over it. Main thread
// only.
class NaviButton : public Button, public WidgetControl {
public:
    // Clicks are posted to `queue`.
    NaviButton(Gtk::Button& button, ActionQueue& queue);
    ~NaviButton() override;

    void setAction(std::function<void()> action) override { _action = std::move(action); }

private:
    void cursorUpdate();
    void setHandCursor();

    Gtk::Button& _button;
    std::function<void()> _action;
    Glib::RefPtr<Gtk::EventController> _pointer;
    sigc::connection _clicked;
    sigc::connection _entered;
    std::vector<sigc::connection> _cursorResets;
};

}
