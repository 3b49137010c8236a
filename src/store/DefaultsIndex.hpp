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

// Index of the rows in a file of stored values. Determines which rows a change affects: an array element is unchanged
// if it is a copy of the stored one. Not thread-safe.
class DefaultsIndex {
public:
    // The value to store for each key, or nullopt to remove the key.
    using Changes = std::map<std::string, std::optional<Value>>;

    explicit DefaultsIndex(std::shared_ptr<StoredDataSource> source);

    using Values = std::map<std::string, Value>;
    // Rebuilds the index from the file. Returns the values by key, or the condition of the file.
    Result<Values, DefaultsCondition> load(DefaultsFile& file);

    // What one flush changes in the file and afterwards in the index.
    struct Plan {
        RowChanges rows;
        std::map<std::string, ArrayDifference> arrays;
        Changes others;
        StoredParts::Plan parts;
        bool isEmpty() const { return arrays.empty() && others.empty(); }
    };

    // Returns the rows to write and remove for the changes.
    Plan plan(const Changes& changes);
    // Updates the index after a plan was written. Releases the memory of large data that was written.
    void commit(Plan& plan);

private:
    // The elements of an array, or the single row of any other value.
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
