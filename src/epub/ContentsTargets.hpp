#pragma once

#include "platform/Archive.hpp"

#include <set>
#include <string>

namespace pagora {

// Where the targets of a table of contents lie in a book. They count from the package document's folder; one that names
// nothing there, but a member of the archive when it counts from the folder of the contents file itself, is that
// member. Any thread.
class ContentsTargets {
public:
    // Folders are paths inside the archive; null is an archive that holds nothing.
    ContentsTargets(const Archive* archive, std::string packageFolder, const std::string& contentsFolder);

    // The path inside the book of a target without escapes. What follows "#" stays on the end.
    std::string path(const std::string& target) const;

private:
    bool isMember(const std::string& path) const;

    std::string _packageFolder;
    std::string _contentsFolder;
    // Empty where both folders are the same. In one Unicode form, for a book may use both.
    std::set<std::string> _members;
};

}
