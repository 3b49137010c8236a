#include "reflowable/EpubController.hpp"

#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "base/Path.hpp"

#include <utility>

namespace pagora {

namespace {

// Time for which the user's next action waits for the report of a chapter, in seconds.
constexpr double loadTimeout = 10;

}

EpubController::EpubController(EpubWindow& window, ReaderHub& hub, ReaderState& state, RunLoop& runLoop)
    : _window(window)
    , _mainController(hub)
    , _state(state)
    , _runLoop(runLoop)
    , _location(window.locLabel(), window.locSlider())
    , _contentsPane(window.tocView(), *this)
    , _splitRules(window.mainSplitView(), SplitRules::FollowDivider::Yes, [this] { updateColumns(); })
{
    _window.webView().setDelegate(this);
    _window.locSlider().setAction([this](EventType event) { changePage(_window.locSlider().floatValue(), event); });
    _window.goLeftButton().setAction([this] { changePage(0); });
    _window.goRightButton().setAction([this] { changePage(1); });
    _window.colorControl().setAction([this] { changeColor(); });
    _window.fontMenu().setAction([this] { fontChange(); });
    _window.fontSizeSlider().setAction([this](EventType) { changeFontSize(_window.fontSizeSlider().floatValue()); });
    _queue.setWhenDrained([this] { return notePlace(); });
}

EpubController::~EpubController()
{
    // The window may outlive this object while it leaves full screen.
    _window.webView().setDelegate(nullptr);
    _window.locSlider().setAction(nullptr);
    _window.goLeftButton().setAction(nullptr);
    _window.goRightButton().setAction(nullptr);
    _window.colorControl().setAction(nullptr);
    _window.fontMenu().setAction(nullptr);
    _window.fontSizeSlider().setAction(nullptr);
}

PageGeometry EpubController::geometry() const
{
    const Rect frame = _window.webView().frame();
    return { frame.width, frame.height, _settings.numberOfColumns, _settings.pageWidth };
}

void EpubController::loadSplits(
    std::vector<Url> splits, const std::optional<std::vector<ContentsEntry>>& tableOfContent)
{
    _contentsPane.removeAllLinks();
    if (tableOfContent)
        _contentsPane.loadTOC(*tableOfContent);

    // True for NaN as well.
    _state.restorePositionPending = _position.readAmount != 0;
    if (!_spine.bookSplits.empty())
        _spine.activeSplitIndex = 0;
    _settings.show(_window);
    _spine.setDocuments(std::move(splits));
    _leavingLinks.clear();
    _jumps = {};
    historyDidChange();
    _window.setLoading(false);
    _window.setNothingToShow(_spine.bookSplits.empty());

    _lastAnchor = std::nullopt;
    loadSplit(_spine.activeSplitIndex);
    // No page is loading.
    if (!_loadTimeout)
        _queue.releaseActions();

    for (auto* button : { &_window.goLeftButton(), &_window.goRightButton() }) {
        button->setEnabled(true);
        button->setHidden(false);
    }
    auto& slider = _location.slider();
    slider.setMaxValue(static_cast<double>(_spine.bookSplits.size()));
    slider.setFloatValue(0);
    slider.setHidden(false);
    _location.setPercentage(0);
}

void EpubController::showContents(const std::vector<ContentsEntry>& entries)
{
    _contentsPane.removeAllLinks();
    _contentsPane.loadTOC(entries);
}

void EpubController::activateSplit(std::uint64_t index)
{
    if (index != _spine.activeSplitIndex)
        _place.chapterChanges();
    _spine.activeSplitIndex = index;
}

void EpubController::loadSplit(std::uint64_t index)
{
    if (index < _spine.bookSplits.size())
        load(_spine.bookSplits[index], index);
}

void EpubController::load(const Url& url, std::optional<std::uint64_t> split)
{
    _spine.requestedSplit = split;
    _window.webView().setPageStart(pageStart(url));
    // External URLs may never load.
    if (url.isFile() || url.scheme().empty())
        holdActions();
    _window.webView().loadRequest(url);
}

void EpubController::setBookLanguage(std::string language)
{
    _window.setBookLanguage(language);
    _bookLanguage = std::move(language);
}

PageStart EpubController::pageStart(const Url& url) const
{
    const auto look = layout();
    if (look.columnHeight <= 0 || look.pageWidth <= 0)
        return {};
    const bool opensElsewhere = _state.restorePositionPending || _state.openAtChapterEnd
        || _state.pendingChapterFraction != 0 || url.fragment() || _lastAnchor || _place.toKeep() || _jumps.landing;
    return { scripts::styleSheet(look, _settings.numberOfColumns), !opensElsewhere, _settings.numberOfColumns,
        _bookLanguage };
}

void EpubController::holdActions()
{
    _window.setLoading(true);
    _queue.holdActions();
    // The timer is destroyed with the next load or the reader, never during its call.
    _loadTimeout = _runLoop.performAfterDelay(loadTimeout, [this] { _queue.releaseActions(); });
}

void EpubController::changeChapter(const Url& url)
{
    _queue.enqueueAction([this, url]() -> Task<void> {
        leavePage();
        userMoves();
        Url target = url;
        const auto parts = split(url.path(), '#');
        _lastAnchor = std::nullopt;
        if (parts.size() == 2) {
            if (const auto escaped = Url::fromString(addingPercentEscapes(parts[0])))
                target = *escaped;
            _lastAnchor = replacingPercentEscapes(parts[1]).value_or(parts[1]);
        }
        _state.openAtChapterEnd = false;
        load(target);
        co_return;
    });
}

void EpubController::resourceDidFinishLoading(const DataSource& source)
{
    _queue.enqueueReport([this, source] { return preparePage(source); });
}

void EpubController::didFinishLoadForFrame(const DataSource& source)
{
    _queue.enqueueReport([this, load = source.load]() -> Task<void> {
        if (load == _window.webView().currentLoad()) {
            _place.setFrameIsLoaded(true);
            co_await keepPlace();
            // A picture shown instead of the page may have waited for this.
            if (_pageIsShown)
                _window.webView().pageIsPrepared();
        }
    });
}

void EpubController::resourceDidFailLoading(const DataSource& source)
{
    log("fail");
    if (!source.isMainResource || source.load != _window.webView().currentLoad())
        return;
    _spine.requestFailed();
    _window.setLoading(false);
    _queue.releaseActions();
}

void EpubController::webProcessDidTerminate()
{
    const bool wasLoading = _queue.actionsAreHeld();
    holdActions();
    // A chapter that is still loading is placed as usual.
    if (_pageIsShown && !wasLoading) {
        _state.restorePositionPending = true;
        _state.pendingChapterFraction = 0;
        _place.keepLast();
        _lastAnchor = std::nullopt;
        _window.webView().setTextSizeMultiplier(_settings.currentFontSize);
    }
    // This ends work that waits for an answer of the lost page.
    _locationChanges.forget();
    _queue.dropCurrent();
}

void EpubController::resourceWillSendRequest(const Url& url, RequestedBy requestedBy)
{
    if (_leavingLinks.take(url, requestedBy))
        _mainController.openURL(url, requestedBy);
}

void EpubController::decidePolicyForMIMEType(const std::string& type)
{
    log("type: " + type);
}

Task<void> EpubController::preparePage(DataSource source)
{
    auto& webView = _window.webView();
    if (source.load != webView.currentLoad())
        co_return;
    _layoutMayDiffer = true;
    if (source.isMainResource)
        _place.setFrameIsLoaded(!source.isLoading);
    if (_lastAnchor) {
        co_await run(scripts::setHash(*_lastAnchor));
        co_await trackAnchors();
    }
    _jumps.shownDocument = source.url.withoutFragment();
    const Url url = _locationChanges.urlOf(source);
    activateSplit(_spine.indexOf(url));
    _spine.missingSplits.erase(_spine.activeSplitIndex);
    // A load that fails after this is a link of the page.
    _spine.requestedSplit = std::nullopt;

    co_await run(scripts::columns(_settings.numberOfColumns, _settings.pageWidth));
    co_await run(scripts::layout(layout()));
    if (webView.isHidden())
        webView.setHidden(false);
    if (!_lastAnchor)
        _contentsPane.updateTOClinkWithKey(
            contentsKey(url), _window.mainSplitView().frame().height / _window.webView().pixelSize());

    // The page may have navigated by itself.
    if (source.load != webView.currentLoad())
        co_return;
    co_await placeReader(url);
    co_await keepPlace();
    _pageIsShown = true;
    if (source.load != webView.currentLoad())
        co_return;
    if (source.isMainResource)
        co_await decorate();
    webView.pageIsPrepared();
    _window.setLoading(false);
    if (source.isMainResource)
        _queue.releaseActions();
}

Task<void> EpubController::placeReader(Url url)
{
    const std::int64_t S = co_await integer(scripts::scrollWidth);
    const auto page = geometry();
    const auto A = page.pageArea();
    std::int64_t shown = 0;
    if (A != 0) {
        if (std::exchange(_state.restorePositionPending, false)) {
            _position.capacity = wrapped(A * (S / page.W) * _position.readAmount);
            const auto offset = page.offsetOfPage(PageGeometry::pageIndex(_position.capacity, A));
            co_await run(scripts::scrollTo(offset));
            co_await updateLocationWithOffset(offset);
        } else {
            _position.capacity = 0;
            const auto fragment = url.fragment();
            if (fragment) {
                const std::int64_t T = co_await integer(scripts::offsetTopOf(*fragment));
                if (T != 0) {
                    const auto index = page.pageOfElement(T, A);
                    shown = page.offsetOfSignedPage(index);
                    co_await run(scripts::scrollTo(shown));
                    _position.set(static_cast<std::uint64_t>(index * A), page, S, A);
                }
            } else if (_state.pendingChapterFraction != 0) {
                co_await scrollToAmount();
                co_return;
            } else if (_state.openAtChapterEnd) {
                co_await run(scripts::scrollToEnd);
                shown = truncated(S - page.W);
                _position.setOffset(shown, page, S);
            }
        }
    }
    if (!_dragging)
        co_await updateLocationWithOffset(shown);
}

void EpubController::didChangeLocationWithinPage(const Url& url)
{
    if (_locationChanges.add(url, _window.webView().currentLoad()))
        _queue.enqueueReport([this] { return trackAnchors(); });
}

Task<void> EpubController::trackAnchors()
{
    for (auto count = _locationChanges.count(); count > 0 && !_locationChanges.empty(); --count) {
        const std::string fragment = _locationChanges.takeFragment();
        co_await trackAnchor(fragment);
    }
    // Changes made by the page in the meantime are processed after the user's actions.
    if (_locationChanges.continueProcessing())
        _queue.enqueueAction([this] { return trackAnchors(); });
}

Task<void> EpubController::trackAnchor(std::string fragment)
{
    const std::int64_t T = co_await integer(scripts::offsetTopOf(fragment));
    if (T == 0)
        co_return;
    userMoves();
    const auto page = geometry();
    const std::int64_t S = co_await integer(scripts::scrollWidth);
    const auto B = page.seekDivisor();
    if (B == 0)
        co_return;
    const auto index = page.pageOfElement(T, B);
    const auto offset = page.offsetOfSignedPage(index);
    co_await run(scripts::scrollTo(offset));
    _position.set(static_cast<std::uint64_t>(index * B), page, S, B);
    co_await updateLocationWithOffset(offset);
}

void EpubController::displayOptions()
{
    auto& panel = _window.displayOptions();
    if (panel.isVisible())
        panel.orderOut();
    else
        panel.makeKeyAndOrderFront();
}

void EpubController::searchContent(const std::string& text)
{
    if (!text.empty())
        log("search: " + text);
}

void EpubController::focusSearch()
{
    _window.searchField().makeFirstResponder();
}

}
