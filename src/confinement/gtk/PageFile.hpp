#pragma once

#include "base/Url.hpp"

#include <optional>
#include <string>

namespace pagora {

// The file that a URL without a scheme, or with the scheme "file", means, as a file URL with the given one's fragment:
// the path as it stands, else with its escapes replaced once more, else either in the other Unicode normal form.
// Missing when none of them is a file.
std::optional<Url> existingFile(const Url& url);

// Whether the file lies in the folder, with links followed on both sides.
bool isFileInFolder(const std::string& path, const std::string& folder);
// Whether the file URL's path is spelled as one below the folder, without steps up that are hidden in escapes.
bool isUrlInFolder(const Url& url, const std::string& folder);

}
