#pragma once

#include "platform/DefaultsIndex.hpp"

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

// Renames a file that is damaged or newer, with what lies beside it, to a name that no other has. Returns the new name;
// empty when that failed.
std::string setAside(const std::string& path, DefaultsCondition condition);

// Opens the stored values, or makes an empty file, and loads what there is into `index` and `values`. A damaged file is
// set aside and the backup put in its place; a newer one is set aside. Null, or a file that can only be read, when
// nothing can be stored. `problem` receives one plain line when something was set aside or lost, or cannot be stored.
std::unique_ptr<DefaultsFile> openDefaults(
    const DefaultsPaths& paths, DefaultsIndex& index, std::map<std::string, Value>& values, std::string& problem);

// Sets the file aside, which turned out to be damaged while it was open and is closed now, and goes on with the backup,
// as above. Null also when the file could not be set aside.
std::unique_ptr<DefaultsFile> restoreDefaults(
    const DefaultsPaths& paths, DefaultsIndex& index, std::map<std::string, Value>& values, std::string& problem);

// All that is stored in `folder`, as one dictionary, read without writing anything; a folder without stored values has
// none. Missing, with the reason in `problem`, when it cannot be read.
std::optional<Value> readDefaults(const std::string& folder, std::string& problem);

}
