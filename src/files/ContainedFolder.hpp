#pragma once

#include "base/FileDescriptor.hpp"
#include "files/SpareFiles.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace pagora {

// Creates files and folders below one folder and nowhere else. Existing links are never followed; a link in the place
// of a file is replaced. Use each object on one thread at a time.
class ContainedFolder {
public:
    // Creates the folder at `path` and its parents with the first file. Reuses files and folders from `spare` while it
    // has any.
    explicit ContainedFolder(std::string path, SpareFiles* spare = nullptr)
        : _path(std::move(path))
        , _spare(spare)
    {
    }

    // Creates the missing folders of a path given as its components. Returns false if something other than a folder has
    // one of the names.
    bool makeFolders(const std::vector<std::string>& names);
    // Creates a file in the folders that `folders` names, and replaces a file of the same name. Returns an invalid
    // descriptor on failure. Call `endFile` when the file is written.
    FileDescriptor makeFile(const std::vector<std::string>& folders, const std::string& name);
    // Truncates the file to the `size` bytes that were written, since a spare file may be longer. Returns false on
    // failure.
    bool endFile(const FileDescriptor& file, std::uint64_t size) const;
    // Removes the last file that was created.
    void removeLastFile();

private:
    std::string _path;
    SpareFiles* _spare;
    FileDescriptor _root;
    // The last folder used. Most members are in the same folder as the member before them.
    std::vector<std::string> _folders;
    FileDescriptor _folder;
    std::string _lastFile;
};

}
