#pragma once

#include "base/Url.hpp"
#include "marks/MarkAnchor.hpp"
#include "page/WebView.hpp"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace pagora {

// What a reader tells of its pages to those who set marks in them.
struct MarksHooks {
    // What paints the marks of a spine document once it is laid out.
    std::function<std::string(std::uint64_t split)> script;
    // Another page may be seen.
    std::function<void()> pageIsSeen;
    std::function<void(const PressedMark& mark)> isPressed;
};

// A reader in whose pages marks are set. Main thread.
class MarkedReader {
public:
    virtual ~MarkedReader() = default;
    // The spine documents, the one that is shown, and the names of their chapters.
    virtual const std::vector<Url>& bookSplits() const = 0;
    virtual std::uint64_t activeSplitIndex() const = 0;
    virtual std::vector<std::string> chapterNames() = 0;
    virtual void setMarks(MarksHooks marks) = 0;
    // Runs what paints the chapter that is shown.
    virtual void runChapterScript() = 0;
    // Asks the chapter that is shown for a number or a text, once nothing else is under way. The answer may be left
    // out.
    virtual void ask(std::string script, std::function<void(std::int64_t)> answer) = 0;
    virtual void askText(std::string script, std::function<void(const std::string&)> answer) = 0;
    // Shows the page of a mark, and remembers the one that is left.
    virtual void goToMark(const MarkAnchor& anchor) = 0;
};

}
