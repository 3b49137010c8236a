#pragma once

namespace pagora {

// Where the program runs. In a Flatpak, portals start the page engine's processes and move files to the Trash.
enum class Surroundings { Desktop, Flatpak };

// Of this process.
Surroundings surroundings();

}
