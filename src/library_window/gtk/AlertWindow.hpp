#pragma once

#include <gtkmm/builder.h>
#include <gtkmm/button.h>
#include <gtkmm/window.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace pagora {

// An alert over a window: texts, and buttons from left to right, of which the first has the focus. Main thread only.
class AlertWindow {
public:
    struct Button {
        std::string title;
        bool isDestructive = false;
    };

    // An empty text is not shown. `answered` receives the index of the button; 0 if the alert was closed.
    AlertWindow(Gtk::Window& parent, const std::string& message, const std::string& informativeText,
        const std::vector<Button>& buttons, std::function<void(std::size_t button)> answered);

    void present() { _window->present(); }
    Gtk::Window& window() { return *_window; }
    Gtk::Button& button(std::size_t number) { return *_buttons.at(number); }

private:
    void setText(const char* label, const std::string& text);
    void addButton(const Button& button);
    void answer(std::size_t button);

    Glib::RefPtr<Gtk::Builder> _layout;
    std::unique_ptr<Gtk::Window> _window;
    std::vector<Gtk::Button*> _buttons;
    std::function<void(std::size_t)> _answered;
};

}
