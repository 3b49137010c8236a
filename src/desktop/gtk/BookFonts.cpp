#include "desktop/gtk/BookFonts.hpp"

#include <glib.h>

namespace pagora {

namespace {

std::string writtenFile;

std::string element(const char* name, const std::string& content)
{
    return std::string("<") + name + ">" + content + "</" + name + ">";
}

std::string escaped(const std::string& text)
{
    char* const result = g_markup_escape_text(text.c_str(), static_cast<gssize>(text.size()));
    std::string copy = result;
    g_free(result);
    return copy;
}

// Returns the system's fontconfig file. A name without a folder is relative to fontconfig's folder.
std::string systemFile()
{
    const char* const file = g_getenv("FONTCONFIG_FILE");
    return file && *file ? file : "fonts.conf";
}

// The substitutes follow the name directly, before the system's own. "same" makes the page engine accept a substitute.
std::string configuration(const std::string& systemFile)
{
    std::string text = "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\">\n";
    std::string content = "\n";
    content += "<include ignore_missing=\"yes\">" + escaped(systemFile) + "</include>\n";
    for (const auto& font : menuFonts()) {
        std::string relatives;
        for (const auto* const relative : font.relatives)
            relatives += element("family", relative);
        content
            += "<alias binding=\"same\">" + element("family", font.name) + element("accept", relatives) + "</alias>\n";
    }
    return text + element("fontconfig", content) + "\n";
}

}

const std::vector<MenuFont>& menuFonts()
{
    static const std::vector<MenuFont> fonts {
        { "Arial", { "Liberation Sans", "Arimo", "Nimbus Sans" } },
        { "Baskerville",
            { "Libre Baskerville", "Baskervville", "Baskervald ADF Std", "Charis SIL Compact", "Charis SIL" } },
        // Charis derives from Bitstream Charter, by the designer of Georgia.
        { "Georgia", { "Gelasio", "Charis SIL Compact", "Charis SIL", "Charis", "XCharter", "DejaVu Serif" } },
        { "Helvetica", { "TeX Gyre Heros", "Nimbus Sans", "Liberation Sans", "Arimo" } },
        { "Palatino", { "TeX Gyre Pagella", "P052", "URW Palladio L" } },
        { "Times New Roman", { "Liberation Serif", "Tinos", "TeX Gyre Termes", "Nimbus Roman" } },
    };
    return fonts;
}

bool useBookFonts(const std::string& file)
{
    const std::string text = configuration(systemFile());
    char* folder = g_path_get_dirname(file.c_str());
    g_mkdir_with_parents(folder, 0700);
    g_free(folder);
    if (!g_file_set_contents(file.c_str(), text.c_str(), static_cast<gssize>(text.size()), nullptr))
        return false;
    g_setenv("FONTCONFIG_FILE", file.c_str(), TRUE);
    // The Graphite shaper would draw a box for each line break in a page's source; the OpenType shaper treats it as a
    // space.
    g_setenv("HB_SHAPER_LIST", "ot", FALSE);
    writtenFile = file;
    return true;
}

const std::string& bookFontsFile()
{
    return writtenFile;
}

}
