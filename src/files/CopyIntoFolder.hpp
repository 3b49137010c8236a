#pragma once

#include <optional>
#include <string>

namespace pagora {

// Copies the file at `source` into `folder` under its own name, or under a free name ("Book 2.epub") if another file
// has it. A file with the same bytes is not copied again. Returns the name of the copy; nullopt if the copy is not
// complete. Thread-safe.
std::optional<std::string> copyIntoFolder(const std::string& source, const std::string& folder);

// Returns whether both paths lead to one file. Thread-safe.
bool isSameFile(const std::string& a, const std::string& b);

}
