#pragma once

namespace pagora {

// The processes of the page engine are confined to a Wayland socket in the folder XDG_RUNTIME_DIR; without one they end
// the program. Where WAYLAND_DISPLAY is the path of a socket elsewhere, makes a link to it in that folder, and lets the
// variable name the link. Changes nothing where the link cannot be made. Before the toolkit starts, and before there
// are other threads.
void prepareWaylandSocket();

}
