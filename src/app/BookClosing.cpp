#include "app/BookClosing.hpp"

#include "app/LeftPage.hpp"
#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "catalogue/ReadingHistory.hpp"

namespace pagora {

namespace {
constexpr double fullScreenTimeout = 2;
}

void BookClosing::close()
{
    const auto book = _state.reading.currentBook;
    // If the book is removed while it is open, its reader stays, so the open reader decides.
    if (book ? book->type() == "default" : _state.reading._epubWindowController != nullptr)
        closeReflowable();
    else if (book ? book->type() == "fixed" : _state.reading._fixedWindowController != nullptr)
        closeFixed();

    if (_state.reading.origin == Reading::Origin::Copy && book && book->epubPath())
        _import.removeSingleCopy(*book->epubPath());
    _state.reading.origin = Reading::Origin::Library;
}

void BookClosing::closeReflowable()
{
    auto* controller = _state.reading._epubWindowController.get();
    if (!controller || !controller->_epubController())
        return;
    auto& reader = *controller->_epubController();
    savePosition(reader, controller->webView());
    reader.setBookSplits({});
    reader.setSplitIndexDict({});
    reader.contentsPane().clearTocTagDict();

    auto& window = controller->window();
    _state.windows.close(window.isFullScreen());
    auto& library = _platform.libraryWindow.mainWindow();
    if (_state.windows.fullScreenMode) {
        window.toggleFullScreen();
    } else {
        library.setFrame(window.frame());
        library.makeKeyAndOrderFront();
        window.orderOut();
    }
    controller->hideDisplayOptions();
    controller->set_epubController(nullptr);
    auto released = std::move(_state.reading._epubWindowController);
    if (_state.windows.fullScreenMode) {
        _state.windows.leavingEpubWindow = std::move(released);
        waitForFullScreen();
    }
}

void BookClosing::savePosition(EpubController& reader, WebView& webView)
{
    reader.adoptPendingOptions();
    _state.reading.curStorageIndex = reader.activeSplitIndex();
    _state.reading.curStorageCap = reader.readAmount();
    _state.settings.curFontName = reader.currentFont();
    _state.settings.curFontSize = reader.currentFontSize();
    _state.settings.curNumOfColumns = reader.numberOfColumns();
    _state.settings.curColorOption = reader.currentColorOption();
    _state.settings.store(_platform.defaults);

    const auto& book = _state.reading.currentBook;
    const auto entry = _state.reading._singleEpub() ? std::nullopt : _state.catalogue.entryOf(book);
    if (!entry) {
        _platform.defaults.synchronize();
        return;
    }
    const auto lastCap = clampedUnsigned(_state.reading.curStorageCap);
    const auto lastPlace = reader.lastPlace();
    book->setLastIndex(_state.reading.curStorageIndex);
    book->setLastCap(lastCap);
    if (lastPlace)
        book->setLastPlace(lastPlace);
    _state.catalogue.replaceEntry(book, entryWithPosition(*entry, _state.reading.curStorageIndex, lastCap, lastPlace));
    if (book->epubPath())
        ReadingHistory(_platform.defaults).add(*book->epubPath());
    _state.catalogue.save(_platform.defaults);
    LeftPage(_state.keptPages).keep(*book, reader, webView, _platform.runLoop);
}

void BookClosing::closeFixed()
{
    auto* controller = _state.reading._fixedWindowController.get();
    if (!controller)
        return;
    auto& window = controller->window();
    _state.windows.close(window.isFullScreen());
    auto& library = _platform.libraryWindow.mainWindow();
    if (_state.windows.fullScreenMode) {
        window.toggleFullScreen();
        controller->set_fixedController(nullptr);
        _state.windows.leavingFixedWindow = std::move(_state.reading._fixedWindowController);
        waitForFullScreen();
    } else {
        const Rect frame = library.frame();
        window.animateToFrame(frame);
        library.setFrame(frame);
        library.makeKeyAndOrderFront();
        window.orderOut();
        controller->set_fixedController(nullptr);
        _state.reading._fixedWindowController = nullptr;
    }
}

void BookClosing::windowDidExitFullScreen()
{
    log("exited by code - " + std::to_string(_state.windows.exitedByCode() ? 1 : 0));
    if (!_state.windows.exitedByCode()) {
        _state.windows.epubWinInFullScreen = false;
        return;
    }
    showLibrary();
}

void BookClosing::waitForFullScreen()
{
    _fullScreenTimer = _platform.runLoop.performAfterDelay(fullScreenTimeout, [this] {
        _state.windows.fullScreenMode = false;
        showLibrary();
    });
}

void BookClosing::makeWay()
{
    if (!_state.windows.leavingEpubWindow && !_state.windows.leavingFixedWindow)
        return;
    _state.windows.fullScreenMode = false;
    if (_state.windows.leavingEpubWindow)
        _state.windows.leavingEpubWindow->window().orderOut();
    if (_state.windows.leavingFixedWindow)
        _state.windows.leavingFixedWindow->window().orderOut();
    dropLeavingWindow();
}

void BookClosing::showLibrary()
{
    _platform.libraryWindow.mainWindow().makeKeyAndOrderFront();
    if (_state.windows.leavingEpubWindow)
        _state.windows.leavingEpubWindow->window().orderOut();
    dropLeavingWindow();
}

void BookClosing::dropLeavingWindow()
{
    _fullScreenTimer = nullptr;
    const std::shared_ptr<EpubWindowController> epub = std::move(_state.windows.leavingEpubWindow);
    const std::shared_ptr<FixedLayoutWindowController> fixed = std::move(_state.windows.leavingFixedWindow);
    if (epub || fixed)
        _platform.runLoop.postToMainThread([epub, fixed] {});
}

}
