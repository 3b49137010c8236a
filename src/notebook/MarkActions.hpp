#pragma once

#include "notebook/MarksPane.hpp"

#include <cstddef>
#include <functional>
#include <string>

namespace pagora {

// Actions of the user on marks. Numbers identify marks. Each action is called from the main loop, after the control's
// event handling.
struct MarkActions {
    // Adds a bookmark at the shown page, or removes it.
    std::function<void()> toggleBookmark;
    // Highlights the selected text. Colours are named as in files.
    std::function<void(const std::string& color)> highlight;
    std::function<void()> annotate;
    std::function<void(std::size_t mark)> goTo;
    std::function<void(std::size_t mark)> edit;
    std::function<void(std::size_t mark, const std::string& color)> setColor;
    std::function<void(std::size_t mark, const std::string& note)> setNote;
    std::function<void(std::size_t mark)> remove;
    std::function<void()> undo;
    // Sets the filter of the list.
    std::function<void(const MarksChoice& choice)> choose;
    // Exports the listed marks to a file whose extension selects the format, or copies them to the clipboard.
    std::function<void(const std::string& path)> exportTo;
    std::function<void()> copy;
    std::function<void(const std::string& path)> importFrom;
};

}
