#pragma once

#include <string>
#include <vector>

namespace pagora {

// The first fonts of the font menu. Few systems have them, but most have a free substitute for each.

struct MenuFont {
    const char* name;
    // Substitutes of the same or a similar design, the nearest first.
    std::vector<const char*> relatives;
};

const std::vector<MenuFont>& menuFonts();

// Substitutes each of these fonts that is not installed, in this process and the page processes only. Writes a
// fontconfig file that includes the system's. Called before the first use of a font and before other threads exist.
// Returns false if the file cannot be written.
bool useBookFonts(const std::string& file);

// Returns the path of that file; empty if there is none.
const std::string& bookFontsFile();

}
