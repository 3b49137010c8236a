#pragma once

#include "base/FileDescriptor.hpp"

#include <string>
#include <vector>

namespace pagora {

// Empties a folder repeatedly and keeps some of its files and folders elsewhere for reuse, because moving a file is
// faster than creating and removing many. One thread at a time.
class SpareFiles {
public:
    // The folder for kept files; it is created when needed and must be on the file system of the folders that are
    // emptied.
    explicit SpareFiles(std::string path)
        : _path(std::move(path))
    {
    }
    const std::string& path() const { return _path; }

    // Creates the folder and those above it, and empties it.
    void makeEmptyFolder(const std::string& folder);

    // Gives a spare file that name in an open folder and opens it for writing. The name must be unused. The file still
    // has its old content. None when there is no spare file.
    FileDescriptor takeFile(int folder, const char* name);
    // The same for an empty folder.
    bool takeFolder(int folder, const char* name);

private:
    void putAway(const std::string& path);
    bool keep(const std::string& path, std::vector<std::string>& spare);
    bool take(std::vector<std::string>& spare, int folder, const char* name) const;

    std::string _path;
    std::vector<std::string> _files;
    std::vector<std::string> _folders;
    unsigned _nextName = 0;
};

}
