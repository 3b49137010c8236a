#pragma once

#include "base/FileDescriptor.hpp"
#include "files/SpareFiles.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace pagora {

// Creates files and folders below one folder and nowhere else. Existing links are never followed; a link in the place
// of a file is replaced. Any thread; one thread per object.
class ContainedFolder {
public:
    // Creates the folder at `path`, and those above it, with the first file. Files and folders are taken from `spare`
    // while it has some.
    explicit ContainedFolder(std::string path, SpareFiles* spare = nullptr)
        : _path(std::move(path))
        , _spare(spare)
    {
    }

    // The folders one below the other, made where they are missing. False when something else has one of the names.
    bool makeFolders(const std::vector<std::string>& names);
    // Creates a file in such folders and replaces one of that name; none on failure. Call `endFile` when it is written.
    FileDescriptor makeFile(const std::vector<std::string>& folders, const std::string& name);
    // Truncates the file to the `size` bytes that were written, since a spare file may be longer. False on failure.
    bool endFile(const FileDescriptor& file, std::uint64_t size) const;
    // Removes the file that was created last.
    void removeLastFile();

private:
    std::string _path;
    SpareFiles* _spare;
    FileDescriptor _root;
    // The folder that was used last, as most members follow others of their folder.
    std::vector<std::string> _folders;
    FileDescriptor _folder;
    std::string _lastFile;
};

}
