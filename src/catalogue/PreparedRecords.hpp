#pragma once

#include "catalogue/BookInfo.hpp"

#include <mutex>
#include <vector>

namespace pagora {

// Records of stored entries that are made before they are asked for, on another thread. Any thread.
class PreparedRecords {
public:
    // Makes a record for each stored entry. Does nothing once records were taken.
    void make(Value::Array entries);

    // One record for each of the entries: the one that was made, or a new one where none was made for this entry. Waits
    // while they are being made. Keeps nothing.
    std::vector<BookInfoPtr> take(const Value::Array& entries);

private:
    std::mutex _mutex;
    Value::Array _entries;
    std::vector<BookInfoPtr> _records;
    bool _isTaken = false;
};

}
