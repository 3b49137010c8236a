#pragma once

#include "platform/Data.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace pagora {

// How stored values lie in a file, row by row. Payloads are stored forms of values (see ValueCoding.hpp).

// A key. An array's payload is empty: its elements are rows of their own.
struct ValueRow {
    std::string key;
    bool isArray = false;
    std::string payload;
};

// An element of the array under `key`; elements are in the order of their ranks.
struct ElementRow {
    std::int64_t id = 0;
    std::string key;
    std::int64_t rank = 0;
    std::string payload;
};

// Large data of elements, stored apart, so that a change beside it does not write it again.
struct DataRow {
    std::int64_t id = 0;
    Data data;
};

// Which flush a file is the state of, and how many rows it has to have.
struct StoreState {
    // Names the series of flushes; drawn at random when a file is made from nothing.
    std::int64_t series = 0;
    std::int64_t flush = 0;
    std::int64_t values = 0;
    std::int64_t elements = 0;
    bool operator==(const StoreState&) const = default;
};

// What one flush changes: rows to write, over ones with the same key or id, and rows to remove.
struct RowChanges {
    StoreState before;
    StoreState after;
    std::vector<ValueRow> values;
    std::vector<std::string> removedValues;
    std::vector<ElementRow> elements;
    std::vector<std::int64_t> removedElements;
    std::vector<DataRow> data;
    std::vector<std::int64_t> removedData;
    // Data rows that no element uses any more. They stay for as long as the data may be read from memory's copies, and
    // go with a later flush.
    std::vector<std::int64_t> leftData;
    // Left data rows that an element uses again.
    std::vector<std::int64_t> takenData;
};

}
