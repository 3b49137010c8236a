#pragma once

#include "marks/AnnotationSet.hpp"

#include <string>
#include <vector>

namespace pagora {

// One change of a book's marks: a mark that is new or has changed, or one that goes.
struct MarkChange {
    Mark mark;
    bool isRemoved = false;
};

// What a file of marks holds, after it was read or written.
struct MarksOnDisk {
    std::vector<Mark> marks;
    // Why something is not as it was asked for, in one line; empty otherwise.
    std::string problem;
    // Whether the changes are in the file, and on the disk.
    bool isSaved = false;
};

// The file of a book's marks, beside its archive: the archive's name with the extension "annotation". Several programs
// may change it: each change is made in what the file holds then. Reads and writes the disk; any thread, one at a time.
class MarksFile {
public:
    MarksFile(const std::string& archive, MarkedBook book);

    const std::string& path() const { return _path; }

    // The marks. Where the book has no file of its own, those of another file in the folder whose book has the same
    // identifier. A damaged file is set aside under another name.
    MarksOnDisk read() const;
    // Makes the changes: a mark that was changed later in the file stays. The file is written beside, flushed and
    // renamed.
    MarksOnDisk write(const std::vector<MarkChange>& changes) const;

private:
    struct Found {
        AnnotationSet set;
        std::string problem;
        bool canBeWritten = true;
    };
    Found find() const;
    AnnotationSet ofSameBook() const;
    Found setAside() const;

    std::string _path;
    MarkedBook _book;
};

// The largest file of marks that is read.
inline constexpr std::size_t maxMarksFileBytes = 128u << 20;

// Adds the marks of a set that the other one does not have, and takes those that were changed later.
void mergeInto(AnnotationSet& set, AnnotationSet added);

}
