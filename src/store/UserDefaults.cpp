#include "store/UserDefaults.hpp"

#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "store/DefaultsStore.hpp"

#include <utility>

namespace pagora {

namespace {

// Returns whether storing `next` over `current` would change nothing. Does not compare the contents of containers.
bool isStoredAlready(const Value& current, const Value& next)
{
    if (next.array() || next.dictionary() || next.data())
        return current.isSameAs(next);
    return current == next;
}

}

UserDefaults::UserDefaults(const std::string& folder)
    : _folder(folder)
    , _store(std::make_unique<DefaultsStore>(folder))
{
    auto opened = _store->open();
    _values = std::move(opened.values);
    _openingProblem = std::move(opened.problem);
    _failing = !_openingProblem.empty() && !_store->isWritable();
}

UserDefaults::~UserDefaults() = default;

std::optional<Value> UserDefaults::objectForKey(const std::string& key) const
{
    const std::lock_guard lock(_mutex);
    const auto entry = _values.find(key);
    return entry == _values.end() ? std::nullopt : std::optional(entry->second);
}

void UserDefaults::setObject(const std::string& key, Value value)
{
    change(key, std::move(value));
}

void UserDefaults::removeObject(const std::string& key)
{
    change(key, std::nullopt);
}

void UserDefaults::change(const std::string& key, std::optional<Value> value)
{
    std::function<void()> tell;
    {
        const std::lock_guard lock(_mutex);
        const auto entry = _values.find(key);
        const bool isThere = entry != _values.end();
        if (isThere ? value && isStoredAlready(entry->second, *value) : !value)
            return;
        // The replaced value is destroyed with `value`, after the lock is released.
        if (_changes.empty())
            tell = _whenChanged;
        _changes.insert_or_assign(key, value);
        if (!value)
            _values.erase(entry);
        else if (isThere)
            std::swap(entry->second, *value);
        else
            _values.emplace(key, *value);
    }
    if (tell)
        tell();
}

std::vector<std::string> UserDefaults::allKeys() const
{
    const std::lock_guard lock(_mutex);
    std::vector<std::string> keys;
    for (const auto& [key, value] : _values)
        keys.push_back(key);
    return keys;
}

std::optional<std::string> UserDefaults::stringForKey(const std::string& key) const
{
    const auto value = objectForKey(key);
    return stringFrom(value ? &*value : nullptr);
}

double UserDefaults::realForKey(const std::string& key) const
{
    const auto value = objectForKey(key);
    return realFrom(value ? &*value : nullptr);
}

std::int64_t UserDefaults::integerForKey(const std::string& key) const
{
    const auto value = objectForKey(key);
    return integerFrom(value ? &*value : nullptr);
}

bool UserDefaults::boolForKey(const std::string& key) const
{
    const auto value = objectForKey(key);
    return booleanFrom(value ? &*value : nullptr);
}

bool UserDefaults::synchronize()
{
    const std::lock_guard flushing(_flushing);
    Changes changes;
    {
        const std::lock_guard lock(_mutex);
        changes.swap(_changes);
    }
    if (changes.empty())
        return true;
    const auto written = _store->write(changes);
    tell(written.problem, !written.isDone);
    if (written.isDone && written.found.empty())
        return true;
    const std::lock_guard lock(_mutex);
    for (const auto& [key, value] : written.found) {
        // Values that the program has set or removed in the meantime are newer than the file's.
        if (!changes.contains(key) && !_changes.contains(key))
            _values.try_emplace(key, value);
    }
    if (!written.isDone)
        _changes.merge(changes);
    return written.isDone;
}

void UserDefaults::tell(const std::string& problem, bool isFailure)
{
    std::function<void(const std::string&)> tell;
    {
        const std::lock_guard lock(_mutex);
        if (!isFailure || !_failing)
            tell = _whenInTrouble;
        _failing = isFailure;
    }
    if (problem.empty())
        return;
    log(problem);
    if (tell)
        tell(problem);
}

void UserDefaults::setWhenInTrouble(std::function<void(const std::string& problem)> whenInTrouble)
{
    const std::lock_guard lock(_mutex);
    _whenInTrouble = std::move(whenInTrouble);
}

void UserDefaults::setWhenChanged(std::function<void()> whenChanged)
{
    const std::lock_guard lock(_mutex);
    _whenChanged = std::move(whenChanged);
}

void UserDefaults::waitForBackup()
{
    const std::lock_guard flushing(_flushing);
    _store->waitForBackup();
}

}
