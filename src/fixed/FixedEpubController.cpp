#include "fixed/FixedEpubController.hpp"

#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "base/Translation.hpp"

#include <cmath>
#include <utility>

namespace pagora {

namespace {

enum Tag : int { Previous = 0, Next = 1 };

// In seconds. The next action waits this long for a page, and a page this long for its resources.
constexpr double pageTimeout = 10;

constexpr const char* pageScripts[] = { "jquery-1.7.1.min", "rescaling" };

}

FixedEpubController::FixedEpubController(
    FixedWindow& window, ReaderHub& hub, ReaderState& state, RunLoop& runLoop, ScriptResources scripts)
    : _window(window)
    , _mainController(hub)
    , _state(state)
    , _runLoop(runLoop)
    , _scripts(std::move(scripts))
    , _location(window.locLabel(), window.locSlider())
    , _contentsPane(window.tocView(), *this)
    , _selectedText(window)
    , _splitRules(window.mainSplitView(), SplitRules::FollowDivider::No, [] {})
{
    _window.webView().setDelegate(this);
    _window.locSlider().setAction([this](EventType) { changePageTo(_window.locSlider().floatValue()); });
    _window.goLeftButton().setAction([this] { changePage(Previous); });
    _window.goRightButton().setAction([this] { changePage(Next); });
}

FixedEpubController::~FixedEpubController()
{
    // The window may outlive this object while it leaves full screen.
    _window.webView().setDelegate(nullptr);
    _window.locSlider().setAction(nullptr);
    _window.goLeftButton().setAction(nullptr);
    _window.goRightButton().setAction(nullptr);
}

void FixedEpubController::loadSplits(
    std::vector<Url> splits, const std::optional<std::vector<ContentsEntry>>& tableOfContent)
{
    _contentsPane.removeAllLinks();
    if (tableOfContent)
        _contentsPane.loadTOC(*tableOfContent);
    if (_numberOfColumns == 0)
        _numberOfColumns = 1;
    _bookSplits = std::move(splits);
    _window.setLoading(false);
    if (_activeSplitIndex != 0 && !_bookSplits.empty())
        _activeSplitIndex = 0;
    _leavingLinks.clear();
    _jumps.clear();
    _window.setHistory(false, false);
    _splitIndexDict.clear();
    for (std::size_t i = 0; i < _bookSplits.size(); ++i)
        _splitIndexDict[_bookSplits[i].lastPathComponent()] = i;
    if (_activeSplitIndex < _bookSplits.size())
        load(_bookSplits[_activeSplitIndex]);

    for (auto* button : { &_window.goLeftButton(), &_window.goRightButton() }) {
        button->setEnabled(true);
        button->setHidden(false);
    }
    auto& slider = _location.slider();
    slider.setMinValue(1);
    slider.setMaxValue(static_cast<double>(_bookSplits.size()));
    slider.setHidden(false);
    showLocation();
    _fixedWindowFitted = false;
}

void FixedEpubController::showContents(const std::vector<ContentsEntry>& entries)
{
    _contentsPane.removeAllLinks();
    _contentsPane.loadTOC(entries);
}

void FixedEpubController::showLocation()
{
    _location.slider().setFloatValue(static_cast<float>(_activeSplitIndex + 1));
    _location.setLabelMessage(
        formatted(_("%d of %d"), static_cast<int>(_activeSplitIndex + 1), static_cast<int>(_bookSplits.size())));
}

void FixedEpubController::load(const Url& url)
{
    _window.setPageIsMissing(false);
    _window.hideSelection();
    _window.setLoading(true);
    _queue.holdActions();
    _pageTimer = _runLoop.performAfterDelay(pageTimeout, [this] { _queue.releaseActions(); });
    _window.webView().loadRequest(url);
}

void FixedEpubController::changeChapter(const Url& url)
{
    _queue.enqueueAction([this, url]() -> Task<void> {
        leavePage();
        _window.webView().setHidden(true);
        load(url);
        co_return;
    });
}

void FixedEpubController::loadPage(std::uint64_t index)
{
    _window.webView().setHidden(true);
    load(_bookSplits[index]);
    _turnsBack = index < _activeSplitIndex;
    _activeSplitIndex = index;
}

void FixedEpubController::changePage(int tag)
{
    _queue.enqueueAction([this, tag]() -> Task<void> {
        pageTurn(tag);
        co_return;
    });
}

void FixedEpubController::pageTurn(int tag)
{
    _isSeeking = false;
    const auto last = _bookSplits.size();
    if (tag == Previous) {
        if (_activeSplitIndex == 0)
            return;
        loadPage(_activeSplitIndex - 1);
    } else {
        if (_activeSplitIndex + 1 >= last)
            return;
        loadPage(_activeSplitIndex + 1);
    }
    _state.lastSliderValue = static_cast<float>(_activeSplitIndex + 1);
}

void FixedEpubController::changePageTo(float sliderValue)
{
    _queue.enqueueAction([this, page = truncated32(sliderValue)]() -> Task<void> {
        pageTurnTo(page);
        co_return;
    });
}

void FixedEpubController::pageTurnTo(std::int32_t page)
{
    if (static_cast<float>(page) == _state.lastSliderValue)
        return;
    const auto index = static_cast<std::uint64_t>(page) - 1;
    if (index != _activeSplitIndex && index < _bookSplits.size()) {
        // All moves of the slider are one jump.
        if (!_isSeeking)
            leavePage();
        _isSeeking = true;
        loadPage(index);
    }
    _state.lastSliderValue = static_cast<float>(page);
}

void FixedEpubController::goToFirstPage()
{
    goToPage(0);
}

void FixedEpubController::goToLastPage()
{
    if (!_bookSplits.empty())
        goToPage(_bookSplits.size() - 1);
}

void FixedEpubController::goToPage(std::uint64_t index)
{
    _queue.enqueueAction([this, index]() -> Task<void> {
        if (index != _activeSplitIndex && index < _bookSplits.size())
            loadPage(index);
        _state.lastSliderValue = static_cast<float>(index + 1);
        co_return;
    });
}

void FixedEpubController::scrollWheelBegan(double deltaX)
{
    if (deltaX != 0)
        changePage(deltaX > 0 ? Previous : Next);
}

void FixedEpubController::resourceDidFinishLoading(const DataSource& source)
{
    if (!source.isLoading)
        prepare(source);
}

void FixedEpubController::didFinishLoadForFrame(const DataSource& source)
{
    prepare(source);
}

void FixedEpubController::prepare(const DataSource& source)
{
    _queue.enqueueReport([this, source] { return preparePage(source); });
}

Task<void> FixedEpubController::preparePage(DataSource source)
{
    auto& webView = _window.webView();
    if (source.load != webView.currentLoad() || source.load == _preparedLoad)
        co_return;
    _preparedLoad = source.load;
    dividerHasMoved();
    const auto index = _splitIndexDict.find(source.url.lastPathComponent());
    _activeSplitIndex = index == _splitIndexDict.end() ? 0 : index->second;
    for (const char* name : pageScripts)
        co_await evaluate(webView, _scripts(name));
    co_await rescale();
    if (!_fixedWindowFitted) {
        co_await fitWindow();
        // Wait until the page has the window's new size.
        co_await _window.window().laidOut();
    }
    co_await paintMarks();
    co_await webView.waitUntilDrawn();
    if (source.load != webView.currentLoad())
        co_return;
    showPage(false);
    _window.setLoading(false);
    _contentsPane.updateTOClinkWithKey(
        contentsKey(source.url), _window.mainSplitView().frame().height / _window.webView().pixelSize());
    showLocation();
    _queue.releaseActions();
    prepareNextPage();
    if (_marks.pageIsSeen)
        _marks.pageIsSeen();
}

void FixedEpubController::showPage(bool isMissing)
{
    _window.setPageIsMissing(isMissing);
    if (_window.webView().isHidden() != isMissing)
        _window.webView().setHidden(isMissing);
}

void FixedEpubController::prepareNextPage()
{
    const auto next = _turnsBack && _activeSplitIndex > 0 ? _activeSplitIndex - 1 : _activeSplitIndex + 1;
    if (next >= _bookSplits.size())
        return;
    std::vector<std::string> scripts;
    for (const char* name : pageScripts)
        scripts.push_back(_scripts(name));
    scripts.insert(scripts.end(), { "init()", "scale()" });
    _painted.ahead = std::nullopt;
    if (auto marks = marksScript(next); !marks.empty()) {
        scripts.push_back(std::move(marks));
        _painted.ahead = next;
    }
    _window.webView().prepareRequest(_bookSplits[next], scripts);
}

Task<void> FixedEpubController::rescale()
{
    auto& webView = _window.webView();
    co_await evaluate(webView, "init()");
    co_await evaluate(webView, "scale()");
}

Task<void> FixedEpubController::fitWindow()
{
    auto& webView = _window.webView();
    const std::int64_t pw = co_await evaluateInteger(webView, "getWidth()");
    const std::int64_t ph = co_await evaluateInteger(webView, "getHeight()");
    const std::int64_t ww = co_await evaluateInteger(webView, "getWidth( 'win' )");
    const std::int64_t wh = co_await evaluateInteger(webView, "getHeight( 'win' )");
    const std::string scale = co_await webView.evaluateScript("Xscale");
    const auto s = static_cast<float>(doubleValue(scale));
    const auto scaled = [s](std::int64_t length) {
        return truncated32(static_cast<float>(low32(static_cast<std::uint64_t>(length))) * s);
    };
    // The difference is in CSS pixels, the window's frame in points.
    const auto points
        = [&webView](std::int64_t pixels) { return std::trunc(static_cast<double>(pixels) * webView.pixelSize()); };
    Rect frame = _window.window().frame();
    frame.width -= points(ww - scaled(pw));
    frame.height -= points(wh - scaled(ph));
    _window.window().animateToFrame(frame);
    _fixedWindowFitted = true;
}

void FixedEpubController::resourceDidFailLoading(const DataSource& source)
{
    log("fail");
    if (source.isMainResource)
        _queue.enqueueReport([this, source] { return showMissingPage(source); });
}

Task<void> FixedEpubController::showMissingPage(DataSource source)
{
    if (source.load != _window.webView().currentLoad())
        co_return;
    _pageTimer.reset();
    // The shown page stays, because the book cannot continue.
    if (_window.webView().isHidden() || _preparedLoad == 0) {
        const auto index = _splitIndexDict.find(source.url.lastPathComponent());
        if (index != _splitIndexDict.end())
            _activeSplitIndex = index->second;
        showPage(true);
        showLocation();
        prepareNextPage();
        if (_marks.pageIsSeen)
            _marks.pageIsSeen();
    }
    _window.setLoading(false);
    _queue.releaseActions();
}

void FixedEpubController::resourceWillSendRequest(const Url& url, RequestedBy requestedBy)
{
    if (_leavingLinks.take(url, requestedBy))
        _mainController.openURL(url, requestedBy);
}

void FixedEpubController::decidePolicyForMIMEType(const std::string& type)
{
    log("decidePolicyForMIMEType: " + type);
}

void FixedEpubController::didChangeLocationWithinPage(const Url& url)
{
    log("didChangeLocationWithinPageForFrame--> URL: " + url.text());
}

void FixedEpubController::didCommitLoad(const DataSource& source)
{
    // The first page and targets of links are also shown only after scaling.
    if (source.load == _preparedLoad)
        return;
    if (!_window.webView().isHidden())
        _window.webView().setHidden(true);
    _pageTimer = _runLoop.performAfterDelay(pageTimeout, [this, source] { prepare(source); });
}

bool FixedEpubController::dividerHasMoved()
{
    const auto& panes = _window.mainSplitView();
    const Rect frame = panes.frame();
    const Panes now { frame.width, frame.height, panes.frameOfSubview(0).width, panes.isSubviewHidden(0) };
    const Panes before = std::exchange(_panes, now);
    return now.width == before.width && now.height == before.height && now.areContentsHidden == before.areContentsHidden
        && now.contentsWidth != before.contentsWidth;
}

void FixedEpubController::didResize()
{
    // The page is scaled when the window changes, not when the divider moves.
    if (_preparedLoad == 0 || dividerHasMoved() || _rescalePending)
        return;
    _rescalePending = true;
    _queue.enqueueReport([this]() -> Task<void> {
        _rescalePending = false;
        co_await evaluate(_window.webView(), "scale()");
    });
}

}
