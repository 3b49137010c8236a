#pragma once

#include "catalogue/BookInfo.hpp"
#include "catalogue/LibraryFolders.hpp"
#include "epub/CoverPicture.hpp"
#include "files/SpareFiles.hpp"

#include <optional>
#include <string>

namespace pagora {

enum class StopOnErrors : bool { No, Yes };

// What the inspection needs from the library.
class InspectionHub {
public:
    virtual ~InspectionHub() = default;
    virtual const LibraryFolders& folders() const = 0;
    // Takes one line on why a file was rejected. Any thread.
    virtual void addFaultyBook(const std::string& line) = 0;
    // Keeps the record being filled, and the folder that its book will be unpacked into.
    virtual void set_bookInfo(BookInfoPtr book) = 0;
    virtual void set_epubPath(const std::string& path) = 0;
};

// Turns an archive into a book record, or rejects it with one line. Works in the library's one scratch folder, so only
// one inspection may run at a time; any thread.
class EpubInspection {
public:
    explicit EpubInspection(InspectionHub& hub)
        : _mainController(hub)
    {
    }

    // The new record; null when the archive was rejected. With `StopOnErrors::No` the first problems are all reported
    // and the inspection goes on where it can.
    // `prefetchedCover` may hold the archive's cover, scaled already.
    BookInfoPtr getBookInfo(
        const std::string& archivePath, StopOnErrors stopOnErrors, const ScaledCover* prefetchedCover = nullptr);
    // The same for an archive that is open already; none is a file that cannot be read.
    BookInfoPtr getBookInfo(const std::string& archivePath, FileDescriptor archive, StopOnErrors stopOnErrors,
        const ScaledCover* prefetchedCover);

    // Empties the scratch folder and keeps its files for reuse.
    void emptyScratch();
    // Where they are kept, beside the scratch folder.
    static std::string spareFolderOf(const LibraryFolders& folders);

private:
    InspectionHub& _mainController;
    std::optional<SpareFiles> _spare;
};

}
