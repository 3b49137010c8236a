#pragma once

#include <cstdint>

namespace pagora {

// The arithmetic of pages. A chapter is a strip of columns S points wide, seen through a view of W × H points; a page
// is one width of the view. Page turns treat the strip as one column whose area is divided into pages of area A;
// seeking and resizing text divide by B instead. Capacities are unsigned and wrap; every result is defined for every
// input.
struct PageGeometry {
    double W = 0;
    double H = 0;
    // 1, 2 or 3.
    std::int32_t columns = 0;
    // Width of one column of text.
    std::int32_t pageWidth = 0;

    // Returns the width of a column of text in a view of this width. Gap and margin take 40 points for each column.
    static std::int32_t pageWidthFor(double W, std::int32_t columns);

    // A: the area of a page.
    std::int64_t pageArea() const;
    // B: the divisor for seeking; negative for any real window.
    std::int64_t seekDivisor() const;
    // The height of a column.
    std::int32_t columnHeight() const;
    // The maximum height of an image.
    std::int32_t imageHeight() const;

    // Returns the fraction of the chapter before a capacity.
    float readAmount(std::uint64_t capacity, std::int64_t S, std::int64_t divisor) const;
    // Returns the capacity before a scroll offset.
    std::uint64_t capacityAt(std::int64_t offset) const;
    // Returns the index of the page at a capacity, by unsigned division; 0 if the divisor is 0.
    static std::uint64_t pageIndex(std::uint64_t capacity, std::int64_t divisor);
    // Returns the scroll offset of a page, as a whole number.
    std::int64_t offsetOfPage(std::uint64_t pageIndex) const;
    // Same as `offsetOfPage`, in 32 bits.
    std::int32_t offset32OfPage(std::uint64_t pageIndex) const;
    // Returns the page of an element that is `T` points down the single column, by signed division truncated to 32
    // bits; negative for a negative divisor, 0 if the divisor is 0.
    std::int32_t pageOfElement(std::int64_t T, std::int64_t divisor) const;
    // Returns the scroll offset of a page whose index may be negative.
    std::int64_t offsetOfSignedPage(std::int32_t pageIndex) const;

    // Returns the nearest column boundary; a half rounds up.
    std::int64_t adjustOffset(std::int64_t offset) const;
    // Returns the offset that shows `place`, a fraction of the chapter, in the middle of the view, rounded to the
    // nearest column boundary within the strip. If `place` is that of a boundary or of the end of the strip, its offset
    // is returned unchanged.
    std::int64_t offsetAround(double place, std::int64_t S) const;
};

}
