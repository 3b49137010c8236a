#pragma once

#include "base/Geometry.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// A line of the list of marks.
struct MarkLine {
    enum class Kind { Heading, Bookmark, Highlight, Note };
    Kind kind = Kind::Heading;
    // Of a heading, its text; of a mark, what it marks.
    std::string text;
    std::string note;
    // The name of its colour in files, such as "yellow".
    std::string color;
    // In one text.
    std::string tags;
    // Of a mark, its number.
    std::size_t number = 0;
    // The book does not have its text any more.
    bool isLost = false;
    // It can be changed and removed.
    bool isMine = true;
    bool operator==(const MarkLine&) const = default;
};

// The list of all marks of a book, in the place of the contents. Main thread.
class MarksPane {
public:
    virtual ~MarksPane() = default;
    virtual void setLines(std::vector<MarkLine> lines) = 0;
    // Why marks are not saved, in one line; nothing is shown for an empty text.
    virtual void setProblem(const std::string& text) = 0;
    // Shows the list, or the contents again.
    virtual void setShown(bool isShown) = 0;
};

// A mark that is edited.
struct EditedMark {
    std::size_t number = 0;
    std::string color;
    std::string text;
    std::string note;
    // The keyboard goes to the note.
    bool asksForNote = false;
};

// What a window shows of marks. Main thread.
class MarksWindow {
public:
    virtual ~MarksWindow() = default;
    virtual MarksPane& marksPane() = 0;
    // Shows a ribbon at the corner of the page, or none.
    virtual void setBookmarked(bool isBookmarked) = 0;
    // Shows what can be done with a mark, beside its first line on the page, in the page's own pixels, where that is
    // known.
    virtual void showMark(const EditedMark& mark, const std::optional<Rect>& place) = 0;
    // Says that something was removed, with a way to bring it back; an empty text ends it.
    virtual void offerUndo(const std::string& text) = 0;
    // Says what was done, or why nothing happens, in one line.
    virtual void showNotice(const std::string& text) = 0;
    // Puts the text on the clipboard.
    virtual void copyText(const std::string& text) = 0;
};

}
