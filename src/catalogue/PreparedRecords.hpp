#pragma once

#include "catalogue/BookInfo.hpp"

#include <mutex>
#include <vector>

namespace pagora {

// Records of stored entries that are created in advance on another thread. Thread-safe.
class PreparedRecords {
public:
    // Creates a record for each stored entry. Does nothing after records were taken.
    void make(Value::Array entries);

    // Returns one record for each of the entries: the prepared one, or a new one if there is none for this entry. Waits
    // for `make`. Keeps no records.
    std::vector<BookInfoPtr> take(const Value::Array& entries);

private:
    std::mutex _mutex;
    Value::Array _entries;
    std::vector<BookInfoPtr> _records;
    bool _isTaken = false;
};

}
