#pragma once

#include "platform/FileDescriptor.hpp"

#include <string>
#include <vector>

namespace pagora {

// Makes files and folders below one folder and nowhere else: what is there already is never followed when it is a link,
// and a link in a file's place is replaced. Any thread; one thread an object.
class ContainedFolder {
public:
    // Makes the folder at `path`, with those above it, when the first thing is put in.
    explicit ContainedFolder(std::string path)
        : _path(std::move(path))
    {
    }

    // The folders one below the other, made where they are missing. False when something else has one of the names.
    bool makeFolders(const std::vector<std::string>& names);
    // A new empty file in such folders, in place of one of that name; none when it cannot be made.
    FileDescriptor makeFile(const std::vector<std::string>& folders, const std::string& name);
    // The file that was made last does not stay.
    void removeLastFile();

private:
    std::string _path;
    FileDescriptor _root;
    // The folder that was used last, as most members follow others of their folder.
    std::vector<std::string> _folders;
    FileDescriptor _folder;
    std::string _lastFile;
};

}
