#pragma once

#include "paging/PageArithmetic.hpp"
#include "paging/PageScripts.hpp"
#include "reader/EpubWindow.hpp"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>

namespace pagora {

// The display settings of a book: the user's choices, or the reader's defaults.
struct DisplaySettings {
    std::optional<std::string> currentFont;
    // Multiplier of the text size; 0 if not chosen yet.
    float currentFontSize = 0;
    // Colour theme; 0 if not chosen yet.
    std::int32_t currentColorOption = 0;
    // 1, 2 or 3; 0 if not chosen yet.
    std::int32_t numberOfColumns = 0;
    // Width of one column of text, in points.
    std::int32_t pageWidth = 0;

    // Sets the defaults of options that are not chosen, and shows the settings in the window's controls.
    void show(EpubWindow& window);
    // Computes `pageWidth` for the window's present size.
    void updatePageWidth(EpubWindow& window);
    std::int32_t nextNumberOfColumns() const { return numberOfColumns >= 3 ? 1 : numberOfColumns + 1; }
    // Returns the layout of a chapter in a view of that geometry.
    scripts::Layout layout(const PageGeometry& page) const;

    // Options that are chosen but not shown yet, in order; each function stores its option.
    std::deque<std::function<void()>> pending;
    void adoptPending();
};

}
