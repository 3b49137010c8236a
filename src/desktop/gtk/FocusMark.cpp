#include "desktop/gtk/FocusMark.hpp"

#include <gtkmm/eventcontrollerlegacy.h>

#include <memory>

namespace pagora {

namespace {

// Pages draw their own focus ring. Excluding them avoids a redraw every few seconds while a book is read.
bool isInPage(Gtk::Window& window)
{
    auto* const focus = gtk_window_get_focus(window.gobj());
    return focus && g_type_is_a(G_OBJECT_TYPE(focus), g_type_from_name("WebKitWebView"));
}

// Deferred: GTK is still clearing the focus ring.
void markSoon(Gtk::Window& window)
{
    const auto mark = +[](gpointer window) -> gboolean {
        if (gtk_widget_get_mapped(GTK_WIDGET(window)))
            gtk_window_set_focus_visible(GTK_WINDOW(window), TRUE);
        return G_SOURCE_REMOVE;
    };
    g_idle_add_full(G_PRIORITY_HIGH_IDLE, mark, g_object_ref(window.gobj()), g_object_unref);
}

}

void keepFocusMarked(Gtk::Window& window)
{
    const auto byPointer = std::make_shared<bool>(false);
    const auto presses = Gtk::EventControllerLegacy::create();
    presses->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    presses->signal_event().connect(
        [&window, byPointer](const Glib::RefPtr<const Gdk::Event>& event) {
            const auto type = event->get_event_type();
            if (type == Gdk::Event::Type::BUTTON_PRESS || type == Gdk::Event::Type::TOUCH_BEGIN) {
                *byPointer = true;
                window.property_focus_visible() = false;
                *byPointer = false;
            }
            return false;
        },
        false);
    window.add_controller(presses);
    window.property_focus_visible().signal_changed().connect([&window, byPointer] {
        if (!window.property_focus_visible() && !*byPointer && window.get_mapped() && !isInPage(window))
            markSoon(window);
    });
}

}
