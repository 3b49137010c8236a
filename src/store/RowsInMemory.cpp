#include "store/RowsInMemory.hpp"

#include "base/Numbers.hpp"

#include <algorithm>
#include <utility>

namespace pagora {

namespace {

constexpr std::size_t firstLimit = 1'000;

}

RowsInMemory::RowsInMemory(std::shared_ptr<StoredDataSource> source)
    : _source(std::move(source))
    , _limit(firstLimit)
{
}

std::shared_ptr<const StoredDataRow> RowsInMemory::row(std::int64_t id)
{
    const std::lock_guard lock(_mutex);
    if (_rows.size() >= _limit) {
        std::erase_if(_rows, [](const auto& row) { return row.second.expired(); });
        _limit = std::max(firstLimit, 2 * _rows.size());
    }
    auto& known = _rows[id];
    auto row = known.lock();
    if (!row)
        known = row = std::make_shared<const StoredDataRow>(_source, id);
    return row;
}

bool RowsInMemory::holds(const StoredDataRow& row) const
{
    if (row.source != _source)
        return false;
    const std::lock_guard lock(_mutex);
    const auto known = _rows.find(row.id);
    return known != _rows.end() && known->second.lock().get() == &row;
}

bool RowsInMemory::isUsed(std::int64_t id) const
{
    const std::lock_guard lock(_mutex);
    const auto known = _rows.find(id);
    return known != _rows.end() && !known->second.expired();
}

void RowsInMemory::forget(std::int64_t id)
{
    const std::lock_guard lock(_mutex);
    _rows.erase(id);
}

FindParts RowsInMemory::finder()
{
    return {
        [this](std::int64_t id, std::size_t size) { return Data(size, StoredDataReader { row(id) }); },
        [this](std::int64_t id, Value::Container kind) { return Value(kind, row(id)); },
    };
}

StoredEntry::StoredEntry(std::string bytes, std::shared_ptr<RowsInMemory> rows)
    : _bytes(std::move(bytes))
    , _rows(std::move(rows))
{
}

std::optional<Value> StoredEntry::read() const
{
    return decodeValue(_bytes, _rows->finder());
}

std::optional<Value> StoredEntry::find(std::string_view key) const
{
    return decodeEntry(_bytes, key, _rows->finder());
}

void StoredEntry::forEach(const std::function<void(std::string_view key, const StoredField& entry)>& field) const
{
    const auto find = _rows->finder();
    forEachEntry(
        _bytes, [&](std::string_view key, std::string_view encoded) { field(key, StoredField(encoded, find)); });
}

std::optional<std::string> StoredField::text() const
{
    if (const auto text = decodeString(_encoded))
        return std::string(*text);
    const auto decoded = value();
    return stringFrom(decoded ? &*decoded : nullptr);
}

std::int64_t StoredField::integer() const
{
    if (const auto number = decodeInteger(_encoded))
        return *number;
    const auto decoded = value();
    return integerFrom(decoded ? &*decoded : nullptr);
}

std::optional<Value> entryUnder(const std::string& key, const Value& dictionary)
{
    if (const auto* stored = dynamic_cast<const StoredEntry*>(dictionary.source()))
        return stored->find(key);
    const auto* entry = dictionary.find(key);
    return entry ? std::optional(*entry) : std::nullopt;
}

}
