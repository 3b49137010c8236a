#pragma once

#include <gtkmm/widget.h>

#include <functional>

namespace pagora {

// Provides the widget's tooltip on demand; no tooltip if the text is empty. Setting a tooltip text directly queries the
// pointer position from the display and waits, which slows down window creation.
void showOnHover(Gtk::Widget& widget, std::function<Glib::ustring()> text);

}
