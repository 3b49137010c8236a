#include "covers/gtk/CellText.hpp"

#include "desktop/gtk/DisplayText.hpp"

namespace pagora {

Glib::ustring cellText(const std::optional<std::string>& text)
{
    if (!text)
        return {};
    constexpr std::size_t maxLength = 300;
    auto line = text->substr(0, maxLength);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return displayText(text->size() > maxLength ? line + "…" : line, maxLength + 8);
}

}
