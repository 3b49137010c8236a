#pragma once

#include "contents/ContentsPane.hpp"
#include "contents/SplitRules.hpp"
#include "notebook/MarkedReader.hpp"
#include "page/WebView.hpp"
#include "paging/KeptPlace.hpp"
#include "paging/LocationChanges.hpp"
#include "paging/ReadingPosition.hpp"
#include "paging/Spine.hpp"
#include "reader/EpubWindow.hpp"
#include "reader/LeavingLinks.hpp"
#include "reader/LocationBar.hpp"
#include "reader/ReaderHub.hpp"
#include "reader/ReaderState.hpp"
#include "reflowable/DisplaySettings.hpp"
#include "reflowable/Jumps.hpp"
#include "running/RunLoop.hpp"
#include "running/SerialQueue.hpp"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The reflowable reader: shows one spine document at a time as a strip of columns and moves through it page by page.
// Actions of the user and reports of the page run one after another on its queue. Owned by its window controller. Main
// thread only.
class EpubController : public WebViewDelegate, public ContentsDelegate, public MarkedReader {
public:
    EpubController(EpubWindow& window, ReaderHub& hub, ReaderState& state, RunLoop& runLoop);
    ~EpubController() override;

    // Starts a book: its spine documents as file URLs in reading order, and its contents, nullopt if there are none.
    // Uses settings and a position that were set before; null and 0 mean the reader's own defaults.
    void loadSplits(std::vector<Url> splits, const std::optional<std::vector<ContentsEntry>>& tableOfContent);
    // Called before a book is started. The user's actions wait for its first page.
    void awaitBook() { _queue.holdActions(); }
    // Fills the contents pane of a book that was started without contents.
    void showContents(const std::vector<ContentsEntry>& entries);
    // Opens the target of a contents link.
    void changeChapter(const Url& url) override;

    // Turns the page: tag 0 goes back, 1 (and any other) forward. The overload for the slider gets its value and the
    // event that moved it.
    void changePage(int tag);
    void changePage(float sliderValue, EventType currentEvent);
    void goToFirstPage();
    void goToLastPage();
    // Shows the page of a place, and adds the current page to the history.
    void goTo(Destination destination);
    // Goes back to the page before the last jump, and forward again.
    void goBack();
    void goForward();
    // Shows the first page at that percentage of the book, from 0 to 100.
    void goToPercentage(double percentage);
    // Shows a page of the chapter, from 1.
    void goToPage(std::int64_t page);
    // Sets the starts of the pages of the printed edition, in order.
    void setPrintedPages(std::vector<Url> pages) { _jumps.printedPages = std::move(pages); }
    void goToPrintedPage(std::size_t index);
    // Evaluates a script that returns a number in the shown chapter, when nothing else is running. `answer` may be
    // empty.
    void ask(std::string script, std::function<void(std::int64_t)> answer) override;
    // Does the same for a script that returns a text.
    void askText(std::string script, std::function<void(const std::string&)> answer) override;
    void setMarks(MarksHooks marks) override { _marks = std::move(marks); }
    void goToMark(const MarkAnchor& anchor) override;
    std::vector<std::string> chapterNames() override;
    // Sets the function that returns the script to run in a chapter after its layout, by the index of the chapter; an
    // empty script runs nothing.
    void setChapterScript(std::function<std::string(std::uint64_t split)> script)
    {
        _listeners.chapterScript = std::move(script);
    }
    // Called when the user points at a reference to a note.
    void setLinkHandler(std::function<void(const std::optional<PointedLink>&)> handler)
    {
        _listeners.pointsAtLink = std::move(handler);
    }
    // Sets the callback for the selected text of the page.
    void setSelectionHandler(std::function<void(const std::optional<PageSelection>&)> handler)
    {
        _listeners.selectionDidChange = std::move(handler);
    }
    // Runs that script in the shown chapter.
    void runChapterScript() override;
    // Called for a flick over the page, with its horizontal distance.
    void scrollWheelBegan(double deltaX);
    // Returns the offset moved to a column boundary.
    std::int64_t adjustOffset(std::int64_t offset) const { return geometry().adjustOffset(offset); }

    void changeColor();
    void fontChange();
    void changeFontSize(float multiplier);
    void changeWidth();
    // Stores options that were chosen while a page was loading. Called before closing.
    void adoptPendingOptions() { _settings.adoptPending(); }
    // Lays out the page for a new size of the view.
    void updateColumns();
    const char* getCSSColorFor(std::int32_t theme) const;
    const char* getCSSBackgroundColorFor(std::int32_t theme) const;
    Color getBackgroundColorFor(std::int32_t theme) const;

    void toggleLeftView() { _splitRules.toggleLeftView(); }
    void displayOptions();
    void searchContent(const std::string& text);
    void focusSearch();

