#include "pictures/Image.hpp"

#include "base/Bounds.hpp"
#include "pictures/ImageFormat.hpp"
#include "pictures/PictureDecoder.hpp"
#include "pictures/PictureProcess.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

using PixbufPtr = std::shared_ptr<GdkPixbuf>;

// Largest reduction of one scaling pass. The scaler's tables grow with its square.
constexpr int maxStep = 8;

PixbufPtr owned(GdkPixbuf* pixbuf)
{
    return pixbuf ? PixbufPtr(pixbuf, &g_object_unref) : nullptr;
}

constexpr int dividedUp(int length, int divisor)
{
    return (length + divisor - 1) / divisor;
}

// Reduces the picture until a single pass produces the requested size.
PixbufPtr reducedFor(PixbufPtr pixbuf, int width, int height)
{
    for (;;) {
        const int w = gdk_pixbuf_get_width(pixbuf.get());
        const int h = gdk_pixbuf_get_height(pixbuf.get());
        if (w <= width * maxStep && h <= height * maxStep)
            return pixbuf;
        pixbuf = owned(gdk_pixbuf_scale_simple(pixbuf.get(), std::max(std::min(w, width), dividedUp(w, maxStep)),
            std::max(std::min(h, height), dividedUp(h, maxStep)), GDK_INTERP_BILINEAR));
        if (!pixbuf)
            return nullptr;
    }
}

}

std::optional<Image> Image::fromBytes(const std::string& bytes, Size enough, const PictureLimits& limits)
{
    const auto format = imageFormatOf(bytes);
    return format.name && format.name == std::string_view("svg") ? of(decodePictureInHelper(bytes, enough))
                                                                 : fromBytesInProcess(bytes, enough, limits);
}

std::optional<Image> Image::fromBytesInProcess(const std::string& bytes, Size enough, const PictureLimits& limits)
{
    return of(decodePicture(bytes, enough, limits));
}

std::optional<Image> Image::of(std::optional<DecodedPicture> picture)
{
    return picture ? std::optional(Image(std::move(picture->pixbuf), picture->size)) : std::nullopt;
}

std::optional<Image> Image::imageByScalingProportionallyToSize(Size target) const
{
    auto width = static_cast<int>(target.width);
    auto height = static_cast<int>(target.height);
    auto scaledWidth = width;
    auto scaledHeight = height;
    if (_size != target) {
        const auto sourceWidth = static_cast<float>(_size.width);
        const auto sourceHeight = static_cast<float>(_size.height);
        const float factor = std::min(
            static_cast<float>(target.width / _size.width), static_cast<float>(target.height / _size.height));
        const float productWidth = sourceWidth * factor;
        const float productHeight = sourceHeight * factor;
        scaledWidth = static_cast<int>(productWidth);
        scaledHeight = static_cast<int>(productHeight);
        width = std::min(scaledWidth, width);
        height = std::min(scaledHeight, height);
    }
    if (width < 1 || height < 1)
        return std::nullopt;

    const auto source = reducedFor(_pixbuf, scaledWidth, scaledHeight);
    const auto drawn
        = owned(gdk_pixbuf_new(GDK_COLORSPACE_RGB, gdk_pixbuf_get_has_alpha(_pixbuf.get()), 8, width, height));
    if (!source || !drawn)
        return std::nullopt;
    gdk_pixbuf_scale(source.get(), drawn.get(), 0, 0, width, height, 0, 0,
        static_cast<double>(scaledWidth) / gdk_pixbuf_get_width(source.get()),
        static_cast<double>(scaledHeight) / gdk_pixbuf_get_height(source.get()), GDK_INTERP_BILINEAR);
    return Image(drawn, { static_cast<double>(width), static_cast<double>(height) });
}

std::optional<std::string> Image::jpegData(double quality) const
{
    auto opaque = _pixbuf;
    if (gdk_pixbuf_get_has_alpha(_pixbuf.get())) {
        constexpr guint32 white = 0xFFFFFF;
        const int width = gdk_pixbuf_get_width(_pixbuf.get());
        const int height = gdk_pixbuf_get_height(_pixbuf.get());
        opaque = owned(
            gdk_pixbuf_composite_color_simple(_pixbuf.get(), width, height, GDK_INTERP_NEAREST, 255, 8, white, white));
        if (!opaque)
            return std::nullopt;
    }
    gchar* buffer = nullptr;
    gsize size = 0;
    const auto percent = std::to_string(std::clamp(static_cast<int>(std::lround(quality * 100)), 0, 100));
    if (!gdk_pixbuf_save_to_buffer(opaque.get(), &buffer, &size, "jpeg", nullptr, "quality", percent.c_str(), nullptr))
        return std::nullopt;
    const std::unique_ptr<gchar, decltype(&g_free)> owner(buffer, &g_free);
    return std::string(buffer, size);
}

}
