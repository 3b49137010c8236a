#pragma once

#include "store/DefaultsRows.hpp"
#include "store/RowsInMemory.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

namespace pagora {

// Parts of elements that have rows of their own, so that other changes do not rewrite them and their memory can be
// released: large data, and nested arrays and dictionaries without large data. Counts the uses of each row. Not
// thread-safe.
class StoredParts {
public:
    // Data and encoded containers with more bytes than this get a row of their own.
    static constexpr std::size_t maxInlinePart = 512;

    explicit StoredParts(std::shared_ptr<StoredDataSource> source);

    // Changes of one flush to the parts, besides the rows that it writes and removes.
    struct Plan {
        // Change in the number of uses of each row.
        std::unordered_map<std::int64_t, int> uses;
        // Row ids of the parts that get a row, by identity. The plan keeps the containers alive.
        std::unordered_map<const void*, std::int64_t> ids;
        std::unordered_map<std::int64_t, Value> containers;
    };

    // Decodes a stored element; nullopt if it is malformed. Counts one use of each of its parts. The entries of a
    // dictionary are decoded on first use.
    std::optional<Value> element(std::string_view payload);
    // Registers an unused row of the file, and the largest row id in it.
    void addLeft(std::int64_t id);
    void setMaxId(std::int64_t id) { _nextId = id + 1; }

    // Encodes an element to be written. Parts without a row get one.
    std::string encode(const Value& element, Plan& plan, RowChanges& rows);
    // Adds `step` to the number of uses of each part of an element.
    void countUses(const Value& element, int step, Plan& plan) const;
    // Determines which rows become used or unused or can be removed. Called after all uses are counted.
    void planRows(const Plan& plan, RowChanges& rows) const;
    // Updates the counts after the plan was written. Releases the memory of large data.
    void commit(const Plan& plan, const RowChanges& rows);

private:
    struct Row {
        int uses = 0;
        // Identity of the container in memory that was written to this row. The container lives as long as it is used.
        const void* container = nullptr;
    };

    std::optional<std::int64_t> placeOf(const Data& data, const Plan& plan) const;
    std::optional<std::int64_t> placeOf(const Value& container, const Plan& plan) const;
    std::optional<std::int64_t> place(const Data& data, Plan& plan, RowChanges& rows);
    std::optional<std::int64_t> place(const Value& container, Plan& plan, RowChanges& rows);

    std::shared_ptr<RowsInMemory> _inMemory;
    std::unordered_map<std::int64_t, Row> _rows;
    // Row ids of the containers that this process has written, by identity.
    std::unordered_map<const void*, std::int64_t> _containers;
    // Unused rows.
    std::set<std::int64_t> _left;
    std::int64_t _nextId = 1;
};

}
