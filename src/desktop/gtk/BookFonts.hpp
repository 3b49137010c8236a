#pragma once

#include <string>
#include <vector>

namespace pagora {

// The fonts of the font menu that come first: few systems have them, but most have a free relative of each.

struct MenuFont {
    const char* name;
    // Families of the same design or of a close one, the nearest first.
    std::vector<const char*> relatives;
};

const std::vector<MenuFont>& menuFonts();

// Shows, in this process and in those of the page engine only, each of these fonts that is not installed as the first
// of its relatives that is. Fonts, and what the desktop says of them, stay as they are. Writes the file that says so.
// Called before anything asks for a font and before there are other threads; false when the file cannot be written.
bool useBookFonts(const std::string& file);

// The file that was written; empty without one.
const std::string& bookFontsFile();

}
