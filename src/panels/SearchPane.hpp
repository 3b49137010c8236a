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
    // The text of the search field, at each change.
    std::function<void(const std::string& text, WholeWords wholeWords)> search;
    // A result, counted from 0.
    std::function<void(std::size_t index)> goToResult;
    std::function<void()> goToNextResult;
    std::function<void()> goToPreviousResult;
    std::function<void()> endSearch;
};

// The results of a search, in the place of the contents. Main thread.
class SearchPane {
public:
    virtual ~SearchPane() = default;
    // Shows the results, or the contents again.
    virtual void setResultsShown(bool isShown) = 0;
    virtual void removeAllResults() = 0;
    // The results that follow are of a chapter of that name.
    virtual void addChapter(const std::string& name) = 0;
    virtual void addResults(const std::vector<FoundText>& results) = 0;
    // How many there are, shown or not, and whether the search is still under way.
    virtual void setCount(std::size_t count, bool isOver) = 0;
    // Marks a result, counted from 0 without the chapters, and scrolls to it; none without a number.
    virtual void selectResult(std::optional<std::size_t> index) = 0;
    virtual void emptyField() = 0;
};

}
