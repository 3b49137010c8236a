#pragma once

#include <gtkmm/widget.h>

#include <functional>

namespace pagora {

// Asks for the widget's tooltip when the pointer comes to rest on it; none where the text is empty. For widgets that
// are made or changed while a window comes up: each text that is set as a tooltip asks the display where the pointer
// is, and waits for the answer.
void showOnHover(Gtk::Widget& widget, std::function<Glib::ustring()> text);

}
