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

// The display settings of a book: the user's choices, otherwise the reader's defaults.
struct DisplaySettings {
    std::optional<std::string> currentFont;
    // Multiplier of the text size; 0 is not yet chosen.
    float currentFontSize = 0;
    // Colour theme; 0 is not yet chosen.
    std::int32_t currentColorOption = 0;
    // 1, 2 or 3; 0 is not yet chosen.
    std::int32_t numberOfColumns = 0;
    // Width in points of one text column.
    std::int32_t pageWidth = 0;

    // Sets the defaults where nothing is chosen, and shows the settings in the window's controls.
    void show(EpubWindow& window);
    // For the window's present size.
    void updatePageWidth(EpubWindow& window);
    std::int32_t nextNumberOfColumns() const { return numberOfColumns >= 3 ? 1 : numberOfColumns + 1; }
    // The layout of a chapter in a view of that geometry.
    scripts::Layout layout(const PageGeometry& page) const;

    // Options that are chosen and not yet shown, in order; each is called to take its option up.
    std::deque<std::function<void()>> pending;
    void adoptPending();
};

}
