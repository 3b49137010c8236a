#include "app/gtk/ShortcutsHelp.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/FocusMark.hpp"

#include <gtkmm/builder.h>

#include <utility>

namespace pagora {

namespace {
constexpr const char* action = "shortcuts";
constexpr const char* key = "<Control>question";
}

ShortcutsHelp::ShortcutsHelp(Gtk::Application& application, Gtk::Window& parent, std::function<bool()> isReading)
    : _application(application)
    , _parent(parent)
    , _isReading(std::move(isReading))
{
    _application.add_action(action, [this] { show(); });
    _application.set_accels_for_action(std::string("app.") + action, { key });
}

ShortcutsHelp::~ShortcutsHelp()
{
    _application.remove_action(action);
}

void ShortcutsHelp::show()
{
    if (!_window) {
        const auto layout = Gtk::Builder::create_from_resource("/org/pagora/Pagora/ui/Shortcuts.ui");
        _window.reset(layout->get_widget<Gtk::ShortcutsWindow>("shortcuts"));
        _window->add_css_class("pagora");
        _window->set_hide_on_close(true);
        _window->set_transient_for(_parent);
        keepFocusMarked(*_window);
        leaveUnnamed(*_window);
        nameToolkitControls(*_window, _("Keyboard Shortcuts"));
    }
    _window->property_section_name() = _isReading() ? "reader" : "library";
    _window->present();
}

}
