#pragma once

#include "base/Data.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace pagora {

// Rows of a file of stored values. Payloads are encoded values (see ValueCoding.hpp).

// The row of a key. An array's payload is empty: its elements have rows of their own.
struct ValueRow {
    std::string key;
    bool isArray = false;
    std::string payload;
};

// An element of the array under `key`. Ranks order the elements.
struct ElementRow {
    std::int64_t id = 0;
    std::string key;
    std::int64_t rank = 0;
    std::string payload;
};

// Large data of an element, in its own row so that other changes to the element do not rewrite it.
struct DataRow {
    std::int64_t id = 0;
    Data data;
};

// Identifies the flush whose state the file has, and the number of rows that it must have.
struct StoreState {
    // Identifies the series of flushes; random, chosen when the file is created.
    std::int64_t series = 0;
    std::int64_t flush = 0;
    std::int64_t values = 0;
    std::int64_t elements = 0;
    bool operator==(const StoreState&) const = default;
};

// The changes of one flush: rows to write, replacing those with the same key or id, and rows to remove.
struct RowChanges {
    StoreState before;
    StoreState after;
    std::vector<ValueRow> values;
    std::vector<std::string> removedValues;
    std::vector<ElementRow> elements;
    std::vector<std::int64_t> removedElements;
    std::vector<DataRow> data;
    std::vector<std::int64_t> removedData;
    // Data rows that no element uses any more. They stay while copies in memory may read them; a later flush removes
    // them.
    std::vector<std::int64_t> leftData;
    // Unused data rows that an element uses again.
    std::vector<std::int64_t> takenData;
};

}
