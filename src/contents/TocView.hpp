#pragma once

#include "base/Geometry.hpp"

#include <cstdint>
#include <vector>

namespace pagora {

class tocLinkTextField;

// The contents pane on screen: a tall view of links inside a smaller scrolled area. Coordinates are points with the
// origin at the bottom left of the tall view. Draws the links as their fields say. Main thread only.
class TocView {
public:
    virtual ~TocView() = default;
    virtual Rect frame() const = 0;
    virtual void setFrame(const Rect& frame) = 0;
    // Returns the height of the visible area.
    virtual double clipHeight() const = 0;
    virtual void removeAllSubviews() = 0;
    // Adds links, which belong to the contents pane and stay until they are removed.
    virtual void addSubviews(const std::vector<tocLinkTextField*>& links) = 0;
    // Redraws the link with this tag.
    virtual void setNeedsDisplay(std::int64_t tag) = 0;
    // Scrolls the point to the bottom left of the visible area, or as far as possible.
    virtual void scrollToPoint(double x, double y) = 0;
};

}
