#pragma once

#include "contents/tocLinkTextField.hpp"
#include "reader/EpubWindow.hpp"
#include "tests/support/FakeControls.hpp"
#include "tests/support/FakeWebView.hpp"
#include "tests/support/FakeWindow.hpp"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace pagora::test {

class FakeTocView : public TocView {
public:
    Rect frame() const override { return rect; }
    void setFrame(const Rect& value) override { rect = value; }
    double clipHeight() const override { return clip; }
    void removeAllSubviews() override { links.clear(); }
    void addSubviews(const std::vector<tocLinkTextField*>& added) override
    {
        links.insert(links.end(), added.begin(), added.end());
    }
    void setNeedsDisplay(std::int64_t tag) override { redrawn.push_back(tag); }
    void scrollToPoint(double x, double y) override { scrolledTo.emplace_back(x, y); }

    Rect rect { 0, 0, 250, 600 };
    double clip = 600;
    std::vector<tocLinkTextField*> links;
    std::vector<std::int64_t> redrawn;
    std::vector<std::pair<double, double>> scrolledTo;
};

class FakeMarksPane : public MarksPane {
public:
    void setLines(const ListedMarks& listed) override
    {
        lines = *listed.lines;
        // Describes the last change of the list.
        if (listed.sameAtStart + listed.sameAtEnd < lines.size()) {
            sameAtStart = listed.sameAtStart;
            sameAtEnd = listed.sameAtEnd;
        }
    }
    void setProblem(const std::string& text) override { problem = text; }
    void setShown(bool value) override { isShown = value; }

    std::vector<MarkLine> lines;
    std::size_t sameAtStart = 0;
    std::size_t sameAtEnd = 0;
    std::string problem;
    bool isShown = false;
};

class FakeSearchPane : public SearchPane {
public:
    void setResultsShown(bool value) override { isShown = value; }
    void removeAllResults() override { lines.clear(); }
    void addChapter(const std::string& name) override { lines.push_back("# " + name); }
    void addResults(const std::vector<FoundText>& results) override
    {
        for (const auto& found : results)
            lines.push_back(found.before + "[" + found.match + "]" + found.after);
    }
    void setCount(std::size_t value, bool over) override
    {
        count = value;
        isOver = over;
    }
    void selectResult(std::optional<std::size_t> index) override { selected = index; }
    void emptyField() override { ++timesEmptied; }

    bool isShown = false;
    std::vector<std::string> lines;
    std::size_t count = 0;
    bool isOver = false;
    std::optional<std::size_t> selected;
    int timesEmptied = 0;
};

class FakeSplitView : public SplitView {
public:
    void setDelegate(SplitViewDelegate* value) override { delegate = value; }
    Rect frame() const override { return rect; }
    double dividerThickness() const override { return divider; }
    Rect frameOfSubview(int subview) const override { return frames.at(static_cast<std::size_t>(subview)); }
    void setFrameOfSubview(int subview, const Rect& frame) override
    {
        frames.at(static_cast<std::size_t>(subview)) = frame;
    }
    bool isSubviewHidden(int subview) const override { return hidden.at(static_cast<std::size_t>(subview)); }
    void setSubviewHidden(int subview, bool value) override { hidden.at(static_cast<std::size_t>(subview)) = value; }

    SplitViewDelegate* delegate = nullptr;
    Rect rect { 0, 0, 1051, 600 };
    double divider = 1;
    std::vector<Rect> frames { { 0, 0, 250, 600 }, { 251, 0, 800, 600 } };
    std::vector<bool> hidden { false, false };
};

// The parts of a reader window. They are shared, so that a test can check them after the window is destroyed.
struct ReaderWindowParts {
    FakeWindow window;
    FakeSplitView mainSplitView;
    FakeTocView tocView;
    FakeButton goLeftButton;
    FakeButton goRightButton;
    FakeColorView bgView;
    FakeWebView webView;
    FakeTextField locLabel;
    FakeSlider locSlider;
    FakeSlider fontSizeSlider;
    FakeSegmentedControl colorControl;
    FakePopUpButton fontMenu;
    FakeTextField searchField;
    FakeSearchPane searchPane;
    FakeMarksPane marksPane;
    MarkActions markActions;
    bool isBookmarked = false;
    std::optional<EditedMark> editedMark;
    std::string undoText;
    std::string notice;
    std::string copiedMarks;
    bool canGoBack = false;
    bool canGoForward = false;
    FakeWindow displayOptions;
    int columnCount = 0;
    std::vector<std::string> fontFamilies { "Cantarell", "Georgia", "Noto Sans" };
    ReaderWindowActions actions;
    bool pageIsMissing = false;
    bool isLoading = false;
    bool hasNothingToShow = false;
    // The shown selection, and the texts that were searched and copied.
    std::optional<PageSelection> selection;
    std::vector<std::string> searchedFor;
    std::vector<std::string> copied;
    std::int64_t pageOfChapter = 0;
    std::int64_t pagesOfChapter = 0;
    // True if the window still exists.
    bool open = true;

    ReaderWindowParts()
    {
        fontSizeSlider.least = 0.5;
        fontSizeSlider.most = 2.5;
        locSlider.rect = { 100, 10, 600, 20 };
        locLabel.rect = { 720, 10, 60, 20 };
    }
};

