#pragma once

#include "base/Result.hpp"
#include "store/DefaultsRows.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace SQLite {
class Database;
}

namespace pagora {

// The condition of the file at a path.
enum class DefaultsCondition {
    Good,
    // The file does not exist.
    Missing,
    Damaged,
    // A later version of the program has written the file.
    Newer,
    // The file cannot be opened or created, or another process has it locked.
    Unusable,
};

// One SQLite file of stored values. Every change is one transaction and is on the disk when the call returns. Not
// thread-safe.
class DefaultsFile {
public:
    // How changes are written: to a write-ahead log, which costs one flush and does not block readers, or in place, so
    // that the file is complete without a log.
    enum class Journal { Log, InPlace };

    // Time for which a change waits for other processes.
    static constexpr int busyMilliseconds = 3000;

    // The open file, or its condition if that is not Good.
    using Opened = Result<std::unique_ptr<DefaultsFile>, DefaultsCondition>;
    static Opened open(const std::string& path, Journal journal);
    // Opens the file read-only: nothing is written, not even beside the file. Works while another process writes.
    static Opened openToRead(const std::string& path);
    // Creates an empty file; null on failure.
    static std::unique_ptr<DefaultsFile> make(const std::string& path, Journal journal);
    // Called by the three functions above.
    DefaultsFile(std::unique_ptr<SQLite::Database> database, bool readOnly);
    ~DefaultsFile();

    struct RowReader {
        std::function<void(const StoreState& state)> state;
        std::function<bool(ValueRow row)> value;
        // Gets a row with an empty payload, and separately its payload, which is valid during the call.
        std::function<bool(const ElementRow& row, std::string_view payload)> element;
        std::function<void(std::int64_t id)> leftData;
    };
    // Passes every row except data rows to `reader`, elements in no particular order. Returns a condition other than
    // Good if a row is malformed or `reader` rejects it.
    DefaultsCondition read(const RowReader& reader);
    // Returns nullopt if the data cannot be read.
    std::optional<std::int64_t> maxDataId();
    // Returns nullopt if there is no such row or its bytes are damaged.
    std::optional<std::string> readData(std::int64_t id);

    enum class Outcome {
        Done,
        // The file is not in the state on which the changes are based.
        OtherState,
        // The file's content differs from what was written.
        Damaged,
        Failed,
    };
    struct Applied {
        Outcome outcome;
        // The system's description of the failure.
        std::string error = {};
    };
    Applied apply(const RowChanges& changes);

    // Returns the state of the file; nullopt if it cannot be read.
    std::optional<StoreState> state();
    // Copies the whole file, and replaces a file at that path when the copy is on the disk.
    bool copyTo(const std::string& path);
    // Moves the log's content to the file as far as readers permit.
    void emptyLog();

    bool isReadOnly() const { return _readOnly; }
    // Number of rows written or removed since the file was opened.
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
