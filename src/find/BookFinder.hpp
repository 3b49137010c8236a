#pragma once

#include "find/TextPattern.hpp"
#include "running/RunLoop.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace pagora {

// A match in a book, with its context in one line.
struct FoundText {
    // The index of the spine document, and places in it as in `ChapterText`.
    std::size_t chapter = 0;
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    std::string before;
    std::string match;
    std::string after;
};

// The results of a search since its last report.
struct SearchProgress {
    // The matches in the order of the book.
    std::vector<FoundText> found;
    // The number of all matches so far, including those not reported.
    std::size_t count = 0;
    bool isOver = false;
};

// The maximum number of reported matches of a search. Further matches are only counted.
inline constexpr std::size_t maxFoundTexts = 10'000;

// Searches the documents of a book in the background, in order. Keeps a cache of their texts of limited size. Main
// thread only.
class BookFinder {
public:
    // `paths` are the spine documents. Files outside `folder`, the unpacked book, are not read.
    BookFinder(RunLoop& runLoop, std::vector<std::string> paths, std::string folder);
    // Cancels a running search.
    ~BookFinder();
    BookFinder(const BookFinder&) = delete;
    BookFinder& operator=(const BookFinder&) = delete;

    using Tell = std::function<void(const SearchProgress& progress)>;
    // Starts a search and cancels the previous one. `tell` is called on the main thread soon after the first match,
    // then at intervals, and once at the end; never after another search has started.
    void find(const std::string& pattern, WholeWords wholeWords, Tell tell);
    void cancel();

private:
    class Texts;

    RunLoop& _runLoop;
    std::shared_ptr<Texts> _texts;
    std::stop_source _stop;
};

}
