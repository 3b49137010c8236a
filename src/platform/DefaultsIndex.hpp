#pragma once

#include "platform/ArrayDifference.hpp"
#include "platform/DefaultsFile.hpp"
#include "platform/StoredData.hpp"
#include "platform/Value.hpp"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace pagora {

// What a file of stored values holds, row by row, as far as it takes to say which rows a change touches. An array's
// element counts as unchanged when it is a copy of the stored one. One thread at a time.
class DefaultsIndex {
public:
    // Data of more bytes than this inside an array's elements are stored apart.
    static constexpr std::size_t largestInlineData = 512;

    // By key: the value to store, or none to remove the key.
    using Changes = std::map<std::string, std::optional<Value>>;

    explicit DefaultsIndex(std::shared_ptr<StoredDataSource> source);

    // Forgets what it knows and takes it from the file. `values` receives the values by key.
    DefaultsCondition load(DefaultsFile& file, std::map<std::string, Value>& values);

    // What one flush does to the file and, once it is done, to the index.
    struct Plan {
        RowChanges rows;
        std::map<std::string, ArrayDifference> arrays;
        Changes others;
        // How many uses more or less each data row has, and the ids of data that get a row.
        std::unordered_map<std::int64_t, int> dataUses;
        std::unordered_map<const void*, std::int64_t> newData;
        bool isEmpty() const { return arrays.empty() && others.empty(); }
    };

    // The rows that bring the changes to the file.
    Plan plan(const Changes& changes);
    // Takes over what a plan did to the file. Large data that it wrote leave the memory.
    void commit(Plan& plan);

private:
    // An array's elements, or the one row of any other value.
    struct Entry {
        bool isArray = false;
        std::vector<StoredElement> elements;
    };
    // A data row: how many times elements name it, and whether something in memory may read it.
    struct DataUse {
        int uses = 0;
        std::weak_ptr<const StoredDataRow> inMemory;
    };

    Data dataAt(std::int64_t id, std::size_t size);
    std::optional<std::int64_t> placeOf(const Data& data, const Plan& plan) const;
    std::string encodeElement(const Value& value, Plan& plan);
    void countUses(const Value& value, int step, Plan& plan) const;
    void planArray(const std::string& key, const Value::Array& array, Plan& plan);
    void planOther(const std::string& key, const std::optional<Value>& value, Plan& plan);
    void planDataRows(Plan& plan) const;
    void commitDataRows(const Plan& plan);

    std::shared_ptr<StoredDataSource> _source;
    StoreState _state;
    std::map<std::string, Entry> _entries;
    std::unordered_map<std::int64_t, DataUse> _data;
    // The data rows without uses.
    std::set<std::int64_t> _left;
    std::int64_t _nextElement = 1;
    std::int64_t _nextData = 1;
};

}
