#include "store/StoredParts.hpp"

#include <utility>
#include <vector>

namespace pagora {

namespace {

// Limits how many data rows one flush removes, so that removing many elements does not delay it. Later flushes remove
// the rest.
constexpr std::size_t maxRemovals = 256;

}

StoredParts::StoredParts(std::shared_ptr<StoredDataSource> source)
    : _inMemory(std::make_shared<RowsInMemory>(std::move(source)))
{
}

std::optional<Value> StoredParts::element(std::string_view payload)
{
    std::vector<std::int64_t> places;
    if (isEncodedDictionary(payload, [&](std::int64_t id) { places.push_back(id); })) {
        for (const std::int64_t id : places)
            ++_rows[id].uses;
        return Value(Value::Container::Dictionary, std::make_shared<StoredEntry>(std::string(payload), _inMemory));
    }
    const auto find = _inMemory->finder();
    return decodeValue(payload,
        { [&](std::int64_t id, std::size_t size) {
             ++_rows[id].uses;
             return find.data(id, size);
         },
            [&](std::int64_t id, Value::Container kind) {
                ++_rows[id].uses;
                return find.container(id, kind);
            } });
}

void StoredParts::addLeft(std::int64_t id)
{
    _left.insert(id);
    _rows.try_emplace(id);
}

std::optional<std::int64_t> StoredParts::placeOf(const Data& data, const Plan& plan) const
{
    if (const auto added = plan.ids.find(data.identity()); added != plan.ids.end())
        return added->second;
    const auto reader = data.reader();
    const auto* stored = reader.target<StoredDataReader>();
    return stored && _inMemory->holds(*stored->row) ? std::optional(stored->row->id) : std::nullopt;
}

std::optional<std::int64_t> StoredParts::placeOf(const Value& container, const Plan& plan) const
{
    for (const auto* ids : { &plan.ids, &_containers }) {
        if (const auto known = ids->find(container.identity()); known != ids->end())
            return known->second;
    }
    const auto* row = dynamic_cast<const StoredDataRow*>(container.source());
    return row && _inMemory->holds(*row) ? std::optional(row->id) : std::nullopt;
}

std::optional<std::int64_t> StoredParts::place(const Data& data, Plan& plan, RowChanges& rows)
{
    if (data.size() <= maxInlinePart)
        return std::nullopt;
    if (const auto known = placeOf(data, plan))
        return known;
    const std::int64_t id = _nextId++;
    plan.ids.emplace(data.identity(), id);
    rows.data.push_back({ id, data });
    return id;
}

std::optional<std::int64_t> StoredParts::place(const Value& container, Plan& plan, RowChanges& rows)
{
    if (const auto known = placeOf(container, plan))
        return known;
    bool holdsLargeData = false;
    auto bytes = encodeValue(container,
        { [&](const Data& data) -> std::optional<std::int64_t> {
             if (data.size() <= maxInlinePart)
                 return std::nullopt;
             holdsLargeData = true;
             return 0;
         },
            {} });
    if (holdsLargeData || bytes.size() <= maxInlinePart)
        return std::nullopt;
    const std::int64_t id = _nextId++;
    plan.ids.emplace(container.identity(), id);
    plan.containers.emplace(id, container);
    rows.data.push_back({ id, Data(std::move(bytes)) });
    return id;
}

std::string StoredParts::encode(const Value& element, Plan& plan, RowChanges& rows)
{
    return encodeValue(element,
        { [&](const Data& data) { return place(data, plan, rows); },
            [&](const Value& container) { return place(container, plan, rows); } });
}

void StoredParts::countUses(const Value& element, int step, Plan& plan) const
{
    const auto count = [&](const Value& value, const auto& countInside) -> void {
        if (const auto* data = value.data()) {
            if (const auto id = data->size() > maxInlinePart ? placeOf(*data, plan) : std::nullopt)
                plan.uses[*id] += step;
        } else if (const auto id = value.isContainer() ? placeOf(value, plan) : std::nullopt) {
            plan.uses[*id] += step;
        } else if (const auto* array = value.array()) {
            for (const Value& each : *array)
                countInside(each, countInside);
        } else if (const auto* dictionary = value.dictionary()) {
            for (const auto& [key, each] : *dictionary)
                countInside(each, countInside);
        }
    };
    count(element, count);
}

void StoredParts::planRows(const Plan& plan, RowChanges& rows) const
{
    for (const auto& [id, change] : plan.uses) {
        const auto row = _rows.find(id);
        if (row == _rows.end())
            continue;
        const int uses = row->second.uses + change;
        if (row->second.uses > 0 && uses == 0)
            rows.leftData.push_back(id);
        else if (row->second.uses == 0 && uses > 0)
            rows.takenData.push_back(id);
    }
    for (const std::int64_t id : _left) {
        if (rows.removedData.size() == maxRemovals)
            break;
        if (!_inMemory->isUsed(id))
            rows.removedData.push_back(id);
    }
}

void StoredParts::commit(const Plan& plan, const RowChanges& rows)
{
    for (const DataRow& added : rows.data) {
        Row& row = _rows[added.id];
        if (const auto container = plan.containers.find(added.id); container != plan.containers.end()) {
            row.container = container->second.identity();
            _containers.emplace(row.container, added.id);
        } else {
            added.data.keepIn(StoredDataReader { _inMemory->row(added.id) });
        }
    }
    for (const auto& [id, change] : plan.uses)
        _rows[id].uses += change;
    for (const std::int64_t id : rows.leftData) {
        _left.insert(id);
        _containers.erase(_rows[id].container);
        _rows[id].container = nullptr;
    }
    for (const std::int64_t id : rows.takenData)
        _left.erase(id);
    for (const std::int64_t id : rows.removedData) {
        _left.erase(id);
        _rows.erase(id);
        _inMemory->forget(id);
    }
}

}
