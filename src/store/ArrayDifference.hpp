#pragma once

#include "base/Value.hpp"

#include <cstdint>
#include <vector>

namespace pagora {

// An element of a stored array: its row's id, and the rank that orders the rows. A new row has the id 0.
struct StoredElement {
    Value value;
    std::int64_t id = 0;
    std::int64_t rank = 0;
};

// The few row changes that turn a stored array into another: `elements` replace the run of `count` elements from
// `start`. `isKept` is true for elements that are already stored; the others must be written.
struct ArrayDifference {
    std::size_t start = 0;
    std::size_t count = 0;
    std::vector<StoredElement> elements;
    std::vector<bool> isKept;
};

// Compares elements by identity. A changed element reuses the row of the element that it replaces. All rows are written
// again if no rank is left between two rows.
ArrayDifference arrayDifference(const std::vector<StoredElement>& stored, const Value::Array& array);

}
