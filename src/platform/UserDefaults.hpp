#pragma once

#include "platform/Value.hpp"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

class DefaultsStore;

// The program's stored values, by key: property lists of any shape. Reading and writing act on memory at once; a flush
// brings what changed since the last one to the disk in one transaction. An array is stored element by element, and a
// flush writes only the elements that are not copies of stored ones.
//
// Invariants of what is on disk:
// 1. It is the state of some flush, whole: a kill, a full disk or a power cut leaves the last flush that succeeded.
// 2. A backup beside it follows in the background: it is the state of that flush or of an earlier one, whole.
// 3. A damaged file is never deleted: it is set aside under another name, and the backup takes its place.
//
// Any thread.
class UserDefaults {
public:
    // Opens or makes the store in `folder`. When nothing can be stored there, values live in memory and each flush
    // tries again. `problem`, when given, receives one plain line about a store that was set aside, or cannot be
    // written.
    explicit UserDefaults(const std::string& folder, std::string* problem = nullptr);
    ~UserDefaults();

    std::optional<Value> objectForKey(const std::string& key) const;
    void setObject(const std::string& key, Value value);
    void removeObject(const std::string& key);
    // Every key, sorted.
    std::vector<std::string> allKeys() const;

    // The value under the key in the kind asked for; see Numbers.hpp for how kinds convert.
    std::optional<std::string> stringForKey(const std::string& key) const;
    double realForKey(const std::string& key) const;
    std::int64_t integerForKey(const std::string& key) const;
    bool boolForKey(const std::string& key) const;
    bool hasKey(const std::string& key) const { return objectForKey(key).has_value(); }

    // Flushes what changed to the disk; false when that failed, and the changes wait for the next flush.
    bool synchronize();

    // Called, on the thread that made the change, when there is something to flush and there was nothing before.
    void setWhenChanged(std::function<void()> whenChanged);

    // Called with one plain line, on the thread that flushes, when a flush is the first to fail, and when the store
    // turns out to be damaged and is set aside. The line is in the log as well.
    void setWhenInTrouble(std::function<void(const std::string& problem)> whenInTrouble);

    // Returns when the backup is in the state of the last flush, or that has failed.
    void waitForBackup();

private:
    // One pending change: the value to store, or none to remove the key.
    using Changes = std::map<std::string, std::optional<Value>>;

    void change(const std::string& key, std::optional<Value> value);
    void tell(const std::string& problem, bool isFailure);

    mutable std::mutex _mutex;
    std::map<std::string, Value> _values;
    Changes _changes;
    std::function<void()> _whenChanged;
    std::function<void(const std::string&)> _whenInTrouble;
    // Somebody has been told that flushes fail.
    bool _failing = false;
    // Serialises flushes, so that they reach the disk in order.
    std::mutex _flushing;
    std::unique_ptr<DefaultsStore> _store;
};

}
