#pragma once

#include "marks/AnnotationSet.hpp"

#include <string>
#include <vector>

namespace pagora {

// One change of a book's marks: a new, changed or removed mark.
struct MarkChange {
    Mark mark;
    bool isRemoved = false;
};

// The content of a file of marks after reading or writing.
struct MarksOnDisk {
    std::vector<Mark> marks;
    // The reason of a failure, in one line; otherwise empty.
    std::string problem;
    // True if the changes are in the file and flushed to the disk.
    bool isSaved = false;
};

// The file of a book's marks, beside its archive: the archive's name with the extension "annotation". Other programs
// may change it, so each change is applied to the current content. Reads and writes the disk. Use each object on one
// thread at a time.
class MarksFile {
public:
    MarksFile(const std::string& archive, MarkedBook book);

    const std::string& path() const { return _path; }

    // Reads the marks. If the book has no file, reads another file in the folder whose book has the same identifier. A
    // damaged file is renamed.
    MarksOnDisk read() const;
    // Applies the changes. A mark that was changed later in the file is kept. The new file is written beside the old
    // one, flushed and renamed.
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

// The maximum size of a file of marks.
inline constexpr std::size_t maxMarksFileBytes = 128u << 20;

// Merges the marks of `added` into `set`. If marks have the same identifier, the one that was changed last is kept.
void mergeInto(AnnotationSet& set, AnnotationSet added);

}
