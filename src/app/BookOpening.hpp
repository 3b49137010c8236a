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

// The contents handed to a reader: the entries of a record that have a text. The folder part of each target is
// percent-escaped twice, its last component once. Entries without a target, or whose target is no URL, are left out.
std::vector<ContentsEntry> tableOfContentFrom(const Value::Array& content);

// Opens a book: shows its reader window in place of the library, unpacks the archive, and passes position and settings
// on. Main thread; unpacking runs in the background.
class BookOpening {
public:
    BookOpening(const Platform& platform, LibraryState& state, ReaderHub& readerHub, ScriptResources scripts);
    ~BookOpening();

    // Opens the book and cancels an opening in progress. Null does nothing.
    void open(const BookInfoPtr& book);
    // Returns whether there is an archive to read the book from.
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
        // Those of the navigation document, where the record has none, and the pages of the printed edition.
        NavigationLists navigation;
    };
    // The record whose archive is unpacked in a folder; two books may share one.
    std::unordered_map<std::string, Unpacked> _unpackedInto;
    // Serialises unpacking; shared with background work that may outlive this.
    std::shared_ptr<std::mutex> _unpacking = std::make_shared<std::mutex>();
    std::stop_source _stop;
    Task<void> _opening;
};

}
