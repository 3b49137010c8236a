#pragma once

#include "paging/PageArithmetic.hpp"

#include <cstdint>

namespace pagora {

// A position in a chapter.
struct ReadingPosition {
    // Content area before the page that is shown, in the units of the page area; 0 at a chapter's start.
    std::uint64_t capacity = 0;
    // Fraction of the chapter before that page, 0 to 1.
    float readAmount = 0;

    // Sets both values for a chapter that is S points wide. `divisor` is A or B.
    void set(std::uint64_t newCapacity, const PageGeometry& page, std::int64_t S, std::int64_t divisor)
    {
        capacity = newCapacity;
        readAmount = page.readAmount(newCapacity, S, divisor);
    }
    // Sets both values after a page turn that scrolled to `offset`.
    void setOffset(std::int64_t offset, const PageGeometry& page, std::int64_t S)
    {
        set(page.capacityAt(offset), page, S, page.pageArea());
    }
};

}
