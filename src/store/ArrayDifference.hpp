#pragma once

#include "base/Value.hpp"

#include <cstdint>
#include <vector>

namespace pagora {

// An element of a stored array: its row's id, and the rank that orders the rows. A fresh row has the id 0.
struct StoredElement {
    Value value;
    std::int64_t id = 0;
    std::int64_t rank = 0;
};

// How a stored array becomes another with few changed rows: the run of `count` elements from `start` gives way to
// `elements`. Of these, `isKept` tells which are stored as they are; the others are to be written.
struct ArrayDifference {
    std::size_t start = 0;
    std::size_t count = 0;
    std::vector<StoredElement> elements;
    std::vector<bool> isKept;
};

// Elements are the same when they are copies of one value. A changed element takes over the row of the one it follows
// on; where no ranks are left between two rows, all rows are written anew.
ArrayDifference arrayDifference(const std::vector<StoredElement>& stored, const Value::Array& array);

}
