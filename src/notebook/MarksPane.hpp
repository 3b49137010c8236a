#pragma once

#include "base/Geometry.hpp"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// A row of the list of marks.
struct MarkLine {
    enum class Kind { Heading, Bookmark, Highlight, Note };
    Kind kind = Kind::Heading;
    // The text of a heading, or the marked text.
    std::string text;
    std::string note;
    // The name of the colour in files, such as "yellow".
    std::string color;
    // Separated by commas.
    std::string tags;
    // The number of the mark.
    std::size_t number = 0;
    // The text was not found in the book.
    bool isLost = false;
    // Made by the user: it can be changed and removed.
    bool isMine = true;
    bool operator==(const MarkLine&) const = default;
};

// The list of all marks of a book, shown instead of the contents. Main thread.
class MarksPane {
public:
    virtual ~MarksPane() = default;
    virtual void setLines(std::vector<MarkLine> lines) = 0;
    // Shows why marks are not saved, in one line. Hidden if empty.
    virtual void setProblem(const std::string& text) = 0;
    // Shows the list, or the contents.
    virtual void setShown(bool isShown) = 0;
};

// Actions of the user on marks. Marks are named by their numbers.
struct MarkActions {
    // Adds a bookmark at the shown page, or removes it.
    std::function<void()> toggleBookmark;
    // Highlights the selected text. Colours are named as in files.
    std::function<void(const std::string& color)> highlight;
    std::function<void()> annotate;
    std::function<void(std::size_t mark)> goToMark;
    std::function<void(std::size_t mark)> editMark;
    std::function<void(std::size_t mark, const std::string& color)> setMarkColor;
    std::function<void(std::size_t mark, const std::string& note)> setMarkNote;
    std::function<void(std::size_t mark)> removeMark;
    std::function<void()> undoRemoval;
    // To a file whose extension selects the format, or to the clipboard.
    std::function<void(const std::string& path, const std::vector<std::size_t>& marks)> exportMarks;
    std::function<void(const std::vector<std::size_t>& marks)> copyMarks;
    std::function<void(const std::string& path)> importMarks;
};

// The mark in the editor.
struct EditedMark {
    std::size_t number = 0;
    std::string color;
    std::string text;
    std::string note;
    // Whether the note gets the keyboard focus.
    bool asksForNote = false;
};

// The parts of a reader window that show marks. Main thread.
class MarksWindow {
public:
    virtual ~MarksWindow() = default;
    virtual MarksPane& marksPane() = 0;
    // Shows or hides the ribbon at the corner of the page.
    virtual void setBookmarked(bool isBookmarked) = 0;
    // Opens the editor of a mark. `place` is the mark's first line in pixels of the page, if known.
    virtual void showMark(const EditedMark& mark, const std::optional<Rect>& place) = 0;
    // Shows a line with the button "Undo". Hides it for an empty text.
    virtual void offerUndo(const std::string& text) = 0;
    // Shows a message of one line.
    virtual void showNotice(const std::string& text) = 0;
    // Puts the text on the clipboard.
    virtual void copyText(const std::string& text) = 0;
};

}
