#pragma once

#include "base/Geometry.hpp"

namespace pagora {

// The minimum width of the contents and of the page, in points.
inline constexpr int minPaneWidth = 200;

// Two panes side by side: contents (subview 0) and page (subview 1), with a divider that the user drags. The delegate
// limits the divider and divides a new size among the panes. Coordinates are points with the origin at the bottom left.
// Main thread only.
class SplitViewDelegate {
public:
    virtual ~SplitViewDelegate() = default;
    virtual bool canCollapseSubview(int subview) const = 0;
    virtual double constrainMinCoordinate(double proposed, int divider) const = 0;
    virtual double constrainMaxCoordinate(double proposed, int divider) const = 0;
    virtual bool shouldHideDividerAtIndex(int divider) const = 0;
    // Returns the position of the divider for a drag to `proposed`.
    virtual double constrainSplitPosition(double proposed, int divider) = 0;
    // Lays out the panes in the split view's present frame.
    virtual void resizeSubviewsWithOldSize(const Size& oldSize) = 0;
};

class SplitView {
public:
    virtual ~SplitView() = default;
    virtual void setDelegate(SplitViewDelegate* delegate) = 0;
    virtual Rect frame() const = 0;
    virtual double dividerThickness() const = 0;
    virtual Rect frameOfSubview(int subview) const = 0;
    virtual void setFrameOfSubview(int subview, const Rect& frame) = 0;
    virtual bool isSubviewHidden(int subview) const = 0;
    virtual void setSubviewHidden(int subview, bool hidden) = 0;
};

}
