#include "platform/DefaultsIndex.hpp"

#include "platform/ValueCoding.hpp"

#include <algorithm>
#include <utility>

namespace pagora {

namespace {

// A flush that follows the removal of many elements is not held up by their data: the rest goes with later ones.
constexpr std::size_t mostDataRemovals = 256;

void apply(ArrayDifference& difference, std::vector<StoredElement>& elements)
{
    const auto start = elements.begin() + static_cast<std::ptrdiff_t>(difference.start);
    const auto replaced = static_cast<std::ptrdiff_t>(std::min(difference.count, difference.elements.size()));
    const auto rest = std::move(difference.elements.begin(), difference.elements.begin() + replaced, start);
    if (difference.elements.size() < difference.count)
        elements.erase(rest, start + static_cast<std::ptrdiff_t>(difference.count));
    else
        elements.insert(rest, std::make_move_iterator(difference.elements.begin() + replaced),
            std::make_move_iterator(difference.elements.end()));
}

}

DefaultsIndex::DefaultsIndex(std::shared_ptr<StoredDataSource> source)
    : _source(std::move(source))
{
}

DefaultsCondition DefaultsIndex::load(DefaultsFile& file, std::map<std::string, Value>& values)
{
    *this = DefaultsIndex(_source);
    values.clear();
    DefaultsFile::RowReader reader;
    reader.state = [&](const StoreState& state) { _state = state; };
    reader.value = [&](ValueRow row) {
        _entries[row.key].isArray = row.isArray;
        if (row.isArray)
            return true;
        auto value = decodeValue(row.payload);
        return value && values.emplace(std::move(row.key), std::move(*value)).second;
    };
    const FindData findData = [this](std::int64_t id, std::size_t size) { return dataAt(id, size); };
    reader.element = [&](ElementRow row, std::string_view payload) {
        const auto entry = _entries.find(row.key);
        auto value = decodeValue(payload, findData);
        if (entry == _entries.end() || !entry->second.isArray || !value)
            return false;
        entry->second.elements.push_back({ std::move(*value), row.id, row.rank });
        _nextElement = std::max(_nextElement, row.id + 1);
        return true;
    };
    reader.leftData = [&](std::int64_t id) { _left.insert(id); };
    const auto condition = file.read(reader);
    if (condition != DefaultsCondition::Good)
        return condition;
    _nextData = file.largestDataId() + 1;
    for (const std::int64_t id : _left)
        _data.try_emplace(id);
    for (auto& [key, entry] : _entries) {
        if (!entry.isArray)
            continue;
        std::sort(entry.elements.begin(), entry.elements.end(),
            [](const auto& left, const auto& right) { return left.rank < right.rank; });
        Value::Array array;
        array.reserve(entry.elements.size());
        for (const auto& element : entry.elements)
            array.push_back(element.value);
        values.emplace(key, std::move(array));
    }
    return condition;
}

Data DefaultsIndex::dataAt(std::int64_t id, std::size_t size)
{
    DataUse& use = _data[id];
    ++use.uses;
    auto row = use.inMemory.lock();
    if (!row)
        use.inMemory = row = std::make_shared<const StoredDataRow>(StoredDataRow { _source, id });
    return Data(size, StoredDataReader { std::move(row) });
}

std::optional<std::int64_t> DefaultsIndex::placeOf(const Data& data, const Plan& plan) const
{
    if (const auto added = plan.newData.find(data.identity()); added != plan.newData.end())
        return added->second;
    const auto reader = data.reader();
    const auto* stored = reader.target<StoredDataReader>();
    if (!stored || stored->row->source != _source)
        return std::nullopt;
    const auto use = _data.find(stored->row->id);
    // After another process changed the file, a row of the same number may hold something else.
    if (use == _data.end() || use->second.inMemory.lock() != stored->row)
        return std::nullopt;
    return stored->row->id;
}

std::string DefaultsIndex::encodeElement(const Value& value, Plan& plan)
{
    return encodeValue(value, [&](const Data& data) -> std::optional<std::int64_t> {
        if (data.size() <= largestInlineData)
            return std::nullopt;
        if (const auto place = placeOf(data, plan))
            return place;
        const std::int64_t id = _nextData++;
        plan.newData.emplace(data.identity(), id);
        plan.rows.data.push_back({ id, data });
        return id;
    });
}

void DefaultsIndex::countUses(const Value& value, int step, Plan& plan) const
{
    if (auto* data = value.data()) {
        const auto place = data->size() > largestInlineData ? placeOf(*data, plan) : std::nullopt;
        if (place)
            plan.dataUses[*place] += step;
    } else if (auto* array = value.array()) {
        for (const Value& element : *array)
            countUses(element, step, plan);
    } else if (auto* dictionary = value.dictionary()) {
        for (const auto& [key, entry] : *dictionary)
            countUses(entry, step, plan);
    }
}

DefaultsIndex::Plan DefaultsIndex::plan(const Changes& changes)
{
    Plan plan;
    plan.rows.before = _state;
    plan.rows.after = _state;
    ++plan.rows.after.flush;
    for (const auto& [key, value] : changes) {
        const auto* array = value ? value->array() : nullptr;
        if (array)
            planArray(key, *array, plan);
        else
            planOther(key, value, plan);
    }
    planDataRows(plan);
    return plan;
}

void DefaultsIndex::planArray(const std::string& key, const Value::Array& array, Plan& plan)
{
    static const std::vector<StoredElement> nothing;
    const auto entry = _entries.find(key);
    const bool isNew = entry == _entries.end();
    const auto& stored = isNew ? nothing : entry->second.elements;
    auto difference = arrayDifference(stored, array);
    if (isNew || !entry->second.isArray) {
        plan.rows.values.push_back({ key, true, {} });
        plan.rows.after.values += isNew;
    } else if (difference.count == 0 && difference.elements.empty())
        return;
    std::set<std::int64_t> reusedRows;
    std::set<std::int64_t> keptRows;
    for (std::size_t i = 0; i < difference.elements.size(); ++i) {
        StoredElement& element = difference.elements[i];
        if (difference.isKept[i]) {
            keptRows.insert(element.id);
            continue;
        }
        if (element.id)
            reusedRows.insert(element.id);
        else
            element.id = _nextElement++;
        plan.rows.elements.push_back({ element.id, key, element.rank, encodeElement(element.value, plan) });
        countUses(element.value, 1, plan);
    }
    for (std::size_t i = difference.start; i < difference.start + difference.count; ++i) {
        if (keptRows.contains(stored[i].id))
            continue;
        countUses(stored[i].value, -1, plan);
        if (!reusedRows.contains(stored[i].id))
            plan.rows.removedElements.push_back(stored[i].id);
    }
    plan.rows.after.elements += static_cast<std::int64_t>(array.size()) - static_cast<std::int64_t>(stored.size());
    plan.arrays.emplace(key, std::move(difference));
}

void DefaultsIndex::planOther(const std::string& key, const std::optional<Value>& value, Plan& plan)
{
    const auto entry = _entries.find(key);
    const bool isNew = entry == _entries.end();
    if (isNew && !value)
        return;
    if (!isNew) {
        for (const auto& element : entry->second.elements) {
            countUses(element.value, -1, plan);
            plan.rows.removedElements.push_back(element.id);
        }
        plan.rows.after.elements -= static_cast<std::int64_t>(entry->second.elements.size());
    }
    if (value)
        plan.rows.values.push_back({ key, false, encodeValue(*value) });
    else
        plan.rows.removedValues.push_back(key);
    plan.rows.after.values += static_cast<int>(isNew) - static_cast<int>(!value);
    plan.others.emplace(key, value);
}

void DefaultsIndex::planDataRows(Plan& plan) const
{
    for (const auto& [id, change] : plan.dataUses) {
        const auto use = _data.find(id);
        if (use == _data.end())
            continue;
        const int uses = use->second.uses + change;
        if (use->second.uses > 0 && uses == 0)
            plan.rows.leftData.push_back(id);
        else if (use->second.uses == 0 && uses > 0)
            plan.rows.takenData.push_back(id);
    }
    for (const std::int64_t id : _left) {
        if (plan.rows.removedData.size() == mostDataRemovals)
            break;
        if (_data.at(id).inMemory.expired())
            plan.rows.removedData.push_back(id);
    }
}

void DefaultsIndex::commit(Plan& plan)
{
    _state = plan.rows.after;
    for (auto& [key, difference] : plan.arrays) {
        Entry& entry = _entries[key];
        entry.isArray = true;
        apply(difference, entry.elements);
    }
    for (const auto& [key, value] : plan.others) {
        if (value)
            _entries[key] = Entry();
        else
            _entries.erase(key);
    }
    commitDataRows(plan);
}

void DefaultsIndex::commitDataRows(const Plan& plan)
{
    for (const DataRow& added : plan.rows.data) {
        const auto row = std::make_shared<const StoredDataRow>(StoredDataRow { _source, added.id });
        _data[added.id].inMemory = row;
        added.data.keepIn(StoredDataReader { row });
    }
    for (const auto& [id, change] : plan.dataUses)
        _data[id].uses += change;
    _left.insert(plan.rows.leftData.begin(), plan.rows.leftData.end());
    for (const std::int64_t id : plan.rows.takenData)
        _left.erase(id);
    for (const std::int64_t id : plan.rows.removedData) {
        _left.erase(id);
        _data.erase(id);
    }
}

}
