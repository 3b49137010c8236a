// EpubController: the display options, and the layout for a new size of the view.

#include "base/Numbers.hpp"
#include "paging/ColorThemes.hpp"
#include "paging/PageScripts.hpp"
#include "reflowable/EpubController.hpp"

namespace pagora {

const char* EpubController::getCSSColorFor(std::int32_t theme) const
{
    return cssColorForTheme(theme == 0 ? _settings.currentColorOption : theme);
}

const char* EpubController::getCSSBackgroundColorFor(std::int32_t theme) const
{
    return cssBackgroundColorForTheme(theme == 0 ? _settings.currentColorOption : theme);
}

Color EpubController::getBackgroundColorFor(std::int32_t theme) const
{
    return backgroundColorForTheme(theme == 0 ? _settings.currentColorOption : theme);
}

void EpubController::enqueueOption(std::function<void()> adopt, SerialQueue::Work show)
{
    _settings.pending.push_back(std::move(adopt));
    _queue.enqueueAction([this, show = std::move(show)]() -> Task<void> {
        _settings.pending.pop_front();
        _layoutMayDiffer = true;
        _window.webView().prepareForUserAction();
        co_await show();
    });
}

void EpubController::changeColor()
{
    auto& control = _window.colorControl();
    const auto theme = control.tag(control.selectedSegment());
    const auto show = [this, theme]() -> Task<void> {
        if (theme == _settings.currentColorOption)
            co_return;
        _window.bgView().setFillColor(getBackgroundColorFor(theme));
        _settings.currentColorOption = theme;
        if (theme == 1) {
            _state.restorePositionPending = true;
            // The places of page turns queued before this are not noted yet.
            co_await notePlace();
            _place.keepLast();
            _lastAnchor = std::nullopt;
            loadSplit(_spine.activeSplitIndex);
        } else
            co_await run(scripts::colors(getCSSColorFor(theme), getCSSBackgroundColorFor(theme)));
    };
    enqueueOption([this, theme] { _settings.currentColorOption = theme; }, show);
}

void EpubController::fontChange()
{
    const auto family = _window.fontMenu().titleOfSelectedItem();
    const auto show = [this, family]() -> Task<void> {
        if (family == _settings.currentFont)
            co_return;
        _settings.currentFont = family;
        co_await run(scripts::textFont(family));
    };
    enqueueOption([this, family] { _settings.currentFont = family; }, show);
}

void EpubController::changeFontSize(float multiplier)
{
    const auto show = [this, multiplier] { return applyFontSize(multiplier); };
    enqueueOption([this, multiplier] { _settings.currentFontSize = multiplier; }, show);
}

Task<void> EpubController::applyFontSize(float multiplier)
{
    if (multiplier == _settings.currentFontSize)
        co_return;
    _settings.currentFontSize = multiplier;
    const std::int64_t before = co_await integer(scripts::scrollWidthExpression);
    const auto page = geometry();
    const auto B = page.seekDivisor();
    _window.webView().setTextSizeMultiplier(multiplier);
    const double f = static_cast<float>(_position.capacity) / ((before / page.W) * B);
    if (f > 0 && B != 0) {
        const std::int64_t after = co_await integer(scripts::scrollWidthExpression);
        const double V = B * (after / page.W);
        _position.set(wrapped(f * V), page, after, B);
        const auto index = PageGeometry::pageIndex(_position.capacity, B);
        const auto offset = page.offset32OfPage(index);
        co_await run(scripts::scrollTo(offset));
        co_await updateLocationWithOffset(offset);
    }
}

void EpubController::changeWidth()
{
    const auto show = [this] { return applyColumns(); };
    enqueueOption([this] { _settings.numberOfColumns = _settings.nextNumberOfColumns(); }, show);
}

Task<void> EpubController::applyColumns()
{
    _settings.numberOfColumns = _settings.nextNumberOfColumns();
    _settings.updatePageWidth(_window);
    _window.setColumnCount(_settings.numberOfColumns);
    co_await run(scripts::columns(_settings.numberOfColumns, _settings.pageWidth));
    co_await run(scripts::imageWidth(_settings.pageWidth));
}

void EpubController::didResize()
{
    updateColumns();
}

void EpubController::updateColumns()
{
    // A single layout covers all earlier size changes.
    if (_window.webView().isHidden() || _spine.bookSplits.empty() || _relayoutPending)
        return;
    _relayoutPending = true;
    _queue.enqueueReport([this] { return applyRelayout(); });
}

Task<void> EpubController::applyRelayout()
{
    _relayoutPending = false;
    _layoutMayDiffer = true;
    _settings.updatePageWidth(_window);
    const auto page = geometry();
    co_await run(scripts::relayout(_settings.numberOfColumns, page.pageWidth, page.columnHeight(), page.imageHeight()));
    if (_position.capacity != 0 && page.pageArea() != 0) {
        const auto offset = page.offsetOfPage(PageGeometry::pageIndex(_position.capacity, page.pageArea()));
        co_await run(scripts::scrollTo(offset));
        co_await updateLocationWithOffset(offset);
    }
    co_await keepPlace();
}

}
