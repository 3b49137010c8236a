#include "epub/CoverPicture.hpp"

#include "platform/Image.hpp"
#include "platform/Resource.hpp"

namespace pagora {

namespace {

constexpr Size coverBox { 106, 156 };
constexpr double jpegQuality = 0.8;
constexpr auto defaultCover = "/org/pagora/Pagora/pagora_default_cover.jpg";

std::optional<Data> encoded(const std::optional<Image>& image)
{
    auto bytes = image ? image->jpegData(jpegQuality) : std::nullopt;
    return bytes ? std::optional(Data(std::move(*bytes))) : std::nullopt;
}

}

std::optional<Data> coverPicture(const std::string& coverFile)
{
    const auto image = Image::fromFile(coverFile, coverBox);
    return image ? encoded(image->imageByScalingProportionallyToSize(coverBox)) : std::nullopt;
}

std::optional<Data> defaultCoverPicture()
{
    const auto bytes = resourceBytes(defaultCover);
    return bytes ? encoded(Image::fromBytes(*bytes)) : std::nullopt;
}

}
