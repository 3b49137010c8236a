#pragma once

#include "contents/ContentsPane.hpp"
#include "contents/SplitRules.hpp"
#include "notebook/MarkedReader.hpp"
#include "page/WebView.hpp"
#include "reader/EpubWindow.hpp"
#include "reader/JumpHistory.hpp"
#include "reader/LeavingLinks.hpp"
#include "reader/LocationBar.hpp"
#include "reader/ReaderHub.hpp"
#include "reader/ReaderState.hpp"
#include "reader/SelectedText.hpp"
#include "running/RunLoop.hpp"
#include "running/SerialQueue.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Returns the text of one of the program's scripts by its name, without ".js"; empty if there is none.
using ScriptResources = std::function<std::string(const std::string& name)>;

// The fixed-layout reader: every file of the reading order is one page, scaled to the window by the program's scripts.
// Actions of the user and reports of the page run one after another on its queue. Owned by its window controller. Main
// thread only.
class FixedEpubController : public WebViewDelegate, public ContentsDelegate, public MarkedReader {
public:
    FixedEpubController(
        FixedWindow& window, ReaderHub& hub, ReaderState& state, RunLoop& runLoop, ScriptResources scripts);
    ~FixedEpubController() override;

    // Opens a book at its first page: its page files as file URLs in reading order, and its contents.
    void loadSplits(std::vector<Url> splits, const std::optional<std::vector<ContentsEntry>>& tableOfContent);
    // Fills the contents pane of a book that was opened without contents.
    void showContents(const std::vector<ContentsEntry>& entries);
    // Hides the page and loads another one, which is shown when it is scaled.
    void changeChapter(const Url& url) override;
    // Turns the page: tag 0 goes back, 1 (and any other) forward. The overload for the slider gets its value.
    void changePage(int tag);
    void changePageTo(float sliderValue);
    void goToFirstPage();
    void goToLastPage();
    // Shows a page of the book, from 1, and adds the current page to the history.
    void goToPageNumber(std::int64_t number);
    // Goes back to the page before the last jump, and forward again.
    void goBack() { goInHistory(&JumpHistory::back); }
    void goForward() { goInHistory(&JumpHistory::forward); }
    // Called for a flick over the page, with its horizontal distance.
    void scrollWheelBegan(double deltaX);
    void toggleLeftView() { _splitRules.toggleLeftView(); }

    const std::vector<Url>& bookSplits() const override { return _bookSplits; }
    std::uint64_t activeSplitIndex() const override { return _activeSplitIndex; }
    void setActiveSplitIndex(std::uint64_t index) { _activeSplitIndex = index; }
    ContentsPane& contentsPane() { return _contentsPane; }
    // Returns whether no action, report or page is pending.
    bool isSettled() const { return _queue.isIdle() && !_queue.actionsAreHeld(); }

    void resourceDidFinishLoading(const DataSource& source) override;
    void didFinishLoadForFrame(const DataSource& source) override;
    void resourceDidFailLoading(const DataSource& source) override;
    void resourceWillSendRequest(const Url& url, RequestedBy requestedBy) override;
    void decidePolicyForMIMEType(const std::string& type) override;
    void didChangeLocationWithinPage(const Url& url) override;
    void didCommitLoad(const DataSource& source) override;
    void didResize() override;
    void pageFollowsLink() override { leavePage(); }
    void selectionDidChange(const std::optional<PageSelection>& selection) override
    {
        _selectedText.didChange(selection);
    }
    void pressesMark(const PressedMark& mark) override;

    // For marks, each page is a chapter.
    std::vector<std::string> chapterNames() override;
    void setMarks(MarksHooks marks) override { _marks = std::move(marks); }
    void runChapterScript() override;
    void ask(std::string script, std::function<void(std::int64_t)> answer) override;
    void askText(std::string script, std::function<void(const std::string&)> answer) override;
    void goToMark(const MarkAnchor& anchor) override;
    SelectedText& selectedText() { return _selectedText; }

private:
    // Returns the script that paints the marks of a page; empty if it has none.
    std::string marksScript(std::uint64_t page) const;
    Task<void> paintMarks();
    // Called before a jump leaves the page.
    void leavePage();
    void goInHistory(std::optional<SeenPage> (JumpHistory::*step)(const std::optional<SeenPage>&));
    std::optional<SeenPage> seenPage() const;
    void goToPage(std::uint64_t index);
    void load(const Url& url);
    void loadPage(std::uint64_t index);
    void prepare(const DataSource& source);
    void pageTurn(int tag);
    void pageTurnTo(std::int32_t page);
    void showLocation();
    Task<void> preparePage(DataSource source);
    Task<void> fitWindow();
    Task<void> rescale();
    // Returns whether only the divider has moved since the last call.
    bool dividerHasMoved();
    Task<void> showMissingPage(DataSource source);
    void showPage(bool isMissing);
    // Prepares the page to which the user is likely to turn.
    void prepareNextPage();

    FixedWindow& _window;
    ReaderHub& _mainController;
    ReaderState& _state;
    RunLoop& _runLoop;
    ScriptResources _scripts;
    LocationBar _location;
    ContentsPane _contentsPane;
    std::vector<Url> _bookSplits;
    std::map<std::string, std::uint64_t> _splitIndexDict;
    std::uint64_t _activeSplitIndex = 0;
    JumpHistory _jumps;
    // True if the last jump came from the slider, which moves through many pages.
    bool _isSeeking = false;
    // True if the last page turn went back.
    bool _turnsBack = false;
    std::int32_t _numberOfColumns = 0;
    // True if the window has been fitted to the first page of the book.
    bool _fixedWindowFitted = false;
    // The number of the load that has been scaled.
    std::uint64_t _preparedLoad = 0;
    bool _rescalePending = false;
    // The pane sizes at the last check, in points.
    struct Panes {
        double width = 0;
        double height = 0;
        double contentsWidth = 0;
        bool areContentsHidden = false;
    };
    Panes _panes;
    LeavingLinks _leavingLinks;
    std::unique_ptr<RunLoop::Timer> _pageTimer;
    MarksHooks _marks;
    // Marks are painted in the shown page and in the prepared one.
    struct {
        bool isHere = false;
        std::optional<std::uint64_t> ahead;
    } _painted;
    SelectedText _selectedText;

    SplitRules _splitRules;
    // Declared last, so that pending work ends before the members that it uses.
    SerialQueue _queue;
};

}
