#pragma once

#include "base/Value.hpp"
#include "store/ArrayDifference.hpp"
#include "store/DefaultsFile.hpp"
#include "store/StoredParts.hpp"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Index of the rows in a file of stored values; tells which rows a change touches. An array element is unchanged when
// it is a copy of the stored one. Not thread safe.
class DefaultsIndex {
public:
    // By key: the value to store, or none to remove the key.
    using Changes = std::map<std::string, std::optional<Value>>;

    explicit DefaultsIndex(std::shared_ptr<StoredDataSource> source);

    using Values = std::map<std::string, Value>;
    // Rebuilds the index from the file. Returns the values by key, or the condition of the file.
    Result<Values, DefaultsCondition> load(DefaultsFile& file);

    // What one flush does to the file and, once it is done, to the index.
    struct Plan {
        RowChanges rows;
        std::map<std::string, ArrayDifference> arrays;
        Changes others;
        StoredParts::Plan parts;
        bool isEmpty() const { return arrays.empty() && others.empty(); }
    };

    // The rows that bring the changes to the file.
    Plan plan(const Changes& changes);
    // Updates the index after a plan was written. Large data that was written is released from memory.
    void commit(Plan& plan);

private:
    // An array's elements, or the one row of any other value.
    struct Entry {
        bool isArray = false;
        std::vector<StoredElement> elements;
    };

    void planArray(const std::string& key, const Value::Array& array, Plan& plan);
    void planOther(const std::string& key, const std::optional<Value>& value, Plan& plan);

    std::shared_ptr<StoredDataSource> _source;
    StoredParts _parts;
    StoreState _state;
    std::map<std::string, Entry> _entries;
    std::int64_t _nextElement = 1;
};

}
