#pragma once

#include "find/BookFinder.hpp"
#include "panels/SearchPane.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

class EpubController;
class RunLoop;

// The search in the open book. Searches all chapters for the typed text, lists the results by chapter and highlights
// those of the shown chapter. Main thread only.
class BookSearch {
public:
    // All of them outlive it.
    BookSearch(EpubController& reader, SearchPane& pane, RunLoop& runLoop);
    ~BookSearch();
    BookSearch(const BookSearch&) = delete;
    BookSearch& operator=(const BookSearch&) = delete;

    // The folder of the unpacked book.
    void setBookFolder(std::string folder) { _folder = std::move(folder); }

    // An empty pattern shows the contents again.
    void search(const std::string& pattern, WholeWords wholeWords);
    // Shows the page with that result, counted from 0.
    void goTo(std::size_t index);
    // Shows the next result, the first one from the page that is shown on when none was shown; after the last comes the
    // first.
    void goToNext() { step(1); }
    void goToPrevious() { step(-1); }
    // Shows the contents again and removes the highlights.
    void end();
    // Returns whether something is searched for.
    bool isActive() const { return _isActive; }

private:
    void take(const SearchProgress& progress);
    void addToPane(const std::vector<FoundText>& found);
    void step(int direction);
    void goToFirstFromHere(int direction);
    void takePaintOff();
    // The script that highlights the results of a chapter; empty if there are none.
    std::string paintScript(std::uint64_t chapter) const;
    // The results of a chapter: the first, and the one after the last.
    std::pair<std::size_t, std::size_t> resultsOf(std::uint64_t chapter) const;

    EpubController& _reader;
    SearchPane& _pane;
    RunLoop& _runLoop;
    std::string _folder;
    std::unique_ptr<BookFinder> _finder;
    bool _isActive = false;
    // The results shown are those of an earlier pattern.
    bool _isStale = false;
    std::vector<FoundText> _found;
    std::optional<std::size_t> _current;
    // By spine document.
    std::vector<std::string> _chapterNames;
    std::string _lastChapter;
};

}
