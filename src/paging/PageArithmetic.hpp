#pragma once

#include <cstdint>

namespace pagora {

// The arithmetic of pages. A chapter is a strip of columns S points wide, seen through a view of W × H points; a page
// is one width of the view. The turns treat the strip as one column whose area is spread over pages of area A; seeking
// and resizing text divide by B instead. Capacities are unsigned and wrap; every result is defined for every input.
struct PageGeometry {
    double W = 0;
    double H = 0;
    // 1, 2 or 3.
    std::int32_t columns = 0;
    // Width of one text column.
    std::int32_t pageWidth = 0;

    // The width of a text column in a view of this width. Gap and margin take 40 points for each column.
    static std::int32_t pageWidthFor(double W, std::int32_t columns);

    // A: the area of a page.
    std::int64_t pageArea() const;
    // B: the divisor of seeking; negative for any real window.
    std::int64_t seekDivisor() const;
    // The height of a column.
    std::int32_t columnHeight() const;
    // The greatest height of an image.
    std::int32_t imageHeight() const;

    // The fraction of the chapter before a capacity.
    float readAmount(std::uint64_t capacity, std::int64_t S, std::int64_t divisor) const;
    // The capacity before a scroll offset.
    std::uint64_t capacityAt(std::int64_t offset) const;
    // The page that a capacity falls on, an unsigned division; 0 when the divisor is 0.
    static std::uint64_t pageIndex(std::uint64_t capacity, std::int64_t divisor);
    // The scroll offset of a page, as a whole number.
    std::int64_t offsetOfPage(std::uint64_t pageIndex) const;
    // The same in 32 bits.
    std::int32_t offset32OfPage(std::uint64_t pageIndex) const;
    // The page of an element `T` points down the single column, a signed division kept to 32 bits; negative for a
    // negative divisor, 0 when the divisor is 0.
    std::int32_t pageOfElement(std::int64_t T, std::int64_t divisor) const;
    // The scroll offset of a page that may count backwards.
    std::int64_t offsetOfSignedPage(std::int32_t pageIndex) const;

    // The nearest column boundary; a half rounds up.
    std::int64_t adjustOffset(std::int64_t offset) const;
    // The offset that shows `place`, a fraction of the chapter, in the middle of the view, rounded to the nearest
    // column boundary within the strip. An offset on a boundary or at the end of the strip is returned unchanged.
    std::int64_t offsetAround(double place, std::int64_t S) const;
};

}
