#include "reflowable/EpubController.hpp"

#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "base/Path.hpp"
#include "reflowable/ColorThemes.hpp"

#include <utility>

namespace pagora {

namespace {

constexpr const char* menuFonts[] = { "Arial", "Baskerville", "Georgia", "Helvetica", "Palatino", "Times New Roman" };
constexpr const char* defaultFont = "Georgia";
// How long the user's next action waits for a chapter to report itself.
constexpr double loadPatience = 10;
// How many changes of the location within the page wait to be followed.
constexpr std::size_t mostLocationChanges = 8;

}

EpubController::EpubController(EpubWindow& window, ReaderHub& hub, ReaderState& state, RunLoop& runLoop)
    : _window(window)
    , _hub(hub)
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
    _queue.setWhenDry([this] { return notePlace(); });
}

EpubController::~EpubController()
{
    // The window may outlive its reader while it leaves full screen.
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
    return { frame.width, frame.height, _numberOfColumns, _pageWidth };
}

void EpubController::rebuildFontMenu()
{
    auto& menu = _window.fontMenu();
    menu.removeAllItems();
    for (const char* family : menuFonts)
        menu.addItem(family);
    menu.addSeparator();
    for (const auto& family : _window.availableFontFamilies())
        menu.addItem(family);
}

void EpubController::loadSplits(
    std::vector<Url> splits, const std::optional<std::vector<ContentsEntry>>& tableOfContent)
{
    rebuildFontMenu();
    _contentsPane.removeAllLinks();
    if (tableOfContent)
        _contentsPane.loadTOC(*tableOfContent);

    // Not-a-number differs from 0 too.
    _state.restorePositionPending = _readAmount != 0;
    if (_activeSplitIndex != 0 && !_bookSplits.empty())
        _activeSplitIndex = 0;

    if (!_currentFont)
        _currentFont = defaultFont;
    _window.fontMenu().selectItemWithTitle(*_currentFont);
    auto& fontSize = _window.fontSizeSlider();
    if (_currentFontSize == 0)
        _currentFontSize = static_cast<float>((fontSize.minValue() + fontSize.maxValue()) * 0.5);
    auto& colors = _window.colorControl();
    if (_currentColorOption == 0)
        _currentColorOption = colors.selectedSegment() + 1;
    colors.setSelectedSegment(_currentColorOption - 1);
    if (_numberOfColumns == 0)
        _numberOfColumns = 2;
    _window.setColumnCount(_numberOfColumns);
    _pageWidth = PageGeometry::pageWidthFor(_window.webView().frame().width, _numberOfColumns);

    _bookSplits = std::move(splits);
    _splitIndexDict.clear();
    for (std::size_t i = 0; i < _bookSplits.size(); ++i)
        _splitIndexDict[_bookSplits[i].lastPathComponent()] = i;
    _missingSplits.clear();
    _leavingLinks.clear();
    _window.setLoading(false);
    _window.setNothingToShow(_bookSplits.empty());

    _window.webView().setTextSizeMultiplier(_currentFontSize);
    fontSize.setFloatValue(_currentFontSize);

    _lastAnchor = std::nullopt;
    loadSplit(_activeSplitIndex);

    for (auto* button : { &_window.goLeftButton(), &_window.goRightButton() }) {
        button->setEnabled(true);
        button->setHidden(false);
    }
    auto& slider = _location.slider();
    slider.setMaxValue(static_cast<double>(_bookSplits.size()));
    slider.setFloatValue(0);
    slider.setHidden(false);
    _location.setPercentage(0);
}

void EpubController::activateSplit(std::uint64_t index)
{
    if (index != _activeSplitIndex)
        _lastPlace = 0;
    _activeSplitIndex = index;
}

void EpubController::loadSplit(std::uint64_t index)
{
    if (index >= _bookSplits.size())
        return;
    load(_bookSplits[index], index);
}

void EpubController::load(const Url& url, std::optional<std::uint64_t> split)
{
    _requestedSplit = split;
    _window.webView().setPageStart(pageStart(url));
    // What leaves the book may never come.
    if (url.isFile() || url.scheme().empty())
        holdActions();
    _window.webView().loadRequest(url);
}

PageStart EpubController::pageStart(const Url& url) const
{
    const auto look = layout();
    if (look.columnHeight <= 0 || look.pageWidth <= 0)
        return {};
    const bool opensElsewhere = _state.restorePositionPending || _state.openAtChapterEnd
        || _state.pendingChapterFraction != 0 || url.fragment() || _lastAnchor || _placeToKeep;
    return { scripts::styleSheet(look, _numberOfColumns), !opensElsewhere, _numberOfColumns };
}

scripts::Layout EpubController::layout() const
{
    const auto page = geometry();
    scripts::Layout layout;
    if (_currentColorOption != 1) {
        layout.text = getCSSColorFor(_currentColorOption);
        layout.background = getCSSBackgroundColorFor(_currentColorOption);
    }
    layout.font = _currentFont.value_or(defaultFont);
    layout.pageWidth = page.pageWidth;
    layout.columnHeight = page.columnHeight();
    layout.imageHeight = page.imageHeight();
    return layout;
}

void EpubController::holdActions()
{
    _window.setLoading(true);
    _queue.holdActions();
    _loadTimeout = _runLoop.performAfterDelay(loadPatience, [this] { releaseActions(); });
}

void EpubController::releaseActions()
{
    // The timer may be what calls; it goes with the next load or the reader.
    _queue.releaseActions();
}

