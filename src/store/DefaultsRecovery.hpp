#pragma once

#include "store/DefaultsIndex.hpp"

#include <memory>
#include <string>

namespace pagora {

// The files of the stored values in their folder.
struct DefaultsPaths {
    explicit DefaultsPaths(const std::string& folder);
    std::string folder;
    std::string file;
    std::string backup;
};

// Renames a damaged or newer file, with its journal and log, to an unused name. Returns the new name; empty on failure.
std::string setAside(const std::string& path, DefaultsCondition condition);

struct OpenedDefaults {
    // Null or read-only if nothing can be stored.
    std::unique_ptr<DefaultsFile> file;
    DefaultsIndex::Values values;
    // One line if a file was set aside, if values were lost, or if nothing can be stored.
    std::string problem;
};

// Opens the stored values, or creates an empty file, and loads the content into `index`. A damaged file is set aside
// and replaced by the backup; a newer one is set aside.
OpenedDefaults openDefaults(const DefaultsPaths& paths, DefaultsIndex& index);

// Sets aside a file that was found damaged while open and has been closed, and continues with the backup as above.
// `file` is also null if the damaged file could not be set aside.
OpenedDefaults restoreDefaults(const DefaultsPaths& paths, DefaultsIndex& index);

// Returns all stored values of `folder` as one dictionary, empty if there are none, or a line that says why they cannot
// be read. Writes nothing.
Result<Value, std::string> readDefaults(const std::string& folder);

}
