#pragma once

#include "fixed/FixedEpubController.hpp"
#include "notebook/BookMarks.hpp"
#include "reader/EpubWindow.hpp"
#include "reader/ReaderHub.hpp"

#include <memory>

namespace pagora {

// A fixed-layout reader's window and its controller, which it owns. The hub creates one for each opened book and
// destroys it when the book is closed. Main thread only.
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
    // Null after the book was closed.
    FixedEpubController* _fixedController() { return _controller.get(); }
    void set_fixedController(std::unique_ptr<FixedEpubController> controller);
    // Valid until the book is closed.
    BookMarks& marks() { return *_marks; }

    void closeEPUB() { _mainController._closeEPUB(); }

private:
    void connect();

    std::unique_ptr<FixedWindow> _window;
    ReaderHub& _mainController;
    std::unique_ptr<FixedEpubController> _controller;
    // Null after the book was closed.
    std::unique_ptr<BookMarks> _marks;
};

}
