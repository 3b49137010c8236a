// FixedEpubController: jumps, and the way back from them.

#include "fixed/FixedEpubController.hpp"

#include <algorithm>

namespace pagora {

std::optional<SeenPage> FixedEpubController::seenPage() const
{
    if (_activeSplitIndex >= _bookSplits.size())
        return std::nullopt;
    return SeenPage { _bookSplits[_activeSplitIndex], {} };
}

void FixedEpubController::leavePage()
{
    _isSeeking = false;
    if (const auto page = seenPage())
        _jumps.leave(*page);
    _window.setHistory(_jumps.canGoBack(), _jumps.canGoForward());
}

void FixedEpubController::goInHistory(std::optional<SeenPage> (JumpHistory::*step)(const std::optional<SeenPage>&))
{
    _queue.enqueueAction([this, step]() -> Task<void> {
        _isSeeking = false;
        const auto page = (_jumps.*step)(seenPage());
        _window.setHistory(_jumps.canGoBack(), _jumps.canGoForward());
        const auto found = page ? std::find(_bookSplits.begin(), _bookSplits.end(), page->document) : _bookSplits.end();
        if (found != _bookSplits.end())
            loadPage(static_cast<std::uint64_t>(found - _bookSplits.begin()));
        _state.lastSliderValue = static_cast<float>(_activeSplitIndex + 1);
        co_return;
    });
}

void FixedEpubController::goToPageNumber(std::int64_t number)
{
    const auto index = static_cast<std::uint64_t>(number - 1);
    if (number < 1 || index >= _bookSplits.size())
        return;
    _queue.enqueueAction([this]() -> Task<void> {
        leavePage();
        co_return;
    });
    goToPage(index);
}

}
