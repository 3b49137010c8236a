#pragma once

#include "base/Value.hpp"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

class DefaultsStore;

// The program's stored values by key: property lists of any shape. Reads and writes act on memory; a flush writes the
// changes since the last flush to the disk in one transaction. Arrays are stored element by element, and a flush writes
// only elements that are not copies of stored ones.  Invariants of what is on disk: 1. The file has the complete state
// of one flush. After a kill, a full disk or a power cut it is the last one that succeeded. 2. The backup, updated in
// the background, has the complete state of that flush or an earlier one. 3. A damaged file is never deleted. It is
// renamed, and the backup replaces it.  Thread-safe.
class UserDefaults {
public:
    // Opens or creates the store in `folder`. If nothing can be stored there, values stay in memory and each flush
    // tries again.
    explicit UserDefaults(const std::string& folder);
    ~UserDefaults();

    const std::string& folder() const { return _folder; }

    // One line if a file was set aside when the store was opened, or if the store cannot be written; otherwise empty.
    const std::string& openingProblem() const { return _openingProblem; }

    std::optional<Value> objectForKey(const std::string& key) const;
    void setObject(const std::string& key, Value value);
    void removeObject(const std::string& key);
    // Returns every key, sorted.
    std::vector<std::string> allKeys() const;

    // Returns the value under the key, converted to the requested type (see Numbers.hpp).
    std::optional<std::string> stringForKey(const std::string& key) const;
    double realForKey(const std::string& key) const;
    std::int64_t integerForKey(const std::string& key) const;
    bool boolForKey(const std::string& key) const;
    bool hasKey(const std::string& key) const { return objectForKey(key).has_value(); }

    // Writes the changes to the disk. Returns false on failure; the next flush then writes them.
    bool synchronize();

    // Sets the callback for the first change since the last flush. It is called on the thread that makes the change.
    void setWhenChanged(std::function<void()> whenChanged);

    // Sets the callback for failures: it gets one line when flushes begin to fail and when a damaged store is set
    // aside. Called on the flushing thread. The line is also logged.
    void setWhenInTrouble(std::function<void(const std::string& problem)> whenInTrouble);

    // Blocks until the backup has the state of the last flush, or updating it has failed.
    void waitForBackup();

private:
    // Pending changes: the value to store for each key, or nullopt to remove the key.
    using Changes = std::map<std::string, std::optional<Value>>;

    void change(const std::string& key, std::optional<Value> value);
    void tell(const std::string& problem, bool isFailure);

    const std::string _folder;
    mutable std::mutex _mutex;
    std::map<std::string, Value> _values;
    Changes _changes;
    std::function<void()> _whenChanged;
    std::function<void(const std::string&)> _whenInTrouble;
    // True after the failure of flushes was reported.
    bool _failing = false;
    // Serializes flushes, so that they are written in order.
    std::mutex _flushing;
    std::unique_ptr<DefaultsStore> _store;
    std::string _openingProblem;
};

}
