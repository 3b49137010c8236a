#pragma once

#include "store/StoredData.hpp"
#include "store/ValueCoding.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace pagora {

// The objects that read rows of large data: one for each row that a value in memory may read. Thread safe.
class RowsInMemory {
public:
    explicit RowsInMemory(std::shared_ptr<StoredDataSource> source);

    // The object that reads the row of this id; made where there is none.
    std::shared_ptr<const StoredDataRow> row(std::int64_t id);
    // Whether `row` is such an object. After another process changed the file, a row of the same id may hold other
    // data.
    bool holds(const StoredDataRow& row) const;
    // Whether a value in memory may read the row of this id.
    bool isUsed(std::int64_t id) const;
    // The row was removed.
    void forget(std::int64_t id);

    // Finds the parts of stored elements; valid as long as this object.
    FindParts finder();

private:
    const std::shared_ptr<StoredDataSource> _source;
    mutable std::mutex _mutex;
    std::unordered_map<std::int64_t, std::weak_ptr<const StoredDataRow>> _rows;
    // The number of rows at which those that nothing reads any more are removed.
    std::size_t _limit;
};

// A stored dictionary as its encoded bytes, which take a fifth of the memory of its entries.
class StoredEntry : public Value::Source {
public:
    // The bytes are of a dictionary; see `isEncodedDictionary`.
    StoredEntry(std::string bytes, std::shared_ptr<RowsInMemory> rows);

    std::optional<Value> read() const override;
    // The entry under this key, without reading the others; missing where there is none.
    std::optional<Value> find(std::string_view key) const;

private:
    const std::string _bytes;
    const std::shared_ptr<RowsInMemory> _rows;
};

// The same as `dictionary.find(key)`, but a stored dictionary is not read into memory.
std::optional<Value> entryUnder(const std::string& key, const Value& dictionary);

}
