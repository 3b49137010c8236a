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

// A match in a book, with the words around it in one line.
struct FoundText {
    // The spine document, counted from 0, and the places in it, as `ChapterText` counts them.
    std::size_t chapter = 0;
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    std::string before;
    std::string match;
    std::string after;
};

// What a search has found since it told last.
struct SearchProgress {
    // In the order of the book.
    std::vector<FoundText> found;
    // All matches so far, those that are not told included.
    std::size_t count = 0;
    bool isOver = false;
};

// How many matches of a search are told; the rest is only counted.
inline constexpr std::size_t maxFoundTexts = 10'000;

// Searches the documents of a book in the background, in their order. The texts that were read are kept, up to a bound,
// so that the next search need not read them again. Main thread.
class BookFinder {
public:
    // `paths` are the spine documents in `folder`, the unpacked book; what is not in it is not read.
    BookFinder(RunLoop& runLoop, std::vector<std::string> paths, std::string folder);
    // A search that is under way is given up.
    ~BookFinder();
    BookFinder(const BookFinder&) = delete;
    BookFinder& operator=(const BookFinder&) = delete;

    using Tell = std::function<void(const SearchProgress& progress)>;
    // Gives up the search before. `tell` is called on the main thread, soon after the first match, then from time to
    // time, and once when the search is over; never after another search has begun.
    void find(const std::string& pattern, WholeWords wholeWords, Tell tell);
    void cancel();

private:
    class Texts;

    RunLoop& _runLoop;
    std::shared_ptr<Texts> _texts;
    std::stop_source _stop;
};

}
