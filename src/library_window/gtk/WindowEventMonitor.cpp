#include "library_window/gtk/WindowEventMonitor.hpp"

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/eventcontrollerlegacy.h>

namespace pagora {

namespace {

// The hardware code of the key A, for layouts with other letters.
constexpr guint hardwareKeyA = 38;

int classicKeyCode(guint key, guint hardwareKey)
{
    switch (key) {
    case GDK_KEY_a:
    case GDK_KEY_A:
        return LibraryEvent::keyA;
    case GDK_KEY_BackSpace:
    case GDK_KEY_Delete:
    case GDK_KEY_KP_Delete:
        return LibraryEvent::keyDelete;
    default:
        // Layouts beyond Latin-1 do not have the letter A.
        return hardwareKey == hardwareKeyA && key > 0xFF && gdk_keyval_to_unicode(key) ? LibraryEvent::keyA : -1;
    }
}

// Returns whether the key edits the text of a field. In `passing`, Control and A are left to the library.
bool isEditingText(Gtk::Window& window, int keyCode, Gtk::Widget* passing)
{
    auto* const focus = window.get_focus();
    if (!focus || !(GTK_IS_EDITABLE(focus->gobj()) || GTK_IS_TEXT_VIEW(focus->gobj())))
        return false;
    return keyCode != LibraryEvent::keyA || !passing || !focus->is_ancestor(*passing);
}

bool holdsControl(Gdk::ModifierType state)
{
    return (state & Gdk::ModifierType::CONTROL_MASK) != Gdk::ModifierType();
}

}

void WindowEventMonitor::watch(Gtk::Window& window)
{
    const auto ask = [monitor = _monitor](const LibraryEvent& event) {
        // Copied, because the monitor may be replaced during the call.
        const auto answer = *monitor;
        return answer && answer(event);
    };

    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [ask, &window, passing = _passing](guint key, guint hardwareKey, Gdk::ModifierType state) {
            const LibraryEvent event { .kind = LibraryEvent::Kind::KeyDown,
                .keyCode = classicKeyCode(key, hardwareKey),
                .command = holdsControl(state) };
            return !(event.keyCode >= 0 && isEditingText(window, event.keyCode, *passing)) && ask(event);
        },
        false);
    window.add_controller(keys);

    const auto buttons = Gtk::EventControllerLegacy::create();
    buttons->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    buttons->signal_event().connect(
        [ask](const Glib::RefPtr<const Gdk::Event>& event) {
            if (event->get_event_type() != Gdk::Event::Type::BUTTON_PRESS || event->get_button() != GDK_BUTTON_PRIMARY)
                return false;
            return ask(
                { .kind = LibraryEvent::Kind::LeftMouseDown, .command = holdsControl(event->get_modifier_state()) });
        },
        false);
    window.add_controller(buttons);
}

}
