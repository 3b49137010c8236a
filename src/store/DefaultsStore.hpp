#pragma once

#include "store/DefaultsBackup.hpp"
#include "store/DefaultsIndex.hpp"
#include "store/DefaultsRecovery.hpp"

#include <map>
#include <memory>
#include <string>

namespace pagora {

// The stored values on disk: the file, its index and the backup. Not thread safe.
class DefaultsStore {
public:
    using Values = std::map<std::string, Value>;

    // `values` receives the stored values, `problem` one line when a file was set aside.
    DefaultsStore(const std::string& folder, Values& values, std::string& problem);

    // Stores all changes or none. When the file could only be opened now, `found` receives its content. `problem`
    // receives one line when storing failed or the file was set aside.
    bool write(const DefaultsIndex::Changes& changes, Values& found, std::string& problem);
    bool isWritable() const { return _file && !_file->isReadOnly(); }
    void waitForBackup();
    // Number of rows written or removed since the start.
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
