#pragma once

#include <gtkmm/window.h>

namespace pagora {

// Keeps the focus ring visible from the first key until the pointer is pressed in the window, except on a page. GTK
// hides it a few seconds after each key.
void keepFocusMarked(Gtk::Window& window);

}
