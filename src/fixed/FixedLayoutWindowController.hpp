#pragma once

#include "fixed/FixedEpubController.hpp"
#include "notebook/BookMarks.hpp"
#include "reader/EpubWindow.hpp"
#include "reader/ReaderHub.hpp"

#include <memory>

namespace pagora {

// A fixed-layout reader's window and the controller that it owns. The hub makes one for each book that is opened and
// drops it at closing. Main thread only.
class FixedLayoutWindowController {
public:
    FixedLayoutWindowController(std::unique_ptr<FixedWindow> layout, ReaderState& state, RunLoop& runLoop,
        ReaderHub& hub, ScriptResources scripts);
    ~FixedLayoutWindowController();

    Window& window() { return _window->window(); }
    WebView& webView() { return _window->webView(); }
    void setBook(const std::string& title, const std::string& author) { _window->setBook(title, author); }
    // Shows a loading indicator until the page is shown or fails.
    void setLoading() { _window->setLoading(true); }
    // Null once the reading has ended.
    FixedEpubController* _fixedController() { return _controller.get(); }
    void set_fixedController(std::unique_ptr<FixedEpubController> controller);
    // While it is read.
    BookMarks& marks() { return *_marks; }

    void closeEPUB() { _mainController._closeEPUB(); }

private:
    void connect();

    std::unique_ptr<FixedWindow> _window;
    ReaderHub& _mainController;
    std::unique_ptr<FixedEpubController> _controller;
    // Null once the reading has ended.
    std::unique_ptr<BookMarks> _marks;
};

}
