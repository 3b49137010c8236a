#include "app/MainController.hpp"

#include "app/Guide.hpp"
#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "catalogue/ReadingHistory.hpp"

namespace pagora {

namespace {

// Time for the window and for files from the desktop to arrive, in seconds.
constexpr double launchDelay = 0.05;

// The page engine starts after the library has been drawn, because its start takes as much processor time as a launch.
constexpr double warmUpDelay = 1.5;
// The delay after a book was closed, when the library is already drawn.
constexpr double closingDelay = 0.15;

constexpr const char* resetText = N_("Reset the library? All settings and the places where you stopped reading are "
                                     "forgotten, and every book in the library folder is added anew.");

ImportOutlets importOutlets(LibraryWindow& window)
{
    return { window.processIndicator(), window.progressBar(), window.procText(), window.stopButton(),
        window.indicatorWindow(), window.errorWin(), window.errorList() };
}

}

MainController::MainController(const Platform& platform, ScriptResources scripts)
    : _platform(platform)
    , _views(platform.libraryWindow, *this, [this] { return _state.catalogue.bookList(); })
    , _import(*this, importOutlets(platform.libraryWindow))
    , _importPanels(platform, [this](std::vector<std::string> files) { draggedEpubs(std::move(files)); })
    , _marks(platform, _state)
    , _opening(platform, _state, *this, std::move(scripts))
    , _closing(platform, _state, _import)
    , _removal(platform, _state, _views)
    , _maintenance(platform, _state, _views, _import)
    , _monitor(platform.libraryWindow, _views, [this] {
        if (auto* active = _views.activeViewController())
            active->bookView().removeBooks();
    })
{
    _state.keptPages = KeptPages(appendingPathComponent(platform.defaults.folder(), "pages"));
    LibraryWindowActions actions;
    actions.windowShouldClose = [this] { return windowShouldClose(); };
    actions.readBook = [this] { sendDoubleClick(); };
    actions.bookListMode = [this] { bookListMode(); };
    actions.importDialog = [this] { importDialog(); };
    actions.importFolder = [this] { importFolder(); };
    actions.exportMarks = [this] { _marks.askForExport(); };
    actions.continueReading = [this] { continueReading(); };
    actions.bookToContinue = [this] { return bookToContinue(); };
    actions.booksRead = [this] { return ReadingHistory(_platform.defaults).all(*_state.catalogue.bookList()); };
    actions.cancelProcess = [this] { cancelProcess(); };
    actions.openSettings = [this] { openSettings(); };
    actions.saveSettings = [this] { saveSettings(); };
    actions.showLibFolderInFinder = [this] { showLibFolderInFinder(); };
    actions.resetAppSettings = [this] { askToReset(); };
    actions.openGuide = [this] { openGuide(); };
    actions.testAction = [this] { testAction(); };
    platform.libraryWindow.setActions(std::move(actions));
}

MainController::~MainController() = default;

void MainController::applicationWillFinishLaunching()
{
    _state.launch.willFinish();
}

void MainController::applicationDidFinishLaunching()
{
    _monitor.install();
    _state.launch.didFinish();
    _state.reading.origin = Reading::Origin::Library;
    _launchDelay = _platform.runLoop.performAfterDelay(launchDelay, [this] { keep(finishPagoraInit()); });
}

Task<void> MainController::finishPagoraInit()
{
    StartUp startUp(_platform, _state, _views, _import);
    co_await startUp.initPagoraData();
    const auto files
        = std::exchange(_state.launch._filesToOpenByApp, std::nullopt).value_or(std::vector<std::string> {});
    // A single file is opened immediately, so the page view starts while the file is imported.
    if (files.size() == 1)
        _platform.readerWindows.prepareNextWindow();
    if (!files.empty()) {
        auto imported = _platform.runLoop.performInBackground(
            [this, files] { _import.booksFromFilesArray(files, HandedOver::Yes); });
        co_await imported;
        refreshBookView();
        if (files.size() == 1)
            sendDoubleClick(_state.catalogue.lastBook());
        _import.showFaultyBooks();
    }
    prepareNextBook(warmUpDelay);
    takeUpWaitingFiles();
}

void MainController::takeUpWaitingFiles()
{
    for (auto& request : std::exchange(_importRequests, {}))
        draggedEpubs(std::move(request));
    for (auto& request : std::exchange(_openRequests, {}))
        openFiles(std::move(request));
}

void MainController::applicationWillTerminate()
{
    _monitor.remove();
    _import.end();
}

void MainController::finishReading()
{
    if (_state.reading.hasWindow() || _state.reading._singleEpub())
        _closeEPUB();
}

bool MainController::windowShouldClose()
{
    _platform.libraryWindow.terminate();
    return true;
}

void MainController::applicationWasReopened()
{
    auto* const reader = _state.reading.window();
    (reader ? *reader : mainWindow()).makeKeyAndOrderFront();
}

void MainController::keep(Task<void> task)
{
    _tasks.remove_if([](const Task<void>& kept) { return kept.done(); });
    if (!task.done())
        _tasks.push_back(std::move(task));
}

void MainController::openFiles(std::vector<std::string> paths)
{
    if (_state.launch._PagoraLaunched() && _state.launch.filesHaveToWait()) {
        _openRequests.push_back(std::move(paths));
        return;
    }
    _state.launch._filesToOpenByApp = paths;
    if (_state.launch._PagoraLaunched())
        keep(openHandedOver(std::move(paths)));
}

Task<void> MainController::openHandedOver(std::vector<std::string> paths)
{
    if (paths.size() == 1)
        co_await openSingle(paths.front());
    else if (paths.size() > 1) {
        auto imported = _platform.runLoop.performInBackground(
            [this, paths] { _import.booksFromFilesArray(paths, HandedOver::Yes); });
        co_await imported;
        refreshBookView();
    }
    _state.launch._filesToOpenByApp = std::nullopt;
}

Task<void> MainController::openSingle(std::string path)
{
    const auto outcome = std::make_shared<EpubImport::SingleBook>();
    auto inspected
        = _platform.runLoop.performInBackground([this, path, outcome] { *outcome = _import.bookFromSingleFile(path); });
    co_await inspected;
    _import.showFaultyBooks();
    if (!outcome->book)
        co_return;
    if (!BookOpening::hasArchive(*outcome->book)) {
        openWithoutArchive(outcome->book);
        co_return;
    }
    // The same file was open before, so its copy is kept.
    auto& reading = _state.reading;
    if (reading.origin == Reading::Origin::Copy && reading.currentBook
        && reading.currentBook->epubPath() == outcome->book->epubPath()) {
        reading.origin = Reading::Origin::OwnFile;
        outcome->isCopied = true;
    }
    makeWay();
    reading.origin = outcome->isCopied ? Reading::Origin::Copy : Reading::Origin::OwnFile;
    _opening.open(outcome->book);
}

// Shows that the archive is missing. The open book stays open.
void MainController::openWithoutArchive(const BookInfoPtr& book)
{
    if (_state.reading.hasWindow())
        _opening.tellOfMissingArchive();
    else
        _opening.open(book);
}

void MainController::makeWay()
{
    if (_state.reading.hasWindow() || _state.reading._singleEpub())
        _closeEPUB();
    _closing.makeWay();
}

void MainController::importDialog()
{
    _importPanels.chooseFiles();
}

void MainController::filesLoadingWithMessage(const std::string& message)
{
    _importPanels.chooseFiles(message);
}

void MainController::importFolder()
{
    _importPanels.chooseFolder();
}

void MainController::draggedEpubs(std::vector<std::string> files)
{
    if (_state.launch.filesHaveToWait())
        _importRequests.push_back(std::move(files));
    else
        _import.draggedEpubs(std::move(files));
}

BookInfoPtr MainController::getBookInfo(const std::string& archivePath, StopOnErrors stopOnErrors)
{
    return _import.getBookInfo(archivePath, stopOnErrors);
}

void MainController::showAlert(const std::string& message, const std::string& description)
{
    _platform.libraryWindow.runAlertPanel(message, description, _("OK"));
}

void MainController::openSettings()
{
    auto& window = _platform.libraryWindow;
    const auto mode = _platform.defaults.stringForKey(defaults_keys::DragDropMode);
    auto& matrix = window.dragDropMatrix();
    const auto selectTag = [&matrix](int tag) {
        for (int row = 0; row < 2; ++row) {
            if (matrix.tag(row) == tag)
                matrix.setSelectedSegment(row);
        }
    };
    if (mode == "Copy")
        selectTag(1);
    else if (mode == "Move")
        selectTag(2);
    window.settingsWin().makeKeyAndOrderFront();
}

void MainController::saveSettings()
{
    auto& window = _platform.libraryWindow;
    const char* mode = window.dragDropMatrix().selectedSegment() == 1 ? "Move" : "Copy";
    _platform.defaults.setObject(defaults_keys::DragDropMode, mode);
    _platform.defaults.synchronize();
    window.settingsWin().orderOut();
}

void MainController::timerFinish()
{
    _platform.libraryWindow.indicatorWindow().orderOut();
}

void MainController::refreshBookView()
{
    _platform.libraryWindow.endSearch();
    _views.refreshBookView(_state.catalogue.bookList());
}

void MainController::deleteItemFromCollection(const BookInfoPtr& book, ByRemovingFromDisk remove)
{
    _removal.remove({ book }, remove);
}

void MainController::deleteItemsFromLibrary(const std::vector<BookInfoPtr>& books)
{
    _removal.remove(books, ByRemovingFromDisk::Yes);
}

void MainController::askToReset()
{
    constexpr int secondButton = 1001;
    _platform.libraryWindow.runAlert(_(resetText), _("Cancel"), _("Reset"), [this](int code) {
        if (code == secondButton)
            resetAppSettings();
    });
}

void MainController::resetAppSettings()
{
    if (!_state.launch.filesHaveToWait())
        keep(resetAndGoOn());
}

Task<void> MainController::resetAndGoOn()
{
    co_await _maintenance.resetAppSettings();
    takeUpWaitingFiles();
}

void MainController::resetEpubLibrary(std::string folder, std::string mode)
{
    keep(_maintenance.resetEpubLibrary(std::move(folder), std::move(mode)));
}

void MainController::killTempItems()
{
    keep(_maintenance.killTempItems());
}

void MainController::openGuide()
{
    if (!_state.reading.hasWindow() && !_state.launch.filesHaveToWait())
        keep(openGuideBook());
}

Task<void> MainController::openGuideBook()
{
    const auto guide = std::make_shared<BookInfoPtr>();
    auto inspected = _platform.runLoop.performInBackground([this, guide, folder = _state.folders.tempPath] {
        if (const auto path = writeGuide(folder))
            *guide = _import.bookFromOwnFile(*path);
    });
    co_await inspected;
    if (!*guide)
        co_return;
    makeWay();
    _state.reading.origin = Reading::Origin::OwnFile;
    _opening.open(*guide);
}

void MainController::sendDoubleClick(const BookInfoPtr& book)
{
    // The temporary folder is not ready yet.
    if (_state.folders._booksPath.empty())
        return;
    if (book && !BookOpening::hasArchive(*book))
        return openWithoutArchive(book);
    if (book)
        makeWay();
    _opening.open(book);
}

void MainController::sendDoubleClick()
{
    const auto* active = _views.activeViewController();
    const auto selected = active ? active->books().selectedObjects() : std::vector<BookInfoPtr> {};
    sendDoubleClick(selected.empty() ? nullptr : selected.front());
}

void MainController::continueReading()
{
    if (const auto book = bookToContinue())
        sendDoubleClick(book);
}

BookInfoPtr MainController::bookToContinue() const
{
    return ReadingHistory(_platform.defaults).last(*_state.catalogue.bookList());
}

void MainController::_closeEPUB()
{
    _opening.cancel();
    _closing.close();
    prepareNextBook(closingDelay);
}

void MainController::prepareNextBook(double delay)
{
    // An open book uses the view. The next one is prepared when the book is closed.
    _warmUpDelay = _platform.runLoop.performAfterDelay(delay, [this] {
        if (!_state.reading.hasWindow())
            _platform.readerWindows.prepareNextWindow();
    });
}

void MainController::windowDidExitFullScreen()
{
    if (_monitor.observesFullScreen())
        _closing.windowDidExitFullScreen();
}

}
