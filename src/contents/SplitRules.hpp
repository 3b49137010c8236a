#pragma once

#include "contents/SplitView.hpp"

#include <functional>

namespace pagora {

// The rules for the widths of the contents pane and the page, for both readers. The pane is at least `minPaneWidth` and
// at most half of the window. It keeps its width when the window is resized, as far as these limits allow. Main thread
// only.
class SplitRules : public SplitViewDelegate {
public:
    // `didLayOut` is called after each resize, and after the divider moved if `followDivider` is Yes.
    enum class FollowDivider : bool { No, Yes };
    SplitRules(SplitView& splitView, FollowDivider followDivider, std::function<void()> didLayOut);
    ~SplitRules() override;

    // Shows or hides the contents pane.
    void toggleLeftView();

    bool canCollapseSubview(int subview) const override { return false; }
    double constrainMinCoordinate(double proposed, int divider) const override;
    double constrainMaxCoordinate(double proposed, int divider) const override;
    bool shouldHideDividerAtIndex(int divider) const override { return true; }
    double constrainSplitPosition(double proposed, int divider) override;
    void resizeSubviewsWithOldSize(const Size& oldSize) override;

private:
    double halfWidth() const;

    SplitView& _mainSplitView;
    FollowDivider _followDivider;
    std::function<void()> _didLayOut;
};

}
