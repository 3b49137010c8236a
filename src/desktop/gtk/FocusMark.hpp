#pragma once

#include <gtkmm/window.h>

namespace pagora {

// Keeps what has the keyboard marked from the first key on, until the pointer is pressed in the window: the toolkit
// lets the mark go some seconds after each key.
void keepFocusMarked(Gtk::Window& window);

}
