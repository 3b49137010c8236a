#include "catalogue/PreparedRecords.hpp"

#include "catalogue/CatalogueEntry.hpp"

#include <utility>

namespace pagora {

void PreparedRecords::make(Value::Array entries)
{
    const std::lock_guard lock(_mutex);
    if (_isTaken)
        return;
    _records.clear();
    _records.reserve(entries.size());
    for (const auto& entry : entries)
        _records.push_back(bookFromEntry(entry));
    _entries = std::move(entries);
}

std::vector<BookInfoPtr> PreparedRecords::take(const Value::Array& entries)
{
    const std::lock_guard lock(_mutex);
    _isTaken = true;
    const auto prepared = std::exchange(_entries, {});
    auto records = std::exchange(_records, {});
    records.resize(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i >= prepared.size() || !prepared[i].isSameAs(entries[i]))
            records[i] = bookFromEntry(entries[i]);
    }
    return records;
}

}
