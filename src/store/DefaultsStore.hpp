#pragma once

#include "store/DefaultsBackup.hpp"
#include "store/DefaultsIndex.hpp"
#include "store/DefaultsRecovery.hpp"

#include <map>
#include <memory>
#include <string>

namespace pagora {

// The stored values on disk: the file, its index and the backup. Not thread-safe.
class DefaultsStore {
public:
    using Values = std::map<std::string, Value>;

    explicit DefaultsStore(const std::string& folder);

    struct Opened {
        Values values;
        // One line if a file was set aside or nothing can be stored.
        std::string problem;
    };
    Opened open();

    struct Written {
        bool isDone = false;
        // The content of a file that could not be opened before.
        Values found = {};
        // One line if storing failed or a file was set aside.
        std::string problem = {};
    };
    // Stores all changes or none.
    Written write(const DefaultsIndex::Changes& changes);
    bool isWritable() const { return _file && !_file->isReadOnly(); }
    void waitForBackup();
    // Number of rows written or removed since this object was created.
    int rowsChanged() const;

private:
    Opened use(OpenedDefaults opened);
    DefaultsFile::Applied apply(const DefaultsIndex::Changes& changes);
    std::string problemOf(const std::string& reason) const;

    const DefaultsPaths _paths;
    const std::shared_ptr<StoredDataSource> _source;
    DefaultsIndex _index;
    std::unique_ptr<DefaultsFile> _file;
    std::unique_ptr<DefaultsBackup> _backup;
};

}
