#include "library_window/gtk/AlertWindow.hpp"

#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "desktop/gtk/FocusMark.hpp"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <utility>

namespace pagora {

AlertWindow::AlertWindow(Gtk::Window& parent, const std::string& message, const std::string& informativeText,
    const std::vector<Button>& buttons, std::function<void(std::size_t button)> answered)
    : _layout(Gtk::Builder::create_from_resource("/org/pagora/Pagora/ui/Alert.ui"))
    , _window(_layout->get_widget<Gtk::Window>("alert"))
    , _answered(std::move(answered))
{
    keepFocusMarked(*_window);
    _window->set_transient_for(parent);
    setText("message", message);
    setText("informativeText", informativeText);
    setAccessibleName(*_window, displayText(message.empty() ? informativeText : message));
    for (const auto& button : buttons)
        addButton(button);
    _window->set_default_widget(*_buttons.front());
    _window->set_focus(*_buttons.front());
    _window->signal_close_request().connect(
        [this] {
            answer(0);
            return true;
        },
        false);
}

void AlertWindow::setText(const char* label, const std::string& text)
{
    auto* const shown = _layout->get_widget<Gtk::Label>(label);
    shown->set_text(displayText(text));
    shown->set_visible(!text.empty());
}

void AlertWindow::addButton(const Button& button)
{
    auto* const made = Gtk::make_managed<Gtk::Button>(displayText(button.title));
    if (button.isDestructive)
        made->add_css_class("destructive-action");
    made->signal_clicked().connect([this, number = _buttons.size()] { answer(number); });
    _layout->get_widget<Gtk::Box>("buttons")->append(*made);
    _buttons.push_back(made);
}

// Calls the handler once, because it may show the next alert in place of this one.
void AlertWindow::answer(std::size_t button)
{
    _window->set_visible(false);
    if (const auto answered = std::exchange(_answered, nullptr))
        answered(button);
}

}
