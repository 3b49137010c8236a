#pragma once

#include "contents/SplitView.hpp"
#include "contents/TocView.hpp"
#include "controls/Controls.hpp"
#include "desktop/Window.hpp"
#include "notebook/MarksWindow.hpp"
#include "page/WebView.hpp"
#include "panels/SearchPane.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace pagora {

// Actions on the selected text.
struct SelectionActions {
    // Shows the bar at the selected text; `endSelection` hides it.
    std::function<void()> askForSelection;
    std::function<void()> endSelection;
    std::function<void()> copySelection;
    std::function<void()> findSelection;
    std::function<void()> lookUpSelection;
};

// Actions of the user in a reader window. Each is called from the main loop, after the control's event handling, so it
// may close the window.
struct ReaderWindowActions : SearchActions, SelectionActions {
    std::function<void()> closeEPUB;
    std::function<void()> toggleLeftView;
    std::function<void()> toggleFullScreen;
    // 0 turns to the previous page, 1 to the next.
    std::function<void(int tag)> changePage;
    std::function<void()> goToFirstPage;
    std::function<void()> goToLastPage;
    // A flick over the page; positive if the fingers move to the right.
    std::function<void(double deltaX)> scrollWheelBegan;
    std::function<void()> windowDidEnterFullScreen;
    std::function<void()> windowDidExitFullScreen;
    std::function<void()> displayOptions;
    // Changes the column count.
    std::function<void()> changeWidth;
    // Goes back to the page before the last jump, and forward again.
    std::function<void()> goBack;
    std::function<void()> goForward;
    // Goes to a fraction of the book, from 0 to 100.
    std::function<void(double percentage)> goToPercentage;
    // Goes to a page of the chapter, or of a fixed-layout book, from 1.
    std::function<void(std::int64_t page)> goToPage;
    // Goes to a page by its index in the list of printed pages.
    std::function<void(std::size_t index)> goToPrintedPage;
    // Shows the page of the note that is open.
    std::function<void()> goToNote;
};

// The common controls of reader windows, named as in their layouts. Main thread only.
class ReaderWindow {
public:
    virtual ~ReaderWindow() = default;
    virtual Window& window() = 0;
    virtual void setActions(ReaderWindowActions actions) = 0;

    virtual SplitView& mainSplitView() = 0;
    virtual TocView& tocView() = 0;
    virtual Button& goLeftButton() = 0;
    virtual Button& goRightButton() = 0;
    virtual ColorView& bgView() = 0;
    virtual WebView& webView() = 0;
    // Shows a message instead of the page. Optional.
    virtual void setPageIsMissing(bool isMissing) { }
    // Sets the book's title and author, for display; the author may be empty. Optional.
    virtual void setBook(const std::string& title, const std::string& author) { }
    // Shows that the book has no pages, with a way back to the library.
    virtual void setNothingToShow(bool isNothing) { }
    // Shows a loading indicator if loading takes longer than a moment. Optional.
    virtual void setLoading(bool isLoading) { }
    // Sets whether jumps can go back and forward from the page that is shown. Optional.
    virtual void setHistory(bool canGoBack, bool canGoForward) { }
    // Sets the page numbers of the printed edition, in order. Optional.
    virtual void setPrintedPages(const std::vector<std::string>& labels) { }
    // Shows a bar with actions beside the selected text. Optional.
    virtual void showSelection(const PageSelection& selection) { }
    virtual void hideSelection() { }
    // Puts the text on the clipboard, unchanged. Optional.
    virtual void copy(const std::string& text) { }
    virtual TextField& locLabel() = 0;
    virtual Slider& locSlider() = 0;
};

// The layout "EpubWindow".
class EpubWindow : public ReaderWindow, public MarksWindow {
public:
    // Text size multiplier.
    virtual Slider& fontSizeSlider() = 0;
    // Three segments with the tags 1, 2 and 3.
    virtual SegmentedControl& colorControl() = 0;
    virtual PopUpButton& fontMenu() = 0;
    virtual TextField& searchField() = 0;
    virtual SearchPane& searchPane() = 0;
    // Shows a note beside its reference. Optional.
    virtual void showNote(const std::string& text, const PointedLink& reference) { }
    // Called when the pointer has left the reference. Optional.
    virtual void pointerLeftReference() { }
    // Sets the book's language, such as "en" or "pt-BR". Tells the user once if no installed font has its letters.
    // Optional.
    virtual void setBookLanguage(const std::string& language) { }
    // Puts the text into the search field, shows the field and searches for it.
    virtual void searchFor(const std::string& text) { }
    // Shows the number of the page in its chapter, from 1, and the number of pages of the chapter. Optional.
    virtual void setPageOfChapter(std::int64_t page, std::int64_t count) { }
    // Shows the number of columns.
    virtual void setColumnCount(std::int32_t columns) = 0;
    // The panel with the display options.
    virtual Panel& displayOptions() = 0;
    // Returns every installed font family, in the system's order.
    virtual std::vector<std::string> availableFontFamilies() const = 0;
};

// The layout "FixedLayout".
class FixedWindow : public ReaderWindow, public MarksWindow { };

// Makes reader windows from their layouts.
class ReaderWindowFactory {
public:
    virtual ~ReaderWindowFactory() = default;
    // The layout "EpubWindow".
    virtual std::unique_ptr<EpubWindow> makeEpubWindow() = 0;
    // The layout "FixedLayout".
    virtual std::unique_ptr<FixedWindow> makeFixedWindow() = 0;
    // Prepares the next window, so that it opens quickly. Called when the program is idle.
    virtual void prepareNextWindow() { }
};

}