    const std::vector<Url>& bookSplits() const override { return _spine.bookSplits; }
    void setBookSplits(std::vector<Url> splits) { _spine.bookSplits = std::move(splits); }
    const std::map<std::string, std::uint64_t>& splitIndexDict() const { return _spine.splitIndexDict; }
    void setSplitIndexDict(std::map<std::string, std::uint64_t> dict) { _spine.splitIndexDict = std::move(dict); }
    ContentsPane& contentsPane() { return _contentsPane; }
    const std::optional<std::string>& lastAnchor() const { return _lastAnchor; }
    void setLastAnchor(std::optional<std::string> anchor) { _lastAnchor = std::move(anchor); }
    std::uint64_t activeSplitIndex() const override { return _spine.activeSplitIndex; }
    void setActiveSplitIndex(std::uint64_t index) { _spine.activeSplitIndex = index; }
    std::uint64_t capacity() const { return _position.capacity; }
    float readAmount() const { return _position.readAmount; }
    void setReadAmount(float amount) { _position.readAmount = amount; }
    const std::optional<std::string>& currentFont() const { return _settings.currentFont; }
    void setCurrentFont(std::optional<std::string> family) { _settings.currentFont = std::move(family); }
    float currentFontSize() const { return _settings.currentFontSize; }
    void setCurrentFontSize(float multiplier) { _settings.currentFontSize = multiplier; }
    std::int32_t currentColorOption() const { return _settings.currentColorOption; }
    void setCurrentColorOption(std::int32_t theme) { _settings.currentColorOption = theme; }
    std::int32_t numberOfColumns() const { return _settings.numberOfColumns; }
    void setNumberOfColumns(std::int32_t columns) { _settings.numberOfColumns = columns; }
    std::int32_t pageWidth() const { return _settings.pageWidth; }
    bool dragging() const { return _dragging; }
    // Returns whether no action, report or chapter is pending.
    bool isSettled() const { return _queue.isIdle() && !_queue.actionsAreHeld(); }
    ColorView& bgView() { return _window.bgView(); }

    // The fraction of the chapter before the middle of the shown page, or 0 at a chapter's start while pictures are
    // loading. Until the user navigates, it is the place to keep. Nullopt if there is neither.
    std::optional<double> lastPlace() const { return _place.last(); }
    // Keeps that fraction of the chapter in the middle of the page until the user navigates, also if late pictures or
    // fonts change the layout.
    void setPlaceToKeep(std::optional<double> place) { _place.setToKeep(place); }

    // Sets the book's language, for documents that do not declare one. Called before the book is started.
    void setBookLanguage(std::string language);

    void resourceDidFinishLoading(const DataSource& source) override;
    void didFinishLoadForFrame(const DataSource& source) override;
    void resourceDidFailLoading(const DataSource& source) override;
    void resourceWillSendRequest(const Url& url, RequestedBy requestedBy) override;
    void decidePolicyForMIMEType(const std::string& type) override;
    void didChangeLocationWithinPage(const Url& url) override;
    void didResize() override;
    void webProcessDidTerminate() override;
    void pageFollowsLink() override;
    void pointsAtLink(const std::optional<PointedLink>& link) override
    {
        if (_listeners.pointsAtLink)
            _listeners.pointsAtLink(link);
    }
    void selectionDidChange(const std::optional<PageSelection>& selection) override
    {
        if (_listeners.selectionDidChange)
            _listeners.selectionDidChange(selection);
    }
    void pressesMark(const PressedMark& mark) override
    {
        if (_marks.isPressed)
            _marks.isPressed(mark);
    }

private:
    // Callbacks of the search, the notes and the selection bar, which work with the shown page.
    struct PageListeners {
        std::function<std::string(std::uint64_t split)> chapterScript;
        std::function<void(const std::optional<PointedLink>&)> pointsAtLink;
        std::function<void(const std::optional<PageSelection>&)> selectionDidChange;
    };

    // Returns the present W, H, C and PW.
    PageGeometry geometry() const;
    scripts::Layout layout() const { return _settings.layout(geometry()); }
    // `split` is the index of the spine document if the URL is loaded as one.
    void load(const Url& url, std::optional<std::uint64_t> split = std::nullopt);
    // Returns how to start showing the page at that URL.
    PageStart pageStart(const Url& url) const;
    void loadSplit(std::uint64_t index);
    // Makes the chapter the active one and drops the place in another one.
    void activateSplit(std::uint64_t index);
    void holdActions();
    // Drops the place to keep, because the user navigates.
    void userMoves();

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
    // Notes that a page of the book starting at that offset is shown.
    void seePage(std::int64_t offset, std::int64_t S);
    // Called before a jump leaves the page.
    void leavePage();
    Task<void> show(Destination destination);
    Task<void> land();
    Task<void> goInHistory(std::optional<SeenPage> (JumpHistory::*step)(const std::optional<SeenPage>&));
    Task<void> decorate();
    void historyDidChange();

    // `adopt` only stores a display option; `show` stores it and applies it to the page.
    void enqueueOption(std::function<void()> adopt, SerialQueue::Work show);
    void showPercentage(double fractionOfBook);

    EpubWindow& _window;
    ReaderHub& _mainController;
    ReaderState& _state;
    RunLoop& _runLoop;
    LocationBar _location;
    ContentsPane _contentsPane;

    bool _dragging = false;
    std::optional<std::string> _lastAnchor;
    Spine _spine;
    ReadingPosition _position;
    DisplaySettings _settings;
    KeptPlace _place;
    LocationChanges _locationChanges;
    // True if a chapter has been laid out.
    bool _pageIsShown = false;
    std::string _bookLanguage;
    LeavingLinks _leavingLinks;
    Jumps _jumps;
    PageListeners _listeners;
    MarksHooks _marks;
    bool _relayoutPending = false;
    // True if something was loaded or set since the last place was noted that may have changed the layout.
    bool _layoutMayDiffer = false;
    std::unique_ptr<RunLoop::Timer> _loadTimeout;

    SplitRules _splitRules;
    // Declared last, so that pending work ends before the members that it uses.
    SerialQueue _queue;
};

}
