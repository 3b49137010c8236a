#pragma once

#include "base/FileDescriptor.hpp"

#include <string>
#include <vector>

namespace pagora {

// Empties folders repeatedly and keeps some of their files and folders elsewhere for reuse, because renaming a file is
// faster than creating and removing it. Use each object on one thread at a time.
class SpareFiles {
public:
    // The folder for kept files. It is created when needed and must be on the same file system as the folders that are
    // emptied.
    explicit SpareFiles(std::string path)
        : _path(std::move(path))
    {
    }
    const std::string& path() const { return _path; }

    // Creates the folder and its parents, and empties it.
    void makeEmptyFolder(const std::string& folder);

    // Moves a spare file into an open folder under `name`, which must be unused, and opens it for writing. The file
    // still has its old content. Returns an invalid descriptor if there is no spare file.
    FileDescriptor takeFile(int folder, const char* name);
    // Does the same for an empty folder.
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