// The common part of both kinds of reader window; `Interface` is EpubWindow or ReaderWindow.
template <typename Interface>
class FakeReaderWindowBase : public Interface {
public:
    explicit FakeReaderWindowBase(std::shared_ptr<ReaderWindowParts> shared = std::make_shared<ReaderWindowParts>())
        : parts(std::move(shared))
    {
    }
    ~FakeReaderWindowBase() override { parts->open = false; }

    Window& window() override { return parts->window; }
    void setActions(ReaderWindowActions actions) override { parts->actions = std::move(actions); }
    SplitView& mainSplitView() override { return parts->mainSplitView; }
    TocView& tocView() override { return parts->tocView; }
    Button& goLeftButton() override { return parts->goLeftButton; }
    Button& goRightButton() override { return parts->goRightButton; }
    ColorView& bgView() override { return parts->bgView; }
    WebView& webView() override { return parts->webView; }
    void setPageIsMissing(bool isMissing) override { parts->pageIsMissing = isMissing; }
    void setLoading(bool isLoading) override { parts->isLoading = isLoading; }
    void setNothingToShow(bool isNothing) override { parts->hasNothingToShow = isNothing; }
    void setHistory(bool canGoBack, bool canGoForward) override
    {
        parts->canGoBack = canGoBack;
        parts->canGoForward = canGoForward;
    }
    TextField& locLabel() override { return parts->locLabel; }
    Slider& locSlider() override { return parts->locSlider; }

    std::shared_ptr<ReaderWindowParts> parts;
};

// The part that shows marks and selected text.
template <typename Interface>
class FakeMarkedWindow : public FakeReaderWindowBase<Interface> {
public:
    using FakeReaderWindowBase<Interface>::FakeReaderWindowBase;
    using FakeReaderWindowBase<Interface>::parts;
    void showSelection(const PageSelection& selection) override { parts->selection = selection; }
    void hideSelection() override { parts->selection = std::nullopt; }
    void setMarkActions(MarkActions actions) override { parts->markActions = std::move(actions); }
    MarksPane& marksPane() override { return parts->marksPane; }
    void setBookmarked(bool value) override { parts->isBookmarked = value; }
    void showMark(const EditedMark& mark, const std::optional<Rect>&) override { parts->editedMark = mark; }
    void offerUndo(const std::string& text) override { parts->undoText = text; }
    void copyText(const std::string& text) override { parts->copiedMarks = text; }
    void showNotice(const std::string& text) override { parts->notice = text; }
};

using FakeFixedWindow = FakeMarkedWindow<FixedWindow>;

class FakeEpubWindow : public FakeMarkedWindow<EpubWindow> {
public:
    using FakeMarkedWindow::FakeMarkedWindow;
    void setPageOfChapter(std::int64_t page, std::int64_t count) override
    {
        parts->pageOfChapter = page;
        parts->pagesOfChapter = count;
    }
    Slider& fontSizeSlider() override { return parts->fontSizeSlider; }
    SegmentedControl& colorControl() override { return parts->colorControl; }
    PopUpButton& fontMenu() override { return parts->fontMenu; }
    TextField& searchField() override { return parts->searchField; }
    SearchPane& searchPane() override { return parts->searchPane; }
    void searchFor(const std::string& text) override { parts->searchedFor.push_back(text); }
    void copy(const std::string& text) override { parts->copied.push_back(text); }
    void setColumnCount(std::int32_t columns) override { parts->columnCount = columns; }
    Panel& displayOptions() override { return parts->displayOptions; }
    std::vector<std::string> availableFontFamilies() const override { return parts->fontFamilies; }
};

// Keeps the parts of all windows that it created, in order.
class FakeReaderWindowFactory : public ReaderWindowFactory {
public:
    std::unique_ptr<EpubWindow> makeEpubWindow() override
    {
        return std::make_unique<FakeEpubWindow>(newParts(epubWindows, "epubWin"));
    }
    std::unique_ptr<FixedWindow> makeFixedWindow() override
    {
        return std::make_unique<FakeFixedWindow>(newParts(fixedWindows, "fixedWin"));
    }
    void prepareNextWindow() override
    {
        ++timesPrepared;
        if (onPrepare)
            onPrepare();
    }

    std::vector<std::shared_ptr<ReaderWindowParts>> epubWindows;
    std::vector<std::shared_ptr<ReaderWindowParts>> fixedWindows;
    int timesPrepared = 0;
    std::function<void()> onPrepare;
    Journal* journal = nullptr;
    // True if new windows hold the reply to `laidOut`.
    bool holdsLayout = false;
    // True if new windows are in full screen, as the library was.
    bool areFullScreen = false;

private:
    std::shared_ptr<ReaderWindowParts> newParts(std::vector<std::shared_ptr<ReaderWindowParts>>& list, const char* name)
    {
        auto parts = std::make_shared<ReaderWindowParts>();
        parts->window.holdsLayout = holdsLayout;
        parts->window.fullScreen = areFullScreen;
        if (journal) {
            parts->window.keepJournal(*journal, name);
            parts->webView.journal = journal;
            journal->push_back(std::string(name) + ".make");
        }
        list.push_back(parts);
        return parts;
    }
};

}
