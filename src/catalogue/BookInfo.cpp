#include "catalogue/BookInfo.hpp"

namespace pagora {

std::optional<Image> BookInfo::cover() const
{
    return _imgData ? Image::fromBytes(_imgData->bytes()) : std::nullopt;
}

}
