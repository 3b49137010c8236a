#pragma once

#include "base/Url.hpp"

#include <optional>
#include <string>

namespace pagora {

// An existing file, and its file URL with the requested fragment.
struct PageFile {
    std::string path;
    Url url;
};
// Finds the file of a URL without a scheme or with the scheme "file". Tries the path as it is, then with its escapes
// decoded once more, then in both Unicode normal forms. Returns nullopt if no file exists.
std::optional<PageFile> existingFile(const Url& url);

// Returns whether the file is in the folder, after resolving links in both paths.
bool isFileInFolder(const std::string& path, const std::string& folder);
// Returns whether the text of the file URL's path is below the folder, without an escaped "..".
bool isUrlInFolder(const Url& url, const std::string& folder);

}
