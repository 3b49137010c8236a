#pragma once

#include "controls/Controls.hpp"
#include "desktop/Window.hpp"
#include "library_views/LibraryViewSurface.hpp"
#include "notebook/MarksExportPanel.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Actions of the user in the library window and its menu. Called from the main loop.
struct LibraryWindowActions {
    // Called before the library window closes. Returns whether it may.
    std::function<bool()> windowShouldClose;
    std::function<void()> readBook;
    std::function<void()> bookListMode;
    std::function<void()> importDialog;
    std::function<void()> importFolder;
    std::function<void()> exportMarks;
    std::function<void()> continueReading;
    // Returns the book to continue with; null if there is none.
    std::function<BookInfoPtr()> bookToContinue;
    // Returns the books that were read, most recent first.
    std::function<std::vector<BookInfoPtr>()> booksRead;
    std::function<void()> cancelProcess;
    std::function<void()> openSettings;
    std::function<void()> saveSettings;
    std::function<void()> showLibFolderInFinder;
    std::function<void()> resetAppSettings;
    std::function<void()> openGuide;
    std::function<void()> testAction;
};

// A key press or a left-button press in one of the program's windows, before any control gets it.
struct LibraryEvent {
    enum class Kind { KeyDown, LeftMouseDown };
    // The keys A and BackSpace/Delete by their classic codes.
    static constexpr int keyA = 0;
    static constexpr int keyDelete = 51;

    Kind kind = Kind::KeyDown;
    int keyCode = -1;
    // True if Control is held.
    bool command = false;
};

// The library window, with the progress, error and settings windows of the same layout. Controls have their names in
// the layout. Main thread only.
class LibraryWindow : public LibraryViewHost {
public:
    virtual void setActions(LibraryWindowActions actions) = 0;

    virtual Window& mainWindow() = 0;
    virtual Window& errorWin() = 0;
    virtual TextField& errorList() = 0;
    virtual Window& indicatorWindow() = 0;
    virtual TextField& processLabel() = 0;
    virtual ProgressIndicator& processIndicator() = 0;
    virtual ProgressIndicator& progressBar() = 0;
    virtual TextField& procText() = 0;
    virtual Button& stopButton() = 0;
    virtual Window& settingsWin() = 0;
    // Segments with the tags 1 ("Copy") and 2 ("Move"), in this order.
    virtual SegmentedControl& dragDropMatrix() = 0;
    // The toolbar's context menu; null if the toolbar has none.
    virtual Menu* toolBarMenu() = 0;

    // Ends the program.
    virtual void terminate() = 0;

    // Shows an alert with the texts and one button. Does not block.
    virtual void runAlertPanel(const std::string& title, const std::string& message, const std::string& button) = 0;

    // Lets the user choose files with the extension "epub"; `chosen` receives their paths in order, or nothing if the
    // user cancelled. Starts in the process's current folder.
    virtual void runOpenPanel(
        const std::string& message, bool multiple, std::function<void(std::optional<std::vector<std::string>>)> chosen)
        = 0;

    // Lets the user choose a folder; `chosen` receives its path, or nullopt if the user cancelled.
    virtual void runFolderPanel(const std::string& message, std::function<void(std::optional<std::string>)> chosen) = 0;

    // Returns the panel that asks which marks of the library are exported.
    virtual MarksExportPanel& marksExportPanel() = 0;

    // Sets the monitor for events in the program's windows; an empty function removes it. It returns whether the event
    // is swallowed.
    virtual void setEventMonitor(std::function<bool(const LibraryEvent&)> monitor) = 0;
};

}
