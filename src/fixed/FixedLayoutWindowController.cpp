#include "fixed/FixedLayoutWindowController.hpp"

#include "desktop/Window.hpp"

namespace pagora {

FixedLayoutWindowController::FixedLayoutWindowController(
    std::unique_ptr<FixedWindow> layout, ReaderState& state, RunLoop& runLoop, ReaderHub& hub, ScriptResources scripts)
    : _window(std::move(layout))
    , _mainController(hub)
    , _controller(std::make_unique<FixedEpubController>(*_window, hub, state, runLoop, std::move(scripts)))
    , _marks(std::make_unique<BookMarks>(*_controller, *_window, runLoop))
{
    connect();
}

FixedLayoutWindowController::~FixedLayoutWindowController() = default;

void FixedLayoutWindowController::set_fixedController(std::unique_ptr<FixedEpubController> controller)
{
    _marks = nullptr;
    _controller = std::move(controller);
}

void FixedLayoutWindowController::connect()
{
    // A window that leaves full screen in order to close has no controller any more.
    const auto withReader = [this](auto action) {
        return [this, action](auto... arguments) {
            if (_controller)
                action(*_controller, arguments...);
        };
    };
    ReaderWindowActions actions;
    actions.closeEPUB = withReader([this](FixedEpubController&) { closeEPUB(); });
    actions.toggleFullScreen = [this] { window().toggleFullScreen(); };
    actions.windowDidEnterFullScreen = [this] { _mainController.setFullScreenMode(true); };
    actions.windowDidExitFullScreen = [this] {
        _mainController.setFullScreenMode(false);
        _mainController.windowDidExitFullScreen();
    };
    actions.toggleLeftView = withReader([](FixedEpubController& reader) { reader.toggleLeftView(); });
    actions.changePage = withReader([](FixedEpubController& reader, int tag) { reader.changePage(tag); });
    actions.goToFirstPage = withReader([](FixedEpubController& reader) { reader.goToFirstPage(); });
    actions.goToLastPage = withReader([](FixedEpubController& reader) { reader.goToLastPage(); });
    actions.scrollWheelBegan
        = withReader([](FixedEpubController& reader, double deltaX) { reader.scrollWheelBegan(deltaX); });
    actions.goToPage = withReader([](FixedEpubController& reader, std::int64_t page) { reader.goToPageNumber(page); });
    actions.goBack = withReader([](FixedEpubController& reader) { reader.goBack(); });
    actions.goForward = withReader([](FixedEpubController& reader) { reader.goForward(); });
    actions.askForSelection = withReader([](FixedEpubController& reader) { reader.selectedText().ask(); });
    actions.endSelection = withReader([](FixedEpubController& reader) { reader.selectedText().end(); });
    actions.copySelection = withReader([](FixedEpubController& reader) { reader.selectedText().copy(); });
    _window->setActions(std::move(actions));
}

}
