#pragma once

#include "platform/DefaultsFile.hpp"
#include "platform/Worker.hpp"

#include <memory>
#include <string>

namespace pagora {

// Keeps a second file of stored values in the state of the first, in the background: by the same changes, or by a whole
// copy where that does not do. A file that is damaged or newer is set aside before. Dropping it finishes what is under
// way.
class DefaultsBackup {
public:
    DefaultsBackup(std::string path, std::string backupPath);

    // The file may have changed while nobody followed.
    void catchUp();
    // The file has taken these changes.
    void follow(RowChanges changes);
    // Returns when the backup is up to date, or that has failed.
    void wait();

private:
    void bring(const RowChanges* changes);
    bool bringUpTo(const StoreState& state, const RowChanges* changes);
    void openBackup();

    const std::string _path;
    const std::string _backupPath;
    // Connections of the worker's own.
    std::unique_ptr<DefaultsFile> _file;
    std::unique_ptr<DefaultsFile> _backup;
    Worker _worker;
};

}
