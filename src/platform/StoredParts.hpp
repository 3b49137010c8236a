#pragma once

#include "platform/DefaultsRows.hpp"
#include "platform/StoredData.hpp"
#include "platform/ValueCoding.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

namespace pagora {

// The parts of elements that are stored in rows of their own, so that a change beside them does not write them again
// and they leave the memory: large data, and nested arrays and dictionaries without large data. Knows how many times
// elements name each row. One thread at a time.
class StoredParts {
public:
    // Data, and containers in their stored form, of more bytes than this are stored apart.
    static constexpr std::size_t largestInlinePart = 512;

    explicit StoredParts(std::shared_ptr<StoredDataSource> source);

    // What one flush does to the parts, beside the rows that it writes and removes.
    struct Plan {
        // How many uses more or less each row has.
        std::unordered_map<std::int64_t, int> uses;
        // By identity, the ids of parts that get a row. A container is kept for as long as the plan.
        std::unordered_map<const void*, std::int64_t> ids;
        std::unordered_map<std::int64_t, Value> containers;
    };

    // Finds the parts of stored elements and counts each as one use.
    FindParts finder();
    // What a file says of rows that no element uses, and the largest number of a row in it.
    void addLeft(std::int64_t id);
    void setLargestId(std::int64_t id) { _nextId = id + 1; }

    // The stored form of an element that is to be written; parts that have no row yet get one.
    std::string encode(const Value& element, Plan& plan, RowChanges& rows);
    // Counts what an element names `step` times.
    void countUses(const Value& element, int step, Plan& plan) const;
    // The rows that come in use, fall out of use, or can go, once all uses are counted.
    void planRows(const Plan& plan, RowChanges& rows) const;
    // Takes over what was written. Large data leave the memory.
    void commit(const Plan& plan, const RowChanges& rows);

private:
    struct Row {
        int uses = 0;
        // What in memory may read the row.
        std::weak_ptr<const StoredDataRow> inMemory;
        // The identity of the container in memory that was written here; it lives as long as it has uses.
        const void* container = nullptr;
    };

    std::shared_ptr<const StoredDataRow> use(std::int64_t id);
    bool isRow(const StoredDataRow& row) const;
    std::optional<std::int64_t> placeOf(const Data& data, const Plan& plan) const;
    std::optional<std::int64_t> placeOf(const Value& container, const Plan& plan) const;
    std::optional<std::int64_t> place(const Data& data, Plan& plan, RowChanges& rows);
    std::optional<std::int64_t> place(const Value& container, Plan& plan, RowChanges& rows);

    std::shared_ptr<StoredDataSource> _source;
    std::unordered_map<std::int64_t, Row> _rows;
    // Containers of this run that have a row, by identity.
    std::unordered_map<const void*, std::int64_t> _containers;
    // The rows without uses.
    std::set<std::int64_t> _left;
    std::int64_t _nextId = 1;
};

}
