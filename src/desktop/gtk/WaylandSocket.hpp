#pragma once

namespace pagora {

// The page engine confines its processes to a Wayland socket in XDG_RUNTIME_DIR; without one they end the program. If
// WAYLAND_DISPLAY is the path of a socket elsewhere, makes a link to it in that folder and sets the variable to the
// name of the link. Changes nothing if the link cannot be made. Call it before the toolkit starts and before other
// threads exist.
void prepareWaylandSocket();

}
