#pragma once

#include "app/MainController.hpp"
#include "base/Log.hpp"
#include "desktop/gtk/Toplevel.hpp"
#include "fixed/gtk/FixedWindowGtk.hpp"
#include "library_window/gtk/LibraryWindowGtk.hpp"
#include "reader_windows/gtk/ReaderWindowFactoryGtk.hpp"
#include "reflowable/gtk/EpubWindowGtk.hpp"
#include "running/GLibRunLoop.hpp"
#include "store/UserDefaults.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeWorkspace.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <webkit/webkit.h>

#include <memory>
#include <string>
#include <vector>

namespace pagora::test {

// Creates the real reader windows, and keeps a pointer to the last one.
class KeptReaderWindows : public ReaderWindowFactory {
public:
    KeptReaderWindows(std::string temporaryFolder, Toplevel& toplevel, RunLoop& runLoop)
        : _windows(std::move(temporaryFolder), toplevel, runLoop)
    {
    }
    std::unique_ptr<EpubWindow> makeEpubWindow() override;
    std::unique_ptr<FixedWindow> makeFixedWindow() override;
    void prepareNextWindow() override { _windows.prepareNextWindow(); }

    EpubWindowGtk* last = nullptr;
    FixedWindowGtk* lastFixed = nullptr;

private:
    ReaderWindowFactoryGtk _windows;
};

// The whole program with a home folder. Requests to the desktop are recorded and not performed.
struct RunningProgram {
    explicit RunningProgram(const TemporaryFolder& home);
    ~RunningProgram();

    UserDefaults defaults;
    GLibRunLoop runLoop;
    FakeWorkspace workspace;
    Toplevel toplevel;
    LibraryWindowGtk libraryWindow { toplevel, runLoop };
    KeptReaderWindows readerWindows;
    MainController controller;
};

// Reads books in the real program.
class ReadingTest : public ToolkitTest {
protected:
    ReadingTest();
    ~ReadingTest() override;

    // Ends the program, which closes the open book, and starts it again with the same home.
    void restart();
    LibraryState& state() { return _program->controller.state(); }
    // Imports an archive and waits until the import has ended.
    void import(const std::string& archive);
    BookInfoPtr book(std::size_t index = 0) { return state().catalogue.bookList()->at(index); }
    std::size_t bookCount() { return state().catalogue.bookList()->size(); }
    // Opens a book of the library and waits until its page is shown.
    void open(std::size_t index = 0);
    void close() { _program->controller._closeEPUB(); }

    EpubController& reader() { return *state().reading._epubWindowController->_epubController(); }
    EpubWindowGtk& window() { return *_program->readerWindows.last; }
    FixedWindowGtk& fixedWindow() { return *_program->readerWindows.lastFixed; }
    // Waits until no page turn, load or picture is pending.
    void settle();
    FixedEpubController& fixedReader() { return *state().reading._fixedWindowController->_fixedController(); }
    // Waits until a page of a fixed-layout book is shown.
    void settleFixed();
    // Returns the page view of the open book, of either kind.
    WebView& webView();
    WebKitWebView* engineView() const;
    // Returns the text on the clipboard.
    std::string clipboard();
    void turn(int tag);
    void moveSlider(double value);
    void goToChapter(std::size_t index);
    // Returns whether the last page of the book is shown.
    bool isAtEnd();
    std::string evaluate(const std::string& script);
    long long number(const std::string& script) { return std::atoll(evaluate(script).c_str()); }

    // The shown chapter, its offset and its first words.
    struct Place {
        std::uint64_t chapter = 0;
        long long offset = 0;
        std::string text;
        bool operator==(const Place&) const = default;
    };
    Place place();
    friend std::ostream& operator<<(std::ostream& stream, const Place& place);

    bool isLogged(const std::string& line) const;

    TemporaryFolder _home;
    std::vector<std::string> _lines;
    LogCapture _capture;
    std::unique_ptr<RunningProgram> _program;

private:
    bool pageIsLoading() const;
};

// Returns the archives in the folder PAGORA_CORPUS; none if it is not set.
std::vector<std::string> corpusBooks();

// Returns the name of a test for a book or an archive.
std::string readingTestName(const std::string& book);

}
