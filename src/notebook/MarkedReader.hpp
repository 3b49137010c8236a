#pragma once

#include "base/Url.hpp"
#include "marks/MarkAnchor.hpp"
#include "page/WebView.hpp"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace pagora {

// Callbacks of a reader about its pages.
struct MarksHooks {
    // Returns the script that paints the marks of a spine document. It is run when the document is laid out.
    std::function<std::string(std::uint64_t split)> script;
    // Returns the script to run after a new layout of the document; empty if nothing is painted in it.
    std::function<std::string(std::uint64_t split)> layoutScript;
    // Called when another page may be shown.
    std::function<void()> pageIsSeen;
    std::function<void(const PressedMark& mark)> isPressed;
};

// A reader that shows marks in its pages. Main thread only.
class MarkedReader {
public:
    virtual ~MarkedReader() = default;
    // The spine documents, the index of the shown one, and the names of their chapters.
    virtual const std::vector<Url>& bookSplits() const = 0;
    virtual std::uint64_t activeSplitIndex() const = 0;
    virtual std::vector<std::string> chapterNames() = 0;
    virtual void setMarks(MarksHooks marks) = 0;
    // Runs the script of the shown chapter.
    virtual void runChapterScript() = 0;
    // Evaluates a script in the shown chapter after all pending operations. `answer` gets its result and may be empty.
    virtual void ask(std::string script, std::function<void(std::int64_t)> answer) = 0;
    virtual void askText(std::string script, std::function<void(const std::string&)> answer) = 0;
    // Shows the page of a mark and adds the current place to the history.
    virtual void goToMark(const MarkAnchor& anchor) = 0;
};

}
