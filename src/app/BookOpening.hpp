#pragma once

#include "app/LibraryState.hpp"
#include "contents/ContentsPane.hpp"
#include "running/Task.hpp"

#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <unordered_map>
#include <vector>

namespace pagora {

// The contents handed to a reader: the entries of a record that have a text. The folder part of each target is
// percent-escaped twice, its last component once. Entries without a target, or whose target is no URL, are left out.
std::vector<ContentsEntry> tableOfContentFrom(const Value::Array& content);

// Turns a record into an open book: its reader window in the library window's place, the archive unpacked, the position
// and the settings handed over. Main thread; the unpacking runs in the background.
class BookOpening {
public:
    BookOpening(const Platform& platform, LibraryState& state, ReaderHub& readerHub, ScriptResources scripts);
    ~BookOpening();

    // Opens the book; an opening that is still under way is given up. Null opens nothing and gives up nothing.
    void open(const BookInfoPtr& book);
    // Whether there is an archive to read the book from.
    static bool hasArchive(const BookInfo& book);
    void tellOfMissingArchive();
    // Gives up an opening that is under way.
    void cancel();
    bool isUnderWay() const { return !_opening.done(); }

private:
    Task<void> run(BookInfoPtr book);
    void showReflowableReader(BookInfo& book);
    void showFixedReader(BookInfo& book);
    Task<void> unpack(BookInfoPtr book);
    bool isUnpacked(const BookInfoPtr& book) const;
    Value::Array contentsOf(const BookInfo& book) const;

    Platform _platform;
    LibraryState& _state;
    ReaderHub& _readerHub;
    ScriptResources _scripts;
    struct Unpacked {
        std::weak_ptr<BookInfo> book;
        // The record's contents, with targets found in the folder.
        Value::Array contents;
    };
    // Which record's archive lies unpacked in a folder; two books may share one.
    std::unordered_map<std::string, Unpacked> _unpackedInto;
    // One unpacking at a time; shared with those that still run in the background.
    std::shared_ptr<std::mutex> _unpacking = std::make_shared<std::mutex>();
    std::stop_source _stop;
    Task<void> _opening;
};

}
