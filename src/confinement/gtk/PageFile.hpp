#pragma once

#include "base/Url.hpp"

#include <optional>
#include <string>

namespace pagora {

// A file that exists, and its file URL with the fragment that was asked for.
struct PageFile {
    std::string path;
    Url url;
};
// Finds the file of a URL without a scheme or with the scheme "file". Tries the path as it is, then with its escapes
// decoded once more, then in either Unicode normal form. Missing when no file exists.
std::optional<PageFile> existingFile(const Url& url);

// Whether the file is in the folder after resolving links in both.
bool isFileInFolder(const std::string& path, const std::string& folder);
// Whether the file URL's path is below the folder by its text, without ".." hidden in escapes.
bool isUrlInFolder(const Url& url, const std::string& folder);

}
