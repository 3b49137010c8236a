#pragma once

#include "catalogue/BookInfo.hpp"
#include "catalogue/LibraryFolders.hpp"
#include "epub/CoverPicture.hpp"
#include "files/SpareFiles.hpp"

#include <optional>
#include <string>

namespace pagora {

enum class StopOnErrors : bool { No, Yes };

// The library's operations that the inspection uses.
class InspectionHub {
public:
    virtual ~InspectionHub() = default;
    virtual const LibraryFolders& folders() const = 0;
    // Takes one line that says why a file was rejected. Thread-safe.
    virtual void addFaultyBook(const std::string& line) = 0;
    // Takes the record that is being filled, and the folder into which its book will be unpacked.
    virtual void set_bookInfo(BookInfoPtr book) = 0;
    virtual void set_epubPath(const std::string& path) = 0;
};

// Turns an archive into a book record, or rejects it with one line. Works in the library's only scratch folder, so only
// one inspection may run at a time, on any thread.
class EpubInspection {
public:
    explicit EpubInspection(InspectionHub& hub)
        : _mainController(hub)
    {
    }

    // Returns the new record; null if the archive was rejected. With `StopOnErrors::No`, all of the first problems are
    // reported and the inspection continues if possible. `prefetchedCover` may be the archive's cover, already scaled.
    BookInfoPtr getBookInfo(
        const std::string& archivePath, StopOnErrors stopOnErrors, const ScaledCover* prefetchedCover = nullptr);
    // Inspects an archive that is already open. An invalid descriptor is treated as an unreadable file.
    BookInfoPtr getBookInfo(const std::string& archivePath, FileDescriptor archive, StopOnErrors stopOnErrors,
        const ScaledCover* prefetchedCover);

    // Empties the scratch folder and keeps its files for reuse.
    void emptyScratch();
    // Returns the folder of the kept files, which is beside the scratch folder.
    static std::string spareFolderOf(const LibraryFolders& folders);

private:
    InspectionHub& _mainController;
    std::optional<SpareFiles> _spare;
};

}
