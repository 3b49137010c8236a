#include "catalogue/BookTexts.hpp"

#include <algorithm>
#include <string_view>

namespace pagora {

bool standsForNone(const std::optional<std::string>& text)
{
    return !text || text->empty() || *text == "<unknown>" || *text == "<not found>";
}

bool saysLittle(const std::optional<std::string>& text)
{
    constexpr std::string_view urn = "urn:";
    if (standsForNone(text))
        return true;
    return text->size() > urn.size()
        && std::equal(urn.begin(), urn.end(), text->begin(), [](char a, char b) { return a == (b | 0x20); });
}

std::optional<double> readFraction(const BookInfo& book)
{
    const auto place = book.lastPlace();
    if (!place && book.lastIndex() == 0)
        return std::nullopt;
    const auto count = static_cast<double>(book.fileCount());
    const double read = static_cast<double>(book.lastIndex()) + std::clamp(place.value_or(0), 0.0, 1.0);
    if (count == 0 || !(read > 0))
        return std::nullopt;
    return std::min(read / count, 1.0);
}

}
