#pragma once

#include "library_window/LibraryWindow.hpp"
#include "tests/support/FakeControls.hpp"
#include "tests/support/FakeWindow.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace pagora::test {

// A library view without display. `click` and `select` simulate the user.
class FakeLibraryViewSurface : public LibraryViewSurface {
public:
    FakeLibraryViewSurface(const char* layoutName, ArrayController& shown)
        : layout(layoutName)
        , books(shown)
    {
    }

    void makeFirstResponder() override { ++timesFocused; }
    void setHandler(Handler* value) override { handler = value; }
    void setDropDelegate(DropDelegate* value) override { dropDelegate = value; }
    void popUpContextMenu(const BookMenu& menu) override { menus.push_back(menu); }

    void select(std::vector<std::size_t> indexes)
    {
        books.setSelectionIndexes(std::move(indexes));
        if (handler)
            handler->userDidSelect();
    }
    // Clicks the selection, or an empty part if nothing is selected.
    void click(int clickCount = 1)
    {
        if (handler)
            handler->mouseDown(clickCount);
    }
    // A left click on one item.
    void clickItem(std::size_t index)
    {
        if (handler)
            handler->userWillClick();
        books.setSelectionIndexes({ index });
        click();
    }
    // Opens the menu on an item or on an empty part.
    void rightClick(std::optional<std::size_t> item)
    {
        if (handler)
            handler->rightMouseUp(item);
    }
    // Chooses an item of the last menu.
    void choose(const std::string& title)
    {
        const auto menu = menus.back();
        for (const auto& item : menu) {
            if (item.title == title && item.action)
                item.action();
        }
    }
    // The titles of the last menu, separators as "-"; empty if there was no menu.
    std::vector<std::string> menuTitles() const
    {
        std::vector<std::string> titles;
        for (const auto& item : menus.empty() ? BookMenu {} : menus.back())
            titles.push_back(item.isSeparator() ? "-" : item.title);
        return titles;
    }

    const std::string layout;
    ArrayController& books;
    Handler* handler = nullptr;
    DropDelegate* dropDelegate = nullptr;
    std::vector<BookMenu> menus;
    int timesFocused = 0;
};

class FakeMarksExportPanel : public MarksExportPanel {
public:
    void open(std::function<void(const MarksExportRequest&)> whenChosen, std::function<void()> whenCancelled) override
    {
        start = std::move(whenChosen);
        cancel = std::move(whenCancelled);
    }
    void setProgress(std::size_t done, std::size_t count) override
    {
        progress.push_back(std::to_string(done) + " of " + std::to_string(count));
        if (onProgress)
            onProgress();
    }
    void setOutcome(const std::string& line) override { outcome = line; }

    std::function<void(const MarksExportRequest&)> start;
    std::function<void()> cancel;
    std::vector<std::string> progress;
    std::function<void()> onProgress;
    std::string outcome;
};

// The host of library views, for tests of views or as part of the library window.
template <typename Interface>
class FakeLibraryViewHostBase : public Interface {
public:
    std::unique_ptr<LibraryViewSurface> loadView(const char* layout, ArrayController& books) override
    {
        loadedLayouts.push_back(layout);
        return std::make_unique<FakeLibraryViewSurface>(layout, books);
    }
    void setContentView(LibraryViewSurface& view) override
    {
        shown = static_cast<FakeLibraryViewSurface*>(&view);
        if (journal)
            journal->push_back("contentView.set " + shown->layout);
    }
    void removeContentView(LibraryViewSurface& view) override
    {
        if (shown == &view)
            shown = nullptr;
    }
    void runAlert(const std::string& informativeText, const std::string& firstButton, const std::string& secondButton,
        std::function<void(int code)> answered) override
    {
        questions.push_back({ informativeText, firstButton, secondButton, std::move(answered) });
    }
    void endSearch() override
    {
        ++timesSearchEnded;
        if (journal)
            journal->push_back("endSearch");
    }
    bool isActive() const override { return active; }
    void activateIgnoringOtherApps() override
    {
        active = true;
        if (journal)
            journal->push_back("activate");
    }
    Button& readerButton() override { return readerButtonFake; }
    SegmentedControl& bListControl() override { return bListControlFake; }

