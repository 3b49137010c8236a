// EpubController: page turns, the location slider, the location display and the place to keep.

#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "paging/PageScripts.hpp"
#include "reflowable/EpubController.hpp"

#include <cmath>
#include <utility>

namespace pagora {

namespace {
enum Tag : int { Previous = 0, Next = 1 };
}

void EpubController::changePage(int tag)
{
    _queue.enqueueAction([this, tag] { return turn(tag); });
}

void EpubController::changePage(float sliderValue, EventType currentEvent)
{
    _queue.enqueueAction([this, sliderValue, currentEvent] { return seek(sliderValue, currentEvent); });
}

void EpubController::scrollWheelBegan(double deltaX)
{
    if (deltaX != 0)
        changePage(deltaX > 0 ? Previous : Next);
}

Task<void> EpubController::turn(int tag)
{
    if (tag == Previous)
        co_await turnBack();
    else
        co_await turnOn();
}

Task<void> EpubController::turnOn()
{
    const std::int64_t X = co_await integer(scripts::pageXOffset);
    const std::int64_t S = co_await integer(scripts::scrollWidth);
    const auto page = geometry();
    if (_spine.lastIsActive() && X + page.W >= S)
        co_return;
    userMoves();
    _state.openAtChapterEnd = false;
    const auto N = truncated(X + page.W);
    if (N < S) {
        co_await adoptOffset(N, S);
    } else if (const auto next = _spine.next(Spine::Direction::On)) {
        _position.readAmount = 0;
        _lastAnchor = std::nullopt;
        loadSplit(*next);
    } else
        log("End of content");
}

Task<void> EpubController::turnBack()
{
    const std::int64_t X = co_await integer(scripts::pageXOffset);
    const std::int64_t S = co_await integer(scripts::scrollWidth);
    const auto page = geometry();
    if (_spine.activeSplitIndex == 0 && X == 0)
        co_return;
    userMoves();
    _state.openAtChapterEnd = false;
    if (X != 0) {
        co_await adoptOffset(page.adjustOffset(truncated(X - page.W)), S);
    } else if (const auto previous = _spine.next(Spine::Direction::Back)) {
        _state.openAtChapterEnd = true;
        _lastAnchor = std::nullopt;
        loadSplit(*previous);
    } else
        log("Start of content");
}

// Scrolls to the offset and stores it as the position.
Task<void> EpubController::adoptOffset(std::int64_t offset, std::int64_t S)
{
    const auto page = geometry();
    co_await run(scripts::scrollTo(offset));
    _position.setOffset(offset, page, S);
    co_await updateLocationWithOffset(offset);
    seePage(offset, S);
}

void EpubController::goToFirstPage()
{
    _queue.enqueueAction([this]() -> Task<void> {
        userMoves();
        _state.openAtChapterEnd = false;
        const std::int64_t S = co_await integer(scripts::scrollWidth);
        co_await adoptOffset(0, S);
    });
}

void EpubController::goToLastPage()
{
    _queue.enqueueAction([this]() -> Task<void> {
        userMoves();
        const std::int64_t S = co_await integer(scripts::scrollWidth);
        const auto page = geometry();
        co_await run(scripts::scrollToEnd);
        const auto offset = truncated(S - page.W);
        _position.setOffset(offset, page, S);
        co_await updateLocationWithOffset(offset);
    });
}

Task<void> EpubController::seek(float value, EventType event)
{
    if (value == _state.lastSliderValue)
        co_return;
    // All moves of the slider are one jump.
    if (!_jumps.isSeeking)
        leavePage();
    userMoves();
    _jumps.isSeeking = true;
    _state.openAtChapterEnd = false;
    _dragging = event == EventType::LeftMouseDown || event == EventType::LeftMouseDragged;
    if (_location.slider().maxValue() > value) {
        _state.pendingChapterFraction = value - std::trunc(value);
        const auto target = clampedUnsigned(value);
        if (target != _spine.activeSplitIndex) {
            activateSplit(target);
            _lastAnchor = std::nullopt;
            loadSplit(target);
        } else
            co_await scrollToAmount();
        _state.lastSliderValue = value;
    } else {
        co_await run(scripts::scrollToEnd);
        _location.setPercentage(100);
    }
}

Task<void> EpubController::scrollToAmount()
{
    const float f = _state.pendingChapterFraction;
    if (f == 0)
        co_return;
    const auto page = geometry();
    const auto B = page.seekDivisor();
    const std::int64_t S = co_await integer(scripts::scrollWidthExpression);
    if (B != 0) {
        const double V = B * (S / page.W);
        _position.set(wrapped(f * V), page, S, B);
        const auto index = PageGeometry::pageIndex(_position.capacity, B);
        co_await run(scripts::scrollTo(page.offset32OfPage(index)));
        showPercentage(_location.slider().floatValue() / _location.slider().maxValue());
    }
    _state.pendingChapterFraction = 0;
}

void EpubController::showPercentage(double fractionOfBook)
{
    _location.setPercentage(truncated32(fractionOfBook * 100));
}

Task<void> EpubController::updateLocationWithOffset(std::int64_t offset)
{
    const std::int64_t S = co_await integer(scripts::scrollWidthExpression);
    float p = static_cast<float>(_spine.activeSplitIndex) + static_cast<float>(offset) / static_cast<float>(S);
    // If the scroll width is 0, the display stays unchanged.
    if (!std::isfinite(p))
        co_return;
    auto& slider = _location.slider();
    if (_spine.lastIsActive()) {
        const std::int64_t w = co_await integer(scripts::innerWidth);
        if (w + offset >= S)
            p = static_cast<float>(slider.maxValue());
    }
    slider.setFloatValue(p);
    showPercentage(p / slider.maxValue());
}

Task<void> EpubController::keepPlace()
{
    if (_jumps.landing)
        co_return co_await land();
    if (!_place.toKeep())
        co_return;
    const std::int64_t S = co_await integer(scripts::scrollWidthExpression);
    const std::int64_t X = co_await integer(scripts::pageXOffset);
    const auto page = geometry();
    if (!_place.toKeep() || S <= 0 || page.W <= 0 || page.columns < 1)
        co_return;
    const auto offset = page.offsetAround(*_place.toKeep(), S);
    if (offset != X)
        co_await run(scripts::scrollTo(offset));
}

Task<void> EpubController::notePlace()
{
    // While a chapter is loading, the shown page is not at the position.
    if (!_pageIsShown || _queue.actionsAreHeld())
        co_return;
    const std::int64_t S = co_await integer(scripts::scrollWidthExpression);
    const std::int64_t X = co_await integer(scripts::pageXOffset);
    const auto W = _window.webView().frame().width;
    if (S <= 0 || W <= 0 || _spine.bookSplits.empty() || _queue.actionsAreHeld())
        co_return;
    _place.note(static_cast<double>(X), W, static_cast<double>(S));
    seePage(X, S);
    const auto count = static_cast<std::int64_t>(std::ceil(S / W));
    const auto page = static_cast<std::int64_t>(std::lround(X / W)) + 1;
    _window.setPageOfChapter(std::min(page, count), count);
    if (std::exchange(_layoutMayDiffer, false) && _marks.layoutScript) {
        const auto marks = _marks.layoutScript(_spine.activeSplitIndex);
        if (!marks.empty())
            co_await run(marks);
    }
    _window.webView().pageRests();
}

}
