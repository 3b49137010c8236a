#pragma once

namespace pagora {

// The environment in which the program runs. In a Flatpak, portals start the page engine's processes and move files to
// the Trash.
enum class Surroundings { Desktop, Flatpak };

// Returns the environment of this process.
Surroundings surroundings();

}
