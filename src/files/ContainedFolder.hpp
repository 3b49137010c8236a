#pragma once

#include "base/FileDescriptor.hpp"
#include "files/SpareFiles.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace pagora {

// Makes files and folders below one folder and nowhere else: what is there already is never followed when it is a link,
// and a link in a file's place is replaced. Any thread; one thread an object.
class ContainedFolder {
public:
    // Makes the folder at `path`, with those above it, when the first thing is put in. What is made is taken from
    // `spare`, as far as it goes.
    explicit ContainedFolder(std::string path, SpareFiles* spare = nullptr)
        : _path(std::move(path))
        , _spare(spare)
    {
    }

    // The folders one below the other, made where they are missing. False when something else has one of the names.
    bool makeFolders(const std::vector<std::string>& names);
    // A new file in such folders, in place of one of that name; none when it cannot be made. It is to be ended when it
    // is written.
    FileDescriptor makeFile(const std::vector<std::string>& folders, const std::string& name);
    // Takes off what a spare file holds beyond the `size` bytes that were written; false when that fails.
    bool endFile(const FileDescriptor& file, std::uint64_t size) const;
    // The file that was made last does not stay.
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
