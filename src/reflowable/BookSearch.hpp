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
    // All arguments must outlive this object.
    BookSearch(EpubController& reader, SearchPane& pane, RunLoop& runLoop);
    ~BookSearch();
    BookSearch(const BookSearch&) = delete;
    BookSearch& operator=(const BookSearch&) = delete;

    // Sets the folder of the unpacked book.
    void setBookFolder(std::string folder) { _folder = std::move(folder); }

    // Searches for the pattern; an empty one shows the contents again.
    void search(const std::string& pattern, WholeWords wholeWords);
    // Shows the page with the result at this index.
    void goTo(std::size_t index);
    // Shows the next result; without a current one, the first at or after the shown page. After the last result comes
    // the first.
    void goToNext() { step(1); }
    void goToPrevious() { step(-1); }
    // Shows the contents again and removes the highlights.
    void end();
    // Returns whether a search is active.
    bool isActive() const { return _isActive; }

private:
    void take(const SearchProgress& progress);
    void addToPane(const std::vector<FoundText>& found);
    void step(int direction);
    void goToFirstFromHere(int direction);
    void takePaintOff();
    // Returns the script that highlights the results of a chapter; empty if there are none.
    std::string paintScript(std::uint64_t chapter) const;
    // Returns the range of results of a chapter: the first index and the end.
    std::pair<std::size_t, std::size_t> resultsOf(std::uint64_t chapter) const;

    EpubController& _reader;
    SearchPane& _pane;
    RunLoop& _runLoop;
    std::string _folder;
    std::unique_ptr<BookFinder> _finder;
    bool _isActive = false;
    // True if the shown results are those of an earlier pattern.
    bool _isStale = false;
    std::vector<FoundText> _found;
    std::optional<std::size_t> _current;
    // The names by spine index.
    std::vector<std::string> _chapterNames;
    std::string _lastChapter;
};

}
