#pragma once

#include <optional>
#include <string>

namespace pagora {

// Copies the file at `source` into `folder` under its own name, or under a free one ("Book 2.epub") where another file
// has that name. A file that is there already, byte for byte, is not copied again. Returns the name of the copy;
// missing when there is no whole copy. Any thread.
std::optional<std::string> copyIntoFolder(const std::string& source, const std::string& folder);

// Whether both paths lead to one file. Any thread.
bool isSameFile(const std::string& a, const std::string& b);

}
