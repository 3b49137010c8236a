#pragma once

#include "app/BookClosing.hpp"
#include "app/BookOpening.hpp"
#include "app/BookRemoval.hpp"
#include "app/ImportPanels.hpp"
#include "app/LibraryEventMonitor.hpp"
#include "app/LibraryMaintenance.hpp"
#include "app/LibraryMarks.hpp"
#include "app/LibraryState.hpp"
#include "app/StartUp.hpp"
#include "epub/EpubImport.hpp"
#include "library_views/LibraryHub.hpp"
#include "library_views/LibraryViews.hpp"
#include "reader/ReaderHub.hpp"
#include "running/Task.hpp"

#include <list>
#include <memory>
#include <string>
#include <vector>

namespace pagora {

// The hub: the program's delegate. Owns the catalogue, the library views and the reader windows, which access it
// through the narrow interfaces that they declare. Main thread only, except for the functions of `ImportHub`.
class MainController : public LibraryHub, public ReaderHub, public ImportHub {
public:
    MainController(const Platform& platform, ScriptResources scripts);
    ~MainController() override;

    // The steps of the launch, in the order of the desktop's calls.
    void applicationWillFinishLaunching();
    void applicationDidFinishLaunching();
    void applicationWillTerminate();
    // Called when the program ends. Closes the open book and stores its place.
    void finishReading();
    bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }
    // Called before the library window closes, which ends the program. Returns whether it may.
    bool windowShouldClose();
    // Called when the program is started a second time. Brings its window to the front.
    void applicationWasReopened();

    // Called for files that the desktop passes to the program, as absolute paths.
    bool openFile(const std::string& path) { return true; }
    void openFiles(std::vector<std::string> paths);

    void importDialog();
    // Lets the user choose files. They are imported if the message is that of an import, and otherwise ignored.
    void filesLoadingWithMessage(const std::string& message);
    // Lets the user choose a folder. The books in it and its subfolders are imported.
    void importFolder();
    // Imports the files. During the launch and while the library is reset, the files wait.
    void draggedEpubs(std::vector<std::string> files) override;
    void cancelProcess() { _import.cancelProcess(); }
    BookInfoPtr getBookInfo(const std::string& archivePath, StopOnErrors stopOnErrors);
    // Shows an alert with a message and a description. Not called by the program.
    void showAlert(const std::string& message, const std::string& description);

    void openSettings();
    void saveSettings();

    void resetAppSettings();
    void resetEpubLibrary(std::string folder, std::string mode);
    void showLibFolderInFinder() { _maintenance.showLibFolderInFinder(); }
    void killTempItems();
    void testAction() { _maintenance.testAction(); }

    // Opens the guide to the program, which is not added to the library.
    void openGuide();

    // Hides the progress window.
    void timerFinish();
    void timerFireMethod() { }

    void takeImageView() { _views.takeImageView(); }
    void takeTableView() { _views.takeTableView(); }
    void bookListMode() { _views.bookListMode(); }
    // Called when books were added. Ends a search, so that they are visible.
    void refreshBookView() override;

    void deleteItemFromCollection(const BookInfoPtr& book, ByRemovingFromDisk remove) override;
    void deleteItemsFromLibrary(const std::vector<BookInfoPtr>& books) override;

    // Opens the record, or the first selected one in the library view that is shown.
    void sendDoubleClick(const BookInfoPtr& book);
    void sendDoubleClick() override;
    // Opens the book of the library that was closed last, if there is one.
    void continueReading();
    BookInfoPtr bookToContinue() const;
    void _closeEPUB() override;

    LibraryState& state() { return _state; }
    LibraryViews& views() { return _views; }
    EpubImport& import() { return _import; }
    const BookInfoPtr& currentBook() const { return _state.reading.currentBook; }

    Window& mainWindow() override { return _platform.libraryWindow.mainWindow(); }
    bool fullScreenMode() const override { return _state.windows.fullScreenMode; }
    void setFullScreenMode(bool fullScreen) override { _state.windows.fullScreenMode = fullScreen; }
    bool inCloseEpubMethod() const override { return _state.windows.inCloseEpubMethod(); }
    void setInCloseEpubMethod(bool closing) override { _state.windows.setInCloseEpubMethod(closing); }
    void windowDidExitFullScreen() override;
    void selectFile(const std::string& path) override { _platform.workspace.selectFile(path); }
    void openURL(const Url& url, RequestedBy requestedBy) override { _platform.workspace.openURL(url, requestedBy); }
    void lookUp(const std::string& text) override { _platform.workspace.lookUp(text); }

    const LibraryFolders& folders() const override { return _state.folders; }
    void addFaultyBook(const std::string& line) override { _state.faultyBooks.add(line); }
    void set_bookInfo(BookInfoPtr book) override { _state._bookInfo = std::move(book); }
    void set_epubPath(const std::string& path) override { _state._epubPath = path; }
    Catalogue& catalogue() override { return _state.catalogue; }
    UserDefaults& defaults() override { return _platform.defaults; }
    Workspace& workspace() override { return _platform.workspace; }
    RunLoop& runLoop() override { return _platform.runLoop; }
    FaultyBooks& faultyBooks() override { return _state.faultyBooks; }

private:
    Task<void> finishPagoraInit();
    void takeUpWaitingFiles();
    Task<void> resetAndGoOn();
    // Asks for confirmation, because a reset removes all reading positions.
    void askToReset();
    Task<void> openGuideBook();
    Task<void> openHandedOver(std::vector<std::string> paths);
    Task<void> openSingle(std::string path);
    // Keeps a task alive until it is finished.
    void keep(Task<void> task);
    // Shows that a book has no archive.
    void openWithoutArchive(const BookInfoPtr& book);
    void makeWay();
    // Prepares the next reader window after `delay` seconds.
    void prepareNextBook(double delay);

    Platform _platform;
    LibraryState _state;
    LibraryViews _views;
    EpubImport _import;
    ImportPanels _importPanels;
    LibraryMarks _marks;
    BookOpening _opening;
    BookClosing _closing;
    BookRemoval _removal;
    LibraryMaintenance _maintenance;
    LibraryEventMonitor _monitor;
    std::unique_ptr<RunLoop::Timer> _launchDelay;
    std::unique_ptr<RunLoop::Timer> _warmUpDelay;
    // Files that the desktop passed during the launch or a reset. They are opened afterwards.
    std::vector<std::vector<std::string>> _openRequests;
    // Files that were dropped or chosen in the meantime.
    std::vector<std::vector<std::string>> _importRequests;
    std::list<Task<void>> _tasks;
};

}
