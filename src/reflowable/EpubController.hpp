#pragma once

#include "contents/ContentsPane.hpp"
#include "contents/SplitRules.hpp"
#include "page/WebView.hpp"
#include "reader/EpubWindow.hpp"
#include "reader/LeavingLinks.hpp"
#include "reader/LocationBar.hpp"
#include "reader/ReaderHub.hpp"
#include "reader/ReaderState.hpp"
#include "reflowable/PageArithmetic.hpp"
#include "reflowable/PageScripts.hpp"
#include "running/RunLoop.hpp"
#include "running/SerialQueue.hpp"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace pagora {

// The reflowable reader: shows one spine document at a time as a strip of columns and moves through it page by page.
// What the user does and what the page reports runs one after another on its queue. Main thread; its window controller
// owns it.
class EpubController : public WebViewDelegate, public ContentsDelegate {
public:
    EpubController(EpubWindow& window, ReaderHub& hub, ReaderState& state, RunLoop& runLoop);
    ~EpubController() override;

    // Starts a book: its spine documents as file URLs in reading order, and its contents, missing when there are none.
    // Settings and position set before are taken up; null and 0 mean the reader's own defaults.
    void loadSplits(std::vector<Url> splits, const std::optional<std::vector<ContentsEntry>>& tableOfContent);
    // Opens the target of a contents link.
    void changeChapter(const Url& url) override;

    // Turns the page: tag 0 back, 1 (and any other) on. The slider has its own form, with its value and the event that
    // moved it.
    void changePage(int tag);
    void changePage(float sliderValue, EventType currentEvent);
    void goToFirstPage();
    void goToLastPage();
    // A flick over the page, by its horizontal distance.
    void scrollWheelBegan(double deltaX);
    // The offset moved to a column boundary.
    std::int64_t adjustOffset(std::int64_t offset) const { return geometry().adjustOffset(offset); }

    void changeColor();
    void fontChange();
    void changeFontSize(float multiplier);
    void changeWidth();
    // Takes up, before the reader is closed, the options that were chosen while a page was on its way.
    void adoptPendingOptions();
    // Lays the page out for a new size of the view.
    void updateColumns();
    const char* getCSSColorFor(std::int32_t theme) const;
    const char* getCSSBackgroundColorFor(std::int32_t theme) const;
    Color getBackgroundColorFor(std::int32_t theme) const;

    void toggleLeftView() { _splitRules.toggleLeftView(); }
    void displayOptions();
    void searchContent(const std::string& text);
    void focusSearch();

    const std::vector<Url>& bookSplits() const { return _bookSplits; }
    void setBookSplits(std::vector<Url> splits) { _bookSplits = std::move(splits); }
    const std::map<std::string, std::uint64_t>& splitIndexDict() const { return _splitIndexDict; }
    void setSplitIndexDict(std::map<std::string, std::uint64_t> dict) { _splitIndexDict = std::move(dict); }
    ContentsPane& contentsPane() { return _contentsPane; }
    const std::optional<std::string>& lastAnchor() const { return _lastAnchor; }
    void setLastAnchor(std::optional<std::string> anchor) { _lastAnchor = std::move(anchor); }
    std::uint64_t activeSplitIndex() const { return _activeSplitIndex; }
    void setActiveSplitIndex(std::uint64_t index) { _activeSplitIndex = index; }
    std::uint64_t capacity() const { return _capacity; }
    float readAmount() const { return _readAmount; }
    void setReadAmount(float amount) { _readAmount = amount; }
    const std::optional<std::string>& currentFont() const { return _currentFont; }
    void setCurrentFont(std::optional<std::string> family) { _currentFont = std::move(family); }
    float currentFontSize() const { return _currentFontSize; }
    void setCurrentFontSize(float multiplier) { _currentFontSize = multiplier; }
    std::int32_t currentColorOption() const { return _currentColorOption; }
    void setCurrentColorOption(std::int32_t theme) { _currentColorOption = theme; }
    std::int32_t numberOfColumns() const { return _numberOfColumns; }
    void setNumberOfColumns(std::int32_t columns) { _numberOfColumns = columns; }
    std::int32_t pageWidth() const { return _pageWidth; }
    bool dragging() const { return _dragging; }
    // Whether no action, report or chapter is still under way.
    bool isSettled() const { return _queue.isIdle() && !_queue.actionsAreHeld(); }
    ColorView& bgView() { return _window.bgView(); }

    // The fraction of the chapter at the middle of the page that is shown, 0 at a chapter's start while pictures are
    // awaited; until the user moves, the place to keep. Missing while neither is there.
    std::optional<double> lastPlace() const { return _placeToKeep ? _placeToKeep : _lastPlace; }
    // Keeps that fraction of the chapter in the middle of the page until the user moves, also when pictures or fonts
    // that arrive late lay the chapter out anew.
    void setPlaceToKeep(std::optional<double> place) { _placeToKeep = place; }

