#include "reader/LeavingLinks.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace pagora {

namespace {

constexpr std::size_t maxDestinations = 20;
// URLs with these schemes stay in the book. A URL without a scheme is a file.
constexpr std::array<std::string_view, 6> schemesOfTheBook { "", "file", "data", "blob", "about", "javascript" };

}

bool LeavingLinks::take(const Url& url, RequestedBy requestedBy)
{
    const auto scheme = url.scheme();
    const bool stays = std::find(schemesOfTheBook.begin(), schemesOfTheBook.end(), scheme) != schemesOfTheBook.end();
    if (stays)
        return false;
    if (requestedBy == RequestedBy::User) {
        _taken.insert(url.text());
        return true;
    }
    return _taken.size() < maxDestinations && _taken.insert(url.text()).second;
}

}
