#pragma once

#include "app/MainController.hpp"
#include "base/Path.hpp"
#include "files/Files.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/FakeEpubWindow.hpp"
#include "tests/support/FakeLibraryWindow.hpp"
#include "tests/support/FakeWorkspace.hpp"
#include "tests/support/ManualRunLoop.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <memory>
#include <string>
#include <vector>

namespace pagora::test {

// The program in a new home folder, with fake windows and controls. Everything else is real.
template <typename Loop>
class ProgramOn {
public:
    static constexpr const char* version = "7";

    ProgramOn() = default;
    // Uses an existing home folder and keeps it.
    explicit ProgramOn(const std::string& homeFolder)
        : home(homeFolder)
    {
    }
    ~ProgramOn() { controller = nullptr; }

    // Launches the program until the library is shown.
    void launch()
    {
        beginLaunch();
        runLoop.runTimers();
    }
    void beginLaunch()
    {
        controller->applicationWillFinishLaunching();
        controller->applicationDidFinishLaunching();
    }
    // Launches the program with stored values of the same version.
    void keepStoredValues() { defaults.setObject("BundleVersion", version); }

    std::string inLibrary(const std::string& name) const { return home.path("Documents/ePubLibrary/" + name); }
    std::string inDownloads(const std::string& name) const { return home.path("Downloads/" + name); }
    std::string inTemporary(const std::string& name) const { return home.path("Caches/org.pagora.Test/" + name); }

    // Writes a book whose title is its file name. Returns its path.
    std::string writeBook(const std::string& path, EpubBuilder book = {}) const
    {
        createFolder(deletingLastPathComponent(path));
        return book.title(deletingPathExtension(lastPathComponent(path))).write(path);
    }
    std::string download(const std::string& name, EpubBuilder book = {}) const
    {
        return writeBook(inDownloads(name), std::move(book));
    }
    std::string downloadBroken(const std::string& name) const { return makeFile(inDownloads(name), "no archive"); }

    void drop(const std::vector<std::string>& files) { controller->draggedEpubs(files); }
    // Imports books, which the grid then shows.
    void import(const std::vector<std::string>& names)
    {
        for (const auto& name : names)
            drop({ download(name) });
    }
    void doubleClick(std::size_t index)
    {
        window.shown->select({ index });
        window.shown->click(2);
    }

    Catalogue& catalogue() { return controller->state().catalogue; }
    std::vector<std::string> titles()
    {
        std::vector<std::string> titles;
        for (const auto& book : *catalogue().bookList())
            titles.push_back(book->title().value_or(""));
        return titles;
    }
    BookInfoPtr book(std::size_t index) { return catalogue().bookList()->at(index); }
    // Returns the stored entry of a book.
    Value stored(std::size_t index) const { return defaults.objectForKey("BookData")->array()->at(index); }
    std::size_t storedCount() const
    {
        const auto all = defaults.objectForKey("BookData");
        return all ? all->array()->size() : 0;
    }

    // Returns the last reader window that was opened.
    ReaderWindowParts& reader() { return *readerWindows.epubWindows.back(); }
    EpubController& epubReader() { return *controller->state().reading._epubWindowController->_epubController(); }
    bool isReading()
    {
        return controller->state().reading._epubWindowController || controller->state().reading._fixedWindowController;
    }
    void closeReader() { reader().actions.closeEPUB(); }

    TemporaryFolder home;
    UserDefaults defaults { home.path("defaults") };
    FakeWorkspace workspace;
    Loop runLoop;
    FakeLibraryWindow window;
    FakeReaderWindowFactory readerWindows;
    std::unique_ptr<MainController> controller = std::make_unique<MainController>(
        Platform { { home.path("Documents"), home.path("Caches"), home.path(), "org.pagora.Test", version }, defaults,
            workspace, runLoop, window, readerWindows },
        [](const std::string&) { return std::string(); });
};

using Program = ProgramOn<ManualRunLoop>;

// A program that has been launched with an empty library.
struct LaunchedProgram : Program {
    LaunchedProgram() { launch(); }
};

}
