#pragma once

#include "platform/DefaultsRows.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace SQLite {
class Database;
}

namespace pagora {

// What was found at the path of a file of stored values.
enum class DefaultsCondition {
    Good,
    // There is nothing yet.
    Missing,
    Damaged,
    // Written by a later version of the program.
    Newer,
    // It can neither be opened nor be made, or another process holds it.
    Unusable,
};

// One SQLite file of stored values. Every change is one transaction and is on the disk when it returns. One thread at a
// time.
class DefaultsFile {
public:
    // How changes reach the file: through a log beside it, which takes one write to the disk and does not disturb
    // readers, or in place, so that the file alone is whole.
    enum class Journal { Log, InPlace };

    // How long a change waits for other processes.
    static constexpr int busyMilliseconds = 3000;

    // Opens the file when its condition is good; null for every other one.
    static std::unique_ptr<DefaultsFile> open(const std::string& path, Journal journal, DefaultsCondition& condition);
    // The same, but nothing is written, not even beside the file; works while it is being written elsewhere.
    static std::unique_ptr<DefaultsFile> openToRead(const std::string& path, DefaultsCondition& condition);
    // Makes an empty file; null when that is not possible.
    static std::unique_ptr<DefaultsFile> make(const std::string& path, Journal journal);
    // For the three above.
    DefaultsFile(std::unique_ptr<SQLite::Database> database, bool readOnly);
    ~DefaultsFile();

    struct RowReader {
        std::function<void(const StoreState& state)> state;
        std::function<bool(ValueRow row)> value;
        // The row with an empty payload, and its payload, which is valid for the call.
        std::function<bool(const ElementRow& row, std::string_view payload)> element;
        std::function<void(std::int64_t id)> leftData;
    };
    // Tells every row but data, elements in no order. Anything but Good when a row is wrong, or `reader` refuses it.
    DefaultsCondition read(const RowReader& reader);
    // Missing when the data cannot be reached.
    std::optional<std::int64_t> largestDataId();
    // Missing when there is no such row or its bytes are damaged.
    std::optional<std::string> readData(std::int64_t id);

    enum class Outcome {
        Done,
        // The file is not in the state that the changes start from.
        OtherState,
        // The file is not what was written to it.
        Damaged,
        Failed,
    };
    // `error` receives the system's description of a failure.
    Outcome apply(const RowChanges& changes, std::string& error);

    // The state that the file is in; missing when it cannot be read.
    std::optional<StoreState> state();
    // Makes a whole copy under another name, replacing what has it, once the copy is on the disk.
    bool copyTo(const std::string& path);
    // Brings what the log holds into the file, as far as no reader is in the way.
    void emptyLog();

    bool isReadOnly() const { return _readOnly; }
    // How many rows were written or removed since it was opened.
    int rowsChanged() const;

private:
    DefaultsCondition check();
    std::optional<StoreState> readState();
    void writeState(const StoreState& state);
    void writeRows(const RowChanges& changes);

    std::unique_ptr<SQLite::Database> _database;
    bool _readOnly;
};

}
