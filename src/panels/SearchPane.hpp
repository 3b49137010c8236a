#pragma once

#include "find/BookFinder.hpp"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Actions of the user in the search field and its results.
struct SearchActions {
    std::function<void(const std::string& text)> searchContent;
    // Called with the text of the search field at each change.
    std::function<void(const std::string& text, WholeWords wholeWords)> search;
    // Called with the index of a result.
    std::function<void(std::size_t index)> goToResult;
    std::function<void()> goToNextResult;
    std::function<void()> goToPreviousResult;
    std::function<void()> endSearch;
};

// The results of a search, shown instead of the contents. Main thread only.
class SearchPane {
public:
    virtual ~SearchPane() = default;
    // Shows the results, or the contents again.
    virtual void setResultsShown(bool isShown) = 0;
    virtual void removeAllResults() = 0;
    // Starts a chapter with that name. Later results belong to it.
    virtual void addChapter(const std::string& name) = 0;
    virtual void addResults(const std::vector<FoundText>& results) = 0;
    // Sets the number of all results, including those that are not shown, and whether the search has ended.
    virtual void setCount(std::size_t count, bool isOver) = 0;
    // Selects the result with that index, which does not count chapters, and scrolls to it. Nullopt selects none.
    virtual void selectResult(std::optional<std::size_t> index) = 0;
    virtual void emptyField() = 0;
};

}
