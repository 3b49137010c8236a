#include "page/PageSelection.hpp"

namespace pagora {

namespace {

constexpr std::size_t maxBoxes = 8;

std::istream& operator>>(std::istream& words, Rect& box)
{
    return words >> box.x >> box.y >> box.width >> box.height;
}

}

std::optional<PageSelection> pageSelectionFrom(std::istream& words)
{
    std::string way;
    std::size_t count = 0;
    if (!(words >> way >> count) || count == 0 || count > maxBoxes)
        return std::nullopt;
    PageSelection selection;
    using Way = PageSelection::Way;
    selection.way = way == "key" ? Way::Key : way == "change" ? Way::Change : Way::Pointer;
    selection.boxes.resize(count);
    for (auto& box : selection.boxes)
        words >> box;
    words >> selection.firstLine >> selection.lastLine >> std::ws;
    if (!std::getline(words, selection.text) || selection.text.empty())
        return std::nullopt;
    return selection;
}

}
