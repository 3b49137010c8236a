#include "pictures/PictureDecoder.hpp"

#include "pictures/DeclaredPixels.hpp"
#include "pictures/ImageFormat.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <string_view>

namespace pagora {

namespace {

constexpr int dividedUp(int length, int divisor)
{
    return (length + divisor - 1) / divisor;
}

// State of one decoding: the size that the decoder reports, and the size requested from it.
struct Decoding {
    ImageFormat format;
    bool progressive = false;
    Size enough;
    PictureLimits limits;
    Size size;

    void sizePrepared(GdkPixbufLoader* loader, int width, int height)
    {
        size = { static_cast<double>(width), static_cast<double>(height) };
        const int divisor = chosenDivisor(width, height);
        // A size of 0 aborts the decoder.
        if (divisor == 0)
            gdk_pixbuf_loader_set_size(loader, 0, 0);
        else if (divisor > 1)
            gdk_pixbuf_loader_set_size(loader, dividedUp(width, divisor), dividedUp(height, divisor));
    }

    // Returns the divisor of both sides; 0 if the picture is too large.
    int chosenDivisor(int width, int height) const
    {
        const auto pixels = static_cast<std::int64_t>(width) * height;
        const bool isSvg = format.name == std::string_view("svg");
        if (pixels > limits.pixels && (!format.decodesReduced || progressive))
            return 0;
        if (!format.decodesReduced)
            return 1;
        if (!isSvg && pixels > limits.decodedPixels)
            return 0;
        int divisor = 1;
        const auto covers = [&](int d) {
            return enough.width > 0 && dividedUp(width, d) >= enough.width && dividedUp(height, d) >= enough.height;
        };
        const auto fits = [&](int d) {
            return static_cast<std::int64_t>(dividedUp(width, d)) * dividedUp(height, d) <= limits.pixels;
        };
        // JPEG blocks of 8 by 8 pixels can be decoded to fewer pixels.
        const int maxDivisor = isSvg ? 1 << 16 : 8;
        while (divisor < maxDivisor && (covers(divisor * 2) || !fits(divisor)))
            divisor *= 2;
        return fits(divisor) ? divisor : 0;
    }
};

void onSizePrepared(GdkPixbufLoader* loader, int width, int height, gpointer decoding)
{
    static_cast<Decoding*>(decoding)->sizePrepared(loader, width, height);
}

std::shared_ptr<GdkPixbuf> decoded(const std::string& bytes, Decoding& decoding)
{
    const std::shared_ptr<GdkPixbufLoader> loader(
        gdk_pixbuf_loader_new_with_type(decoding.format.name, nullptr), [](GdkPixbufLoader* object) {
            if (object)
                g_object_unref(object);
        });
    if (!loader)
        return nullptr;
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(onSizePrepared), &decoding);
    const bool written
        = gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(bytes.data()), bytes.size(), nullptr);
    const bool closed = gdk_pixbuf_loader_close(loader.get(), nullptr);
    if (!written || !closed)
        return nullptr;
    auto* pixbuf = gdk_pixbuf_loader_get_pixbuf(loader.get());
    return pixbuf ? std::shared_ptr<GdkPixbuf>(GDK_PIXBUF(g_object_ref(pixbuf)), &g_object_unref) : nullptr;
}

}

std::optional<DecodedPicture> decodePicture(const std::string& bytes, Size enough, const PictureLimits& limits)
{
    Decoding decoding { imageFormatOf(bytes), false, enough, limits, {} };
    if (!decoding.format.name || !isComplete(decoding.format, bytes)
        || declaredPixels(decoding.format, bytes) > static_cast<double>(limits.pixels))
        return std::nullopt;
    decoding.progressive = decoding.format.name == std::string_view("jpeg") && isProgressiveJpeg(bytes);
    auto pixbuf = decoded(bytes, decoding);
    if (!pixbuf || decoding.size.width < 1 || decoding.size.height < 1)
        return std::nullopt;
    return DecodedPicture { std::move(pixbuf), decoding.size };
}

}
