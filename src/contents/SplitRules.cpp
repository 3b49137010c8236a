#include "contents/SplitRules.hpp"

namespace pagora {

namespace {
constexpr int contents = 0;
constexpr int page = 1;
}

SplitRules::SplitRules(SplitView& splitView, FollowDivider followDivider, std::function<void()> didLayOut)
    : _mainSplitView(splitView)
    , _followDivider(followDivider)
    , _didLayOut(std::move(didLayOut))
{
    _mainSplitView.setDelegate(this);
}

SplitRules::~SplitRules()
{
    _mainSplitView.setDelegate(nullptr);
}

double SplitRules::halfWidth() const
{
    return (_mainSplitView.frame().width - _mainSplitView.dividerThickness()) * 0.5;
}

double SplitRules::constrainMinCoordinate(double, int) const
{
    return minPaneWidth;
}

double SplitRules::constrainMaxCoordinate(double, int) const
{
    return halfWidth();
}

double SplitRules::constrainSplitPosition(double proposed, int)
{
    if (_followDivider == FollowDivider::Yes)
        _didLayOut();
    return proposed;
}

void SplitRules::resizeSubviewsWithOldSize(const Size& oldSize)
{
    const Rect frame = _mainSplitView.frame();
    const double divider = _mainSplitView.dividerThickness();
    Rect left = _mainSplitView.frameOfSubview(contents);
    if (left.width > halfWidth() && oldSize.width > 0)
        left.width = left.width / oldSize.width * frame.width;
    if (left.width < minPaneWidth + 1)
        left.width = minPaneWidth;
    left.height = frame.height;
    _mainSplitView.setFrameOfSubview(contents, left);

    Rect right = _mainSplitView.frameOfSubview(page);
    if (_mainSplitView.isSubviewHidden(contents)) {
        right.x = 0;
        right.y = 0;
        right.width = frame.width;
    } else {
        right.x = left.width + divider;
        right.width = frame.width - left.width - divider;
    }
    right.height = frame.height;
    _mainSplitView.setFrameOfSubview(page, right);
    _didLayOut();
}

void SplitRules::toggleLeftView()
{
    const double divider = _mainSplitView.dividerThickness();
    Rect right = _mainSplitView.frameOfSubview(page);
    if (_mainSplitView.isSubviewHidden(contents)) {
        const double taken = _mainSplitView.frameOfSubview(contents).width + divider;
        _mainSplitView.setSubviewHidden(contents, false);
        right.x = taken;
        right.width -= taken;
    } else {
        _mainSplitView.setSubviewHidden(contents, true);
        right.x = 0;
        right.width = _mainSplitView.frame().width;
    }
    _mainSplitView.setFrameOfSubview(page, right);
}

}
