#pragma once

#include "platform/DefaultsBackup.hpp"
#include "platform/DefaultsIndex.hpp"
#include "platform/DefaultsRecovery.hpp"

#include <map>
#include <memory>
#include <string>

namespace pagora {

// The disk side of the stored values: the file, what is known to be in it, and the backup. One thread at a time.
class DefaultsStore {
public:
    using Values = std::map<std::string, Value>;

    // `values` receives what is stored; `problem` one plain line when something was set aside.
    DefaultsStore(const std::string& folder, Values& values, std::string& problem);

    // Stores the changes, whole or not at all. When the file could only be opened now, `found` receives what is in it.
    // `problem` receives one plain line when that failed, or the file had to be set aside.
    bool write(const DefaultsIndex::Changes& changes, Values& found, std::string& problem);
    bool isWritable() const { return _file && !_file->isReadOnly(); }
    void waitForBackup();
    // How many rows were written or removed since the start.
    int rowsChanged() const;

private:
    void open(Values& values, std::string& problem);
    void use(std::unique_ptr<DefaultsFile> file);
    DefaultsFile::Outcome apply(const DefaultsIndex::Changes& changes, std::string& error);
    bool restore(std::string& problem);
    bool fail(const std::string& reason, std::string& problem) const;

    const DefaultsPaths _paths;
    const std::shared_ptr<StoredDataSource> _source;
    DefaultsIndex _index;
    std::unique_ptr<DefaultsFile> _file;
    std::unique_ptr<DefaultsBackup> _backup;
};

}
