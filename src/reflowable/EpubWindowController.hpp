#pragma once

#include "notebook/BookMarks.hpp"
#include "reader/EpubWindow.hpp"
#include "reader/ReaderHub.hpp"
#include "reflowable/BookSearch.hpp"
#include "reflowable/EpubController.hpp"
#include "reflowable/Notes.hpp"
#include "reflowable/Selections.hpp"

#include <memory>

namespace pagora {

// A reflowable reader's window and its controller, which it owns. The hub creates one for each opened book and destroys
// it when the book is closed. Main thread only.
class EpubWindowController {
public:
    EpubWindowController(std::unique_ptr<EpubWindow> layout, ReaderState& state, RunLoop& runLoop, ReaderHub& hub);
    ~EpubWindowController();

    Window& window() { return _window->window(); }
    WebView& webView() { return _window->webView(); }
    void setBook(const std::string& title, const std::string& author) { _window->setBook(title, author); }
    // Shows a loading indicator until the page is shown or fails.
    void setLoading() { _window->setLoading(true); }
    // Null after the book was closed.
    EpubController* _epubController() { return _controller.get(); }
    void set_epubController(std::unique_ptr<EpubController> controller);
    // Sets the folder of the unpacked book. Called before the book is started.
    void setBookFolder(const std::string& path);
    // Sets the pages of the printed edition: their numbers and their starts.
    void setPrintedPages(const std::vector<std::string>& labels, std::vector<Url> pages);
    BookSearch& search() { return *_search; }
    BookMarks& marks() { return *_marks; }

    void closeEPUB();
    // Hides the panel with the display options.
    void hideDisplayOptions();
    void toggleFullScreen() { window().toggleFullScreen(); }
    void windowDidEnterFullScreen();
    void windowDidExitFullScreen();

private:
    void connect();

    std::unique_ptr<EpubWindow> _window;
    ReaderHub& _mainController;
    std::unique_ptr<EpubController> _controller;
    // Null after the book was closed.
    std::unique_ptr<BookSearch> _search;
    std::unique_ptr<Notes> _notes;
    std::unique_ptr<Selections> _selections;
    std::unique_ptr<BookMarks> _marks;
};

}
