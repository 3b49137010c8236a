#pragma once

#include "app/LibraryState.hpp"
#include "contents/ContentsPane.hpp"
#include "epub/NavigationDocument.hpp"
#include "running/Task.hpp"

#include <memory>
#include <mutex>
#include <stop_token>
#include <unordered_map>
#include <vector>

namespace pagora {

// Returns the contents for a reader: the entries of a record that have a text. The folder part of each target is
// percent-escaped twice, its last component once. Entries without a target, or with a target that is not a URL, are
// omitted.
std::vector<ContentsEntry> tableOfContentFrom(const Value::Array& content);

// Opens a book: shows its reader window in place of the library, unpacks the archive, and passes position and settings
// to the reader. Main thread only; unpacking runs in the background.
class BookOpening {
public:
    BookOpening(const Platform& platform, LibraryState& state, ReaderHub& readerHub, ScriptResources scripts);
    ~BookOpening();

    // Opens the book and cancels an opening in progress. Ignores null.
    void open(const BookInfoPtr& book);
    // Returns whether the book has an archive to read from.
    static bool hasArchive(const BookInfo& book);
    void tellOfMissingArchive();
    // Cancels an opening in progress.
    void cancel();
    bool isUnderWay() const { return !_opening.done(); }

private:
    Task<void> run(BookInfoPtr book);
    void showReflowableReader(BookInfo& book);
    void showFixedReader(BookInfo& book);
    Task<void> unpack(BookInfoPtr book);
    bool isUnpacked(const BookInfoPtr& book) const;
    Value::Array contentsOf(const BookInfo& book) const;
    void openMarks(const BookInfo& book);
    void showNavigation(const BookInfo& book, bool hasContents);

    Platform _platform;
    LibraryState& _state;
    ReaderHub& _readerHub;
    ScriptResources _scripts;
    struct Unpacked {
        std::weak_ptr<BookInfo> book;
        // The record's contents, with targets found in the folder.
        Value::Array contents;
        // The contents of the navigation document if the record has none, and the pages of the printed edition.
        NavigationLists navigation;
    };
    // The record whose archive is unpacked in each folder. Two books may have the same folder.
    std::unordered_map<std::string, Unpacked> _unpackedInto;
    // Serializes unpacking. Shared with background work that may outlive this object.
    std::shared_ptr<std::mutex> _unpacking = std::make_shared<std::mutex>();
    std::stop_source _stop;
    Task<void> _opening;
};

}
