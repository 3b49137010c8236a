#include "reflowable/EpubWindowController.hpp"

#include "base/Log.hpp"

namespace pagora {

EpubWindowController::EpubWindowController(
    std::unique_ptr<EpubWindow> layout, ReaderState& state, RunLoop& runLoop, ReaderHub& hub)
    : _window(std::move(layout))
    , _mainController(hub)
    , _controller(std::make_unique<EpubController>(*_window, hub, state, runLoop))
    , _search(std::make_unique<BookSearch>(*_controller, _window->searchPane(), runLoop))
    , _notes(std::make_unique<Notes>(*_controller, *_window, runLoop))
    , _selections(std::make_unique<Selections>(*_controller, *_window, hub))
    , _marks(std::make_unique<BookMarks>(*_controller, *_window, runLoop))
{
    connect();
}

EpubWindowController::~EpubWindowController() = default;

void EpubWindowController::set_epubController(std::unique_ptr<EpubController> controller)
{
    _search = nullptr;
    _notes = nullptr;
    _selections = nullptr;
    _marks = nullptr;
    _controller = std::move(controller);
}

void EpubWindowController::setBookFolder(const std::string& path)
{
    webView().setBookFolder(path);
    _search->setBookFolder(path);
    _notes->setBookFolder(path);
}

void EpubWindowController::setPrintedPages(const std::vector<std::string>& labels, std::vector<Url> pages)
{
    _window->setPrintedPages(labels);
    if (_controller)
        _controller->setPrintedPages(std::move(pages));
}

void EpubWindowController::connect()
{
    // A window that leaves full screen in order to close has no controller any more.
    const auto withReader = [this](auto action) {
        return [this, action](auto... arguments) {
            if (_controller)
                action(*_controller, arguments...);
        };
    };
    ReaderWindowActions actions;
    actions.closeEPUB = withReader([this](EpubController&) { closeEPUB(); });
    actions.toggleFullScreen = [this] { toggleFullScreen(); };
    actions.windowDidEnterFullScreen = [this] { windowDidEnterFullScreen(); };
    actions.windowDidExitFullScreen = [this] { windowDidExitFullScreen(); };
    actions.toggleLeftView = withReader([](EpubController& reader) { reader.toggleLeftView(); });
    actions.changePage = withReader([](EpubController& reader, int tag) { reader.changePage(tag); });
    actions.goToFirstPage = withReader([](EpubController& reader) { reader.goToFirstPage(); });
    actions.goToLastPage = withReader([](EpubController& reader) { reader.goToLastPage(); });
    actions.scrollWheelBegan
        = withReader([](EpubController& reader, double deltaX) { reader.scrollWheelBegan(deltaX); });
    actions.displayOptions = withReader([](EpubController& reader) { reader.displayOptions(); });
    actions.changeWidth = withReader([](EpubController& reader) { reader.changeWidth(); });
    actions.searchContent
        = withReader([](EpubController& reader, const std::string& text) { reader.searchContent(text); });
    actions.goBack = withReader([](EpubController& reader) { reader.goBack(); });
    actions.goForward = withReader([](EpubController& reader) { reader.goForward(); });
    actions.goToPercentage
        = withReader([](EpubController& reader, double percentage) { reader.goToPercentage(percentage); });
    actions.goToPage = withReader([](EpubController& reader, std::int64_t page) { reader.goToPage(page); });
    actions.goToPrintedPage
        = withReader([](EpubController& reader, std::size_t index) { reader.goToPrintedPage(index); });
    const auto withSearch = [this](auto action) {
        return [this, action](auto... arguments) {
            if (_search)
                action(*_search, arguments...);
        };
    };
    actions.search = withSearch(
        [](BookSearch& search, const std::string& text, WholeWords wholeWords) { search.search(text, wholeWords); });
    actions.goToResult = withSearch([](BookSearch& search, std::size_t index) { search.goTo(index); });
    actions.goToNextResult = withSearch([](BookSearch& search) { search.goToNext(); });
    actions.goToPreviousResult = withSearch([](BookSearch& search) { search.goToPrevious(); });
    actions.endSearch = withSearch([](BookSearch& search) { search.end(); });
    actions.goToNote = [this] {
        if (_notes)
            _notes->goThere();
    };
    const auto withSelections = [this](void (Selections::*action)()) {
        return [this, action] {
            if (_selections)
                ((*_selections).*action)();
        };
    };
    actions.askForSelection = withSelections(&Selections::ask);
    actions.endSelection = withSelections(&Selections::end);
    actions.copySelection = withSelections(&Selections::copy);
    actions.findSelection = withSelections(&Selections::find);
    actions.lookUpSelection = withSelections(&Selections::lookUp);
    _window->setActions(std::move(actions));
}

void EpubWindowController::closeEPUB()
{
    log("close epub!");
    _mainController._closeEPUB();
}

void EpubWindowController::hideDisplayOptions()
{
    auto& panel = _window->displayOptions();
    if (panel.isVisible())
        panel.orderOut();
}

void EpubWindowController::windowDidEnterFullScreen()
{
    if (!_mainController.mainWindow().isKeyWindow())
        _mainController.setFullScreenMode(true);
}

void EpubWindowController::windowDidExitFullScreen()
{
    if (!_mainController.mainWindow().isKeyWindow() && window().isKeyWindow()) {
        _mainController.setFullScreenMode(false);
        if (_mainController.inCloseEpubMethod()) {
            log("reset to mainWindow");
            auto& library = _mainController.mainWindow();
            library.setFrame(window().frame());
            library.makeKeyAndOrderFront();
            window().orderOut();
            _mainController.setInCloseEpubMethod(false);
        }
    }
    _mainController.windowDidExitFullScreen();
}

}
