#include "covers/gtk/CellText.hpp"

#include "desktop/gtk/DisplayText.hpp"

#include <algorithm>

namespace pagora {

Glib::ustring cellText(const std::optional<std::string>& text)
{
    if (!text)
        return {};
    constexpr std::size_t longest = 300;
    auto line = text->substr(0, longest);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return displayText(text->size() > longest ? line + "…" : line, longest + 8);
}

}
