#pragma once

#include "store/DefaultsIndex.hpp"

#include <map>
#include <memory>
#include <optional>
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

// Opens the stored values, or creates an empty file, and loads the content into `index` and `values`. A damaged file is
// set aside and replaced by the backup; a newer one is set aside. Returns null or a read-only file when nothing can be
// stored. `problem` receives one line when something was set aside, was lost, or cannot be stored.
std::unique_ptr<DefaultsFile> openDefaults(
    const DefaultsPaths& paths, DefaultsIndex& index, std::map<std::string, Value>& values, std::string& problem);

// Sets aside a file that was found damaged while open and has been closed, and continues with the backup as above. Null
// also when the file could not be set aside.
std::unique_ptr<DefaultsFile> restoreDefaults(
    const DefaultsPaths& paths, DefaultsIndex& index, std::map<std::string, Value>& values, std::string& problem);

// All stored values of `folder` as one dictionary, empty when there are none. Writes nothing. Missing, with the reason
// in `problem`, when they cannot be read.
std::optional<Value> readDefaults(const std::string& folder, std::string& problem);

}
