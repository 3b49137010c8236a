#pragma once

#include "store/StoredData.hpp"
#include "store/ValueCoding.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace pagora {

// The row objects that values in memory use to read large data: one for each row. Thread-safe.
class RowsInMemory {
public:
    explicit RowsInMemory(std::shared_ptr<StoredDataSource> source);

    // Returns the object that reads the row with this id; creates it if necessary.
    std::shared_ptr<const StoredDataRow> row(std::int64_t id);
    // Returns whether `row` is the object for its id. After another process has changed the file, a row with the same
    // id may contain other data.
    bool holds(const StoredDataRow& row) const;
    // Returns whether a value in memory may read the row with this id.
    bool isUsed(std::int64_t id) const;
    // Called when the row was removed.
    void forget(std::int64_t id);

    // Returns functions that find the parts of stored elements. This object must outlive them.
    FindParts finder();

private:
    const std::shared_ptr<StoredDataSource> _source;
    mutable std::mutex _mutex;
    std::unordered_map<std::int64_t, std::weak_ptr<const StoredDataRow>> _rows;
    // When the map reaches this size, entries of destroyed objects are removed.
    std::size_t _limit;
};

// An entry of a stored dictionary. Its value is decoded by each call.
class StoredField {
public:
    StoredField(std::string_view encoded, const FindParts& find)
        : _encoded(encoded)
        , _find(find)
    {
    }

    std::optional<Value> value() const { return decodePart(_encoded, _find); }
    // The value, converted as in Numbers.hpp.
    std::optional<std::string> text() const;
    std::int64_t integer() const;

private:
    std::string_view _encoded;
    const FindParts& _find;
};

// A stored dictionary, kept as its encoded bytes. They take a fifth of the memory of its decoded entries.
class StoredEntry : public Value::Source {
public:
    // `bytes` must encode a dictionary; see `isEncodedDictionary`.
    StoredEntry(std::string bytes, std::shared_ptr<RowsInMemory> rows);

    std::optional<Value> read() const override;
    // Decodes only the value under `key`. Returns nullopt if there is none.
    std::optional<Value> find(std::string_view key) const;
    // Calls `field` for each entry, in the order of the keys.
    void forEach(const std::function<void(std::string_view key, const StoredField& entry)>& field) const;

private:
    const std::string _bytes;
    const std::shared_ptr<RowsInMemory> _rows;
};

// Same as `dictionary.find(key)`, but decodes only that value of a stored dictionary.
std::optional<Value> entryUnder(const std::string& key, const Value& dictionary);

}