    void resourceDidFinishLoading(const DataSource& source) override;
    void didFinishLoadForFrame(const DataSource& source) override;
    void resourceDidFailLoading(const DataSource& source) override;
    void resourceWillSendRequest(const Url& url, RequestedBy requestedBy) override;
    void decidePolicyForMIMEType(const std::string& type) override;
    void didChangeLocationWithinPage(const Url& url) override;
    void didResize() override;
    void webProcessDidTerminate() override;

private:
    enum class Direction : int { Back = -1, On = 1 };

    // W, H, C and PW as they are now.
    PageGeometry geometry() const;
    // `split` is the index of the URL when it is loaded as that spine document.
    void load(const Url& url, std::optional<std::uint64_t> split = std::nullopt);
    // How the page at that URL is to begin.
    PageStart pageStart(const Url& url) const;
    scripts::Layout layout() const;
    void holdActions();
    void loadSplit(std::uint64_t index);
    // The chapter becomes the active one; the place in another is forgotten.
    void activateSplit(std::uint64_t index);
    void releaseActions();
    // The nearest spine document in that direction that is not known to be missing.
    std::optional<std::uint64_t> nextSplit(Direction direction) const;
    bool lastChapterIsShown() const;
    // The user moves: the place that was kept is given up.
    void userMoves() { _placeToKeep = std::nullopt; }

    Task<std::int64_t> integer(std::string script) { return evaluateInteger(_window.webView(), std::move(script)); }
    Task<void> run(std::string script) { return evaluate(_window.webView(), std::move(script)); }

    Task<void> preparePage(DataSource source);
    Task<void> placeReader(Url url);
    Task<void> trackAnchors();
    Task<void> trackAnchor(std::string fragment);
    Task<void> turnOn();
    Task<void> turnBack();
    Task<void> turn(int tag);
    Task<void> seek(float value, EventType event);
    Task<void> scrollToAmount();
    Task<void> updateLocationWithOffset(std::int64_t offset);
    Task<void> adoptOffset(std::int64_t offset, std::int64_t S);
    Task<void> applyFontSize(float multiplier);
    Task<void> applyColumns();
    Task<void> applyRelayout();
    Task<void> keepPlace();
    Task<void> notePlace();

    // `adopt` takes up an option of the display, `show` does it and shows it on the page.
    void enqueueOption(std::function<void()> adopt, SerialQueue::Work show);
    std::int32_t nextNumberOfColumns() const;
    void rebuildFontMenu();
    void showPercentage(double fractionOfBook);

    EpubWindow& _window;
    ReaderHub& _hub;
    ReaderState& _state;
    RunLoop& _runLoop;
    LocationBar _location;
    ContentsPane _contentsPane;

    bool _dragging = false;
    std::optional<std::string> _lastAnchor;
    std::vector<Url> _bookSplits;
    std::map<std::string, std::uint64_t> _splitIndexDict;
    std::uint64_t _activeSplitIndex = 0;
    std::uint64_t _capacity = 0;
    float _readAmount = 0;
    std::optional<std::string> _currentFont;
    float _currentFontSize = 0;
    std::int32_t _currentColorOption = 0;
    std::int32_t _numberOfColumns = 0;
    std::int32_t _pageWidth = 0;

    // Counts the pages that were lost with the engine, so that nothing goes by what a lost page did not answer.
    std::uint64_t _lostPages = 0;
    // Whether a chapter has ever been laid out.
    bool _pageIsShown = false;
    std::optional<double> _lastPlace;
    // Everything that the chapter asked for has arrived or failed.
    bool _frameIsLoaded = false;
    std::optional<double> _placeToKeep;
    // Spine documents whose load failed; page turns go past them.
    std::set<std::uint64_t> _missingSplits;
    std::optional<std::uint64_t> _requestedSplit;
    // Fragments that the location changed to and that are not yet tracked.
    std::vector<std::string> _locationChanges;
    bool _isTrackingAnchors = false;
    // The URL with the last of these fragments, and the load that it belongs to.
    std::optional<Url> _pageLocation;
    std::uint64_t _pageLocationLoad = 0;
    LeavingLinks _leavingLinks;
    bool _relayoutPending = false;
    // Options that are chosen and not yet shown.
    std::deque<std::function<void()>> _pendingOptions;
    std::unique_ptr<RunLoop::Timer> _loadTimeout;

    SplitRules _splitRules;
    // Last, so that what is pending ends before what it works on.
    SerialQueue _queue;
};

}
