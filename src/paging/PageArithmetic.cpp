#include "paging/PageArithmetic.hpp"

#include "base/Numbers.hpp"

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {
constexpr int gap = 40;
constexpr int padding = 80;
}

std::int32_t PageGeometry::pageWidthFor(double W, std::int32_t columns)
{
    return truncated32(W / columns - gap * columns);
}

std::int64_t PageGeometry::pageArea() const
{
    return truncated((H - padding) * pageWidth * columns);
}

std::int64_t PageGeometry::seekDivisor() const
{
    return truncated(columns * (pageWidth - (gap * columns + gap) * (H - padding)));
}

std::int32_t PageGeometry::columnHeight() const
{
    return truncated32(H - padding);
}

std::int32_t PageGeometry::imageHeight() const
{
    return truncated32((H - padding) * 0.8);
}

float PageGeometry::readAmount(std::uint64_t capacity, std::int64_t S, std::int64_t divisor) const
{
    return static_cast<float>(static_cast<double>(capacity) / ((S / W) * divisor));
}

std::uint64_t PageGeometry::capacityAt(std::int64_t offset) const
{
    return wrapped((offset / W) * pageArea());
}

std::uint64_t PageGeometry::pageIndex(std::uint64_t capacity, std::int64_t divisor)
{
    return divisor == 0 ? 0 : capacity / static_cast<std::uint64_t>(divisor);
}

std::int64_t PageGeometry::offsetOfPage(std::uint64_t pageIndex) const
{
    return truncated(static_cast<double>(pageIndex) * W);
}

std::int32_t PageGeometry::offset32OfPage(std::uint64_t pageIndex) const
{
    return truncated32(static_cast<double>(pageIndex) * W);
}

std::int32_t PageGeometry::pageOfElement(std::int64_t T, std::int64_t divisor) const
{
    const auto area = static_cast<std::int64_t>(static_cast<std::uint64_t>(T) * static_cast<std::uint64_t>(pageWidth));
    if (divisor == 0)
        return 0;
    // The minimum has no positive counterpart; its negation wraps.
    if (divisor == -1)
        return low32(-static_cast<std::uint64_t>(area));
    return low32(static_cast<std::uint64_t>(area / divisor));
}

std::int64_t PageGeometry::offsetOfSignedPage(std::int32_t pageIndex) const
{
    return truncated(pageIndex * W);
}

std::int64_t PageGeometry::adjustOffset(std::int64_t offset) const
{
    if (offset == 0)
        return 0;
    const double w = W / columns;
    const double q = offset / w;
    const std::int32_t n = truncated32(q);
    const double r = q - n;
    if (r == 0)
        return offset;
    return truncated(r < 0.5 ? n * w : (n + 1) * w);
}

std::int64_t PageGeometry::offsetAround(double place, std::int64_t S) const
{
    const double last = std::max(0.0, S - W);
    const double start = std::clamp(place * S - W / 2, 0.0, last);
    // Boundaries are truncated to whole points, so an offset on a boundary may be one point before it.
    const double boundary = std::round(start * columns / W) * W / columns;
    if (std::abs(start - boundary) < 1.5 || last - start < 1)
        return truncated(std::round(start));
    return truncated(std::min(boundary, last));
}

}
