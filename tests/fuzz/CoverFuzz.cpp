#include "pictures/Image.hpp"
#include "pictures/ImageFormat.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;
using test::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr Size box { 106, 156 };
    // Large pictures are slow and do not reach more code of the decoder.
    constexpr PictureLimits limits { .pixels = 250'000, .decodedPixels = 1'000'000 };
    const test::FuzzRun run;
    const std::string bytes(test::inputBytes(data, size));
    isProgressiveJpeg(bytes);
    const auto image = Image::fromBytesInProcess(bytes, box, limits);
    if (!image)
        return 0;
    require(imageFormatOf(bytes).name && image->size().width >= 1 && image->size().height >= 1);
    const auto scaled = image->imageByScalingProportionallyToSize(box);
    if (!scaled)
        return 0;
    require(scaled->size().width <= box.width && scaled->size().height <= box.height);
    const auto jpeg = scaled->jpegData(0.8);
    require(jpeg && jpeg->starts_with("\xFF\xD8\xFF"));
    return 0;
}
