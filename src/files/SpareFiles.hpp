#pragma once

#include "base/FileDescriptor.hpp"

#include <string>
#include <vector>

namespace pagora {

// Empties a folder again and again and keeps some of its files and folders in another one, for the next ones that are
// made there: moving a file is quick where making and removing many is not. What is kept is out of the way until it is
// taken, and then it is as good as new. One thread at a time.
class SpareFiles {
public:
    // What is kept lies in the folder at `path`, which is made when there is something to keep. It has to be on the
    // file system of the folders that are emptied.
    explicit SpareFiles(std::string path)
        : _path(std::move(path))
    {
    }
    const std::string& path() const { return _path; }

    // Makes sure that there is an empty folder, with those above it; whatever was there is gone from it.
    void makeEmptyFolder(const std::string& folder);

    // Gives a spare file that name in an open folder where nothing has it, and opens it for writing; its old bytes are
    // still in it. None when there is no such file.
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
