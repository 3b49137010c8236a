#pragma once

#include <cstdint>
#include <string>

namespace pagora::scripts {

// The scripts that lay out and scroll a chapter, exactly as they are evaluated in a page. Sizes are in points.

inline const std::string scrollWidth = "document.body.scrollWidth;";
// The same script without a semicolon. Both forms are used.
inline const std::string scrollWidthExpression = "document.body.scrollWidth";
inline const std::string pageXOffset = "window.pageXOffset";
inline const std::string innerWidth = "window.innerWidth";
inline const std::string scrollToEnd = "window.scrollTo(document.body.scrollWidth, 0);";

std::string scrollTo(std::int64_t offset);
std::string setHash(const std::string& anchor);
std::string offsetTopOf(const std::string& elementId);

// A single column gets an explicit width, several columns get a count.
std::string columns(std::int32_t count, std::int32_t pageWidth);
std::string textFont(const std::string& family);
// Removes the colours of all elements and sets those of the body.
std::string colors(const char* text, const char* background);

struct Layout {
    // Null colours keep the book's own.
    const char* text = nullptr;
    const char* background = nullptr;
    std::string font;
    std::int32_t pageWidth = 0;
    std::int32_t columnHeight = 0;
    std::int32_t imageHeight = 0;
};
// The layout of a loaded chapter, without its columns.
std::string layout(const Layout& layout);

// The layout and columns as a style sheet, for a chapter that is not loaded yet.
std::string styleSheet(const Layout& layout, std::int32_t columns);

// Sets the image widths after a change of the number of columns.
std::string imageWidth(std::int32_t pageWidth);
// Adapts the layout to a new size of the view. Sets the column width only for one column.
std::string relayout(std::int32_t columns, std::int32_t pageWidth, std::int32_t columnHeight, std::int32_t imageHeight);

}
