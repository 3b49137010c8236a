#include "store/DefaultsIndex.hpp"

#include "store/ValueCoding.hpp"

#include <algorithm>
#include <utility>

namespace pagora {

namespace {

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
    : _source(source)
    , _parts(std::move(source))
{
}

Result<DefaultsIndex::Values, DefaultsCondition> DefaultsIndex::load(DefaultsFile& file)
{
    *this = DefaultsIndex(_source);
    Values values;
    DefaultsFile::RowReader reader;
    reader.state = [&](const StoreState& state) { _state = state; };
    reader.value = [&](ValueRow row) {
        _entries[row.key].isArray = row.isArray;
        if (row.isArray)
            return true;
        auto value = decodeValue(row.payload);
        return value && values.emplace(std::move(row.key), std::move(*value)).second;
    };
    reader.element = [&](const ElementRow& row, std::string_view payload) {
        const auto entry = _entries.find(row.key);
        auto value = _parts.element(payload);
        if (entry == _entries.end() || !entry->second.isArray || !value)
            return false;
        entry->second.elements.push_back({ std::move(*value), row.id, row.rank });
        _nextElement = std::max(_nextElement, row.id + 1);
        return true;
    };
    reader.leftData = [&](std::int64_t id) { _parts.addLeft(id); };
    if (const auto condition = file.read(reader); condition != DefaultsCondition::Good)
        return condition;
    const auto maxId = file.maxDataId();
    if (!maxId)
        return DefaultsCondition::Damaged;
    _parts.setMaxId(*maxId);
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
    return values;
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
    _parts.planRows(plan.parts, plan.rows);
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
        plan.rows.elements.push_back(
            { element.id, key, element.rank, _parts.encode(element.value, plan.parts, plan.rows) });
        _parts.countUses(element.value, 1, plan.parts);
    }
    for (std::size_t i = difference.start; i < difference.start + difference.count; ++i) {
        if (keptRows.contains(stored[i].id))
            continue;
        _parts.countUses(stored[i].value, -1, plan.parts);
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
            _parts.countUses(element.value, -1, plan.parts);
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
    _parts.commit(plan.parts, plan.rows);
}

}
