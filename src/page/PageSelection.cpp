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
    std::string cause;
    std::size_t count = 0;
    if (!(words >> cause >> count) || count == 0 || count > maxBoxes)
        return std::nullopt;
    PageSelection selection;
    using Cause = PageSelection::Cause;
    selection.cause = cause == "key" ? Cause::Key : cause == "change" ? Cause::Change : Cause::Pointer;
    selection.boxes.resize(count);
    for (auto& box : selection.boxes)
        words >> box;
    words >> selection.firstLine >> selection.lastLine >> std::ws;
    if (!std::getline(words, selection.text) || selection.text.empty())
        return std::nullopt;
    return selection;
}

}