    // Every alert with two buttons, in order; tests answer with `answered`.
    struct Question {
        std::string text;
        std::string firstButton;
        std::string secondButton;
        std::function<void(int code)> answered;
    };
    std::vector<Question> questions;
    // The layouts of all built views, in order.
    std::vector<std::string> loadedLayouts;
    // The view in the window.
    FakeLibraryViewSurface* shown = nullptr;
    int timesSearchEnded = 0;
    // True if the program is active.
    bool active = true;
    FakeButton readerButtonFake;
    FakeSegmentedControl bListControlFake;
    Journal* journal = nullptr;
};

using FakeLibraryViewHost = FakeLibraryViewHostBase<LibraryViewHost>;

// The library window. Tests access its parts by the names that end in "Fake".
class FakeLibraryWindow : public FakeLibraryViewHostBase<LibraryWindow> {
public:
    struct Alert {
        std::string title;
        std::string message;
        std::string button;
        bool operator==(const Alert&) const = default;
    };
    struct Panel {
        std::string message;
        bool multiple = false;
        std::function<void(std::optional<std::vector<std::string>>)> chosen;
    };

    struct FolderPanel {
        std::string message;
        std::function<void(std::optional<std::string>)> chosen;
    };

    void setActions(LibraryWindowActions value) override { actions = std::move(value); }
    Window& mainWindow() override { return mainWindowFake; }
    Window& errorWin() override { return errorWinFake; }
    TextField& errorList() override { return errorListFake; }
    Window& indicatorWindow() override { return indicatorWindowFake; }
    TextField& processLabel() override { return processLabelFake; }
    ProgressIndicator& processIndicator() override { return processIndicatorFake; }
    ProgressIndicator& progressBar() override { return progressBarFake; }
    TextField& procText() override { return procTextFake; }
    Button& stopButton() override { return stopButtonFake; }
    Window& settingsWin() override { return settingsWinFake; }
    SegmentedControl& dragDropMatrix() override { return dragDropMatrixFake; }
    Menu* toolBarMenu() override
    {
        if (journal)
            journal->push_back("toolBarMenu");
        return menu ? &*menu : nullptr;
    }
    void terminate() override { ++timesTerminated; }
    void runAlertPanel(const std::string& title, const std::string& message, const std::string& button) override
    {
        alerts.push_back({ title, message, button });
    }
    void runOpenPanel(const std::string& message, bool multiple,
        std::function<void(std::optional<std::vector<std::string>>)> chosen) override
    {
        panels.push_back({ message, multiple, std::move(chosen) });
    }
    void runFolderPanel(const std::string& message, std::function<void(std::optional<std::string>)> chosen) override
    {
        folderPanels.push_back({ message, std::move(chosen) });
    }
    MarksExportPanel& marksExportPanel() override { return exportPanel; }
    void setEventMonitor(std::function<bool(const LibraryEvent&)> value) override { monitor = std::move(value); }

    FakeMarksExportPanel exportPanel;

    // The parts share one journal.
    void keepJournal(Journal& lines)
    {
        journal = &lines;
        mainWindowFake.keepJournal(lines, "mainWindow");
        errorWinFake.keepJournal(lines, "errorWin");
        indicatorWindowFake.keepJournal(lines, "indicatorWindow");
        bListControlFake.keepJournal(lines, "bListControl");
    }

    LibraryWindowActions actions;
    FakeWindow mainWindowFake;
    FakeWindow errorWinFake;
    FakeTextField errorListFake;
    FakeWindow indicatorWindowFake;
    FakeTextField processLabelFake;
    FakeProgressIndicator processIndicatorFake;
    FakeProgressIndicator progressBarFake;
    FakeTextField procTextFake;
    FakeButton stopButtonFake;
    FakeWindow settingsWinFake;
    FakeSegmentedControl dragDropMatrixFake;
    std::optional<FakeMenu> menu;
    int timesTerminated = 0;
    std::vector<Alert> alerts;
    std::vector<Panel> panels;
    std::vector<FolderPanel> folderPanels;
    std::function<bool(const LibraryEvent&)> monitor;
};

}
