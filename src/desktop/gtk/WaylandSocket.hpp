#pragma once

namespace pagora {

// The page engine confines its processes to a Wayland socket in XDG_RUNTIME_DIR, and its processes exit without one. If
// WAYLAND_DISPLAY is the path of a socket elsewhere, creates a link to it in that folder and sets the variable to the
// name of the link. Changes nothing if the link cannot be created. Called before the toolkit starts and before other
// threads exist.
void prepareWaylandSocket();

}
