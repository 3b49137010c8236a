#pragma once

#include "base/Geometry.hpp"
#include "notebook/MarkActions.hpp"
#include "notebook/MarksPane.hpp"

#include <cstddef>
#include <optional>
#include <string>

namespace pagora {

// The mark in the editor.
struct EditedMark {
    std::size_t number = 0;
    std::string color;
    std::string text;
    std::string note;
    // True if the note gets the keyboard focus.
    bool asksForNote = false;
};

// The parts of a reader window that show marks. Main thread only.
class MarksWindow {
public:
    virtual ~MarksWindow() = default;
    virtual void setMarkActions(MarkActions actions) = 0;
    virtual MarksPane& marksPane() = 0;
    // Shows or hides the ribbon at the corner of the page.
    virtual void setBookmarked(bool isBookmarked) = 0;
    // Opens the editor of a mark. `place` is the mark's first line in pixels of the page, if known.
    virtual void showMark(const EditedMark& mark, const std::optional<Rect>& place) = 0;
    // Shows a line with the button "Undo". An empty text hides it.
    virtual void offerUndo(const std::string& text) = 0;
    // Shows a message of one line.
    virtual void showNotice(const std::string& text) = 0;
    // Puts the text on the clipboard.
    virtual void copyText(const std::string& text) = 0;
};

}
