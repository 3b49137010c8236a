#include "app/gtk/ShortcutsHelp.hpp"

#include "platform/Translation.hpp"
#include "platform/gtk/AccessibleNames.hpp"
#include "platform/gtk/FocusMark.hpp"

#include <gtkmm/builder.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

namespace pagora {

namespace {
constexpr const char* action = "shortcuts";
constexpr const char* key = "<Control>question";
}

ShortcutsHelp::ShortcutsHelp(Gtk::Application& application)
    : _application(application)
{
    _application.add_action(action, [this] { showOver(_application.get_active_window(), "library"); });
    _application.set_accels_for_action(std::string("app.") + action, { key });
}

ShortcutsHelp::~ShortcutsHelp()
{
    _application.remove_action(action);
}

void ShortcutsHelp::addKeyToReader(Gtk::Window& window)
{
    const auto keys = Gtk::ShortcutController::create();
    keys->set_scope(Gtk::ShortcutScope::GLOBAL);
    keys->add_shortcut(Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string(key),
        Gtk::CallbackAction::create([this, &window](Gtk::Widget&, const Glib::VariantBase&) {
            showOver(&window, "reader");
            return true;
        })));
    window.add_controller(keys);
}

void ShortcutsHelp::showOver(Gtk::Window* parent, const char* section)
{
    if (!_window) {
        const auto layout = Gtk::Builder::create_from_resource("/org/pagora/Pagora/ui/Shortcuts.ui");
        _window.reset(layout->get_widget<Gtk::ShortcutsWindow>("shortcuts"));
        _window->add_css_class("pagora");
        _window->set_hide_on_close(true);
        keepFocusMarked(*_window);
        leaveUnnamed(*_window);
        nameToolkitControls(*_window, _("Keyboard Shortcuts"));
    }
    if (parent)
        _window->set_transient_for(*parent);
    else
        _window->unset_transient_for();
    _window->property_section_name() = section;
    _window->present();
}

}
