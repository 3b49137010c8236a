#include "app/BookClosing.hpp"

#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "catalogue/CatalogueEntry.hpp"

namespace pagora {

namespace {
constexpr double patienceForFullScreen = 2;
}

void BookClosing::close()
{
    const auto book = _state.currentBook;
    // A book that was removed from the library while it is read leaves its reader behind.
    if (book ? book->type() == "default" : _state._epubWindowController != nullptr)
        closeReflowable();
    else if (book ? book->type() == "fixed" : _state._fixedWindowController != nullptr)
        closeFixed();

    if (_state._singleEpub && book && book->epubPath() && _state.singleEpubWasCopied)
        _import.removeSingleCopy(*book->epubPath());
    _state._singleEpub = false;
    _state.singleEpubWasCopied = false;
}

void BookClosing::closeReflowable()
{
    auto* controller = _state._epubWindowController.get();
    if (!controller || !controller->_epubController())
        return;
    auto& reader = *controller->_epubController();
    savePosition(reader);
    reader.setBookSplits({});
    reader.setSplitIndexDict({});
    reader.contentsPane().clearTocTagDict();

    _state.inCloseEpubMethod = true;
    _state.epubWinInFullScreen = _state.fullScreenMode;
    auto& window = controller->window();
    auto& library = _platform.libraryWindow.mainWindow();
    if (_state.fullScreenMode) {
        _state.exitedByCode = true;
        window.toggleFullScreen();
    } else {
        library.setFrame(window.frame());
        library.makeKeyAndOrderFront();
        window.orderOut();
    }
    controller->hideDisplayOptions();
    controller->set_epubController(nullptr);
    auto released = std::move(_state._epubWindowController);
    if (_state.fullScreenMode) {
        _state.leavingEpubWindow = std::move(released);
        waitForFullScreen();
    }
}

void BookClosing::savePosition(EpubController& reader)
{
    reader.adoptPendingOptions();
    _state.curStorageIndex = reader.activeSplitIndex();
    _state.curStorageCap = reader.readAmount();
    _state.settings.curFontName = reader.currentFont();
    _state.settings.curFontSize = reader.currentFontSize();
    _state.settings.curNumOfColumns = reader.numberOfColumns();
    _state.settings.curColorOption = reader.currentColorOption();
    _state.settings.store(_platform.defaults);

    const auto& book = _state.currentBook;
    const auto entry = _state._singleEpub ? std::nullopt : _state.catalogue.entryOf(book);
    if (!entry) {
        _platform.defaults.synchronize();
        return;
    }
    const auto lastCap = clampedUnsigned(_state.curStorageCap);
    const auto lastPlace = reader.lastPlace();
    book->setLastIndex(_state.curStorageIndex);
    book->setLastCap(lastCap);
    if (lastPlace)
        book->setLastPlace(lastPlace);
    _state.catalogue.replaceEntry(book, entryWithPosition(*entry, _state.curStorageIndex, lastCap, lastPlace));
    _state.catalogue.save(_platform.defaults);
}

void BookClosing::closeFixed()
{
    auto* controller = _state._fixedWindowController.get();
    if (!controller)
        return;
    _state.inCloseEpubMethod = true;
    _state.epubWinInFullScreen = _state.fullScreenMode;
    auto& window = controller->window();
    auto& library = _platform.libraryWindow.mainWindow();
    if (_state.fullScreenMode) {
        _state.exitedByCode = true;
        window.toggleFullScreen();
        controller->set_fixedController(nullptr);
        _state.leavingFixedWindow = std::move(_state._fixedWindowController);
        waitForFullScreen();
    } else {
        const Rect frame = library.frame();
        window.animateToFrame(frame);
        library.setFrame(frame);
        library.makeKeyAndOrderFront();
        window.orderOut();
        controller->set_fixedController(nullptr);
        _state._fixedWindowController = nullptr;
    }
}

void BookClosing::windowDidExitFullScreen()
{
    log("exited by code - " + std::to_string(_state.exitedByCode ? 1 : 0));
    if (!_state.exitedByCode) {
        _state.epubWinInFullScreen = false;
        return;
    }
    showLibrary();
}

void BookClosing::waitForFullScreen()
{
    _patience = _platform.runLoop.performAfterDelay(patienceForFullScreen, [this] {
        _state.fullScreenMode = false;
        showLibrary();
    });
}

void BookClosing::makeWay()
{
    if (!_state.leavingEpubWindow && !_state.leavingFixedWindow)
        return;
    _state.fullScreenMode = false;
    if (_state.leavingEpubWindow)
        _state.leavingEpubWindow->window().orderOut();
    if (_state.leavingFixedWindow)
        _state.leavingFixedWindow->window().orderOut();
    dropLeavingWindow();
}

void BookClosing::showLibrary()
{
    _platform.libraryWindow.mainWindow().makeKeyAndOrderFront();
    if (_state.leavingEpubWindow)
        _state.leavingEpubWindow->window().orderOut();
    dropLeavingWindow();
}

void BookClosing::dropLeavingWindow()
{
    _patience = nullptr;
    const std::shared_ptr<EpubWindowController> epub = std::move(_state.leavingEpubWindow);
    const std::shared_ptr<FixedLayoutWindowController> fixed = std::move(_state.leavingFixedWindow);
    if (epub || fixed)
        _platform.runLoop.postToMainThread([epub, fixed] {});
}

}
