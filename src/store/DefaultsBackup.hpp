#pragma once

#include "running/Worker.hpp"
#include "store/DefaultsFile.hpp"

#include <memory>
#include <string>

namespace pagora {

// Keeps a second file of stored values up to date in the background, by applying the same changes or, where that is not
// possible, by copying the whole file. A damaged or newer backup is set aside first. The destructor finishes the work
// in progress.
class DefaultsBackup {
public:
    DefaultsBackup(std::string path, std::string backupPath);

    // Called when the file may have changed in ways that were not reported.
    void catchUp();
    // Called after these changes were written to the file.
    void follow(RowChanges changes);
    // Blocks until the backup is up to date, or updating it has failed.
    void wait();

private:
    void bring(const RowChanges* changes);
    bool bringUpTo(const StoreState& state, const RowChanges* changes);
    void openBackup();

    const std::string _path;
    const std::string _backupPath;
    // Accessed by the worker only.
    std::unique_ptr<DefaultsFile> _file;
    std::unique_ptr<DefaultsFile> _backup;
    Worker _worker;
};

}