void EpubController::changeChapter(const Url& url)
{
    _queue.enqueueAction([this, url]() -> Task<void> {
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
            _frameIsLoaded = true;
            co_await keepPlace();
        }
    });
}

void EpubController::resourceDidFailLoading(const DataSource& source)
{
    log("fail");
    if (!source.isMainResource || source.load != _window.webView().currentLoad())
        return;
    if (_requestedSplit)
        _missingSplits.insert(*_requestedSplit);
    _window.setLoading(false);
    releaseActions();
}

void EpubController::webProcessDidTerminate()
{
    ++_lostPages;
    // A chapter that was still being loaded is placed as it would have been.
    if (_pageIsShown && !_queue.actionsAreHeld()) {
        _state.restorePositionPending = true;
        _placeToKeep = lastPlace();
        _lastAnchor = std::nullopt;
    }
    holdActions();
}

void EpubController::resourceWillSendRequest(const Url& url, RequestedBy requestedBy)
{
    if (_leavingLinks.take(url, requestedBy))
        _hub.openURL(url, requestedBy);
}

void EpubController::decidePolicyForMIMEType(const std::string& type)
{
    log("type: " + type);
}

Task<void> EpubController::preparePage(DataSource source)
{
    auto& webView = _window.webView();
    const auto lost = _lostPages;
    if (source.load != webView.currentLoad())
        co_return;
    if (source.isMainResource)
        _frameIsLoaded = !source.isLoading;
    if (_lastAnchor) {
        co_await run(scripts::setHash(*_lastAnchor));
        co_await trackAnchors();
    }
    // A fragment that the location took on belongs to the page's URL from then on.
    const Url url = _pageLocationLoad == source.load && _pageLocation ? *_pageLocation : source.url;
    const auto index = _splitIndexDict.find(url.lastPathComponent());
    activateSplit(index == _splitIndexDict.end() ? 0 : index->second);
    _missingSplits.erase(_activeSplitIndex);
    // What fails from here on is a link of the page.
    _requestedSplit = std::nullopt;

    co_await run(scripts::columns(_numberOfColumns, _pageWidth));
    co_await run(scripts::layout(layout()));
    if (webView.isHidden())
        webView.setHidden(false);
    if (!_lastAnchor)
        _contentsPane.updateTOClinkWithKey(
            contentsKey(url), _window.mainSplitView().frame().height / _window.webView().pixelSize());

    // The page may have gone elsewhere by itself.
    if (source.load != webView.currentLoad() || lost != _lostPages)
        co_return;
    co_await placeReader(url);
    co_await keepPlace();
    if (lost != _lostPages)
        co_return;
    _pageIsShown = true;
    if (source.load != webView.currentLoad())
        co_return;
    webView.pageIsPrepared();
    _window.setLoading(false);
    if (source.isMainResource)
        releaseActions();
}

Task<void> EpubController::placeReader(Url url)
{
    const auto lost = _lostPages;
    const std::int64_t S = co_await integer(scripts::scrollWidth);
    if (lost != _lostPages)
        co_return;
    const auto page = geometry();
    const auto A = page.pageArea();
    std::int64_t shown = 0;
    if (A != 0) {
        if (std::exchange(_state.restorePositionPending, false)) {
            _capacity = wrapped(A * (S / page.W) * _readAmount);
            const auto offset = page.offsetOfPage(PageGeometry::pageIndex(_capacity, A));
            co_await run(scripts::scrollTo(offset));
            co_await updateLocationWithOffset(offset);
        } else {
            _capacity = 0;
            const auto fragment = url.fragment();
            if (fragment) {
                const std::int64_t T = co_await integer(scripts::offsetTopOf(*fragment));
                if (T != 0) {
                    const auto index = page.pageOfElement(T, A);
                    shown = page.offsetOfSignedPage(index);
                    co_await run(scripts::scrollTo(shown));
                    _capacity = static_cast<std::uint64_t>(index * A);
                    _readAmount = page.readAmount(_capacity, S, A);
                }
            } else if (_state.pendingChapterFraction != 0) {
                co_await scrollToAmount();
                co_return;
            } else if (_state.openAtChapterEnd) {
                co_await run(scripts::scrollToEnd);
                shown = truncated(S - page.W);
                _capacity = page.capacityAt(shown);
                _readAmount = page.readAmount(_capacity, S, A);
            }
        }
    }
    if (!_dragging)
        co_await updateLocationWithOffset(shown);
}

void EpubController::didChangeLocationWithinPage(const Url& url)
{
    _pageLocation = url;
    _pageLocationLoad = _window.webView().currentLoad();
    _locationChanges.push_back(url.fragment().value_or(""));
    // The newest ones count.
    if (_locationChanges.size() > mostLocationChanges)
        _locationChanges.erase(_locationChanges.begin());
    if (!std::exchange(_isTrackingAnchors, true))
        _queue.enqueueReport([this] { return trackAnchors(); });
}

Task<void> EpubController::trackAnchors()
{
    for (auto count = _locationChanges.size(); count > 0 && !_locationChanges.empty(); --count) {
        const std::string fragment = _locationChanges.front();
        _locationChanges.erase(_locationChanges.begin());
        co_await trackAnchor(fragment);
    }
    // What the page has changed meanwhile comes after what the person has asked for.
    _isTrackingAnchors = !_locationChanges.empty();
    if (_isTrackingAnchors)
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
    _capacity = static_cast<std::uint64_t>(index * B);
    _readAmount = page.readAmount(_capacity, S, B);
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
