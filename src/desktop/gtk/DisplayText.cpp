#include "desktop/gtk/DisplayText.hpp"

#include <glib.h>

#include <algorithm>
#include <memory>

namespace pagora {

Glib::ustring displayText(const std::string& text, std::size_t limit)
{
    auto length = std::min(text.size(), limit);
    // Do not cut inside a UTF-8 character.
    while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    if (g_utf8_validate_len(text.data(), length, nullptr))
        return Glib::ustring(std::string(text, 0, length));
    const std::unique_ptr<char, decltype(&g_free)> valid(
        g_utf8_make_valid(text.data(), static_cast<gssize>(length)), g_free);
    std::string shown(valid.get());
    std::erase(shown, '\0');
    return Glib::ustring(shown);
}

}
