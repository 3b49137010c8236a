// Turns the pages of a chapter with 2,000 marks and of the same chapter without marks, in turns, in one program and one
// page process. Measures the processor time of the page process. bench-marks FOLDER NAME... prints a "NAME VALUE" line
// for each figure: the additional milliseconds of a turn. Needs a display.

#include "app/MainController.hpp"
#include "base/Resource.hpp"
#include "benches/data/MadeBooks.hpp"
#include "benches/marks/PageProcesses.hpp"
#include "benches/program/MainLoop.hpp"
#include "desktop/gtk/DesktopWorkspace.hpp"
#include "desktop/gtk/Toplevel.hpp"
#include "library_window/gtk/LibraryWindowGtk.hpp"
#include "reader_windows/gtk/ReaderWindowFactoryGtk.hpp"
#include "running/GLibRunLoop.hpp"

#include <gtkmm/init.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace pagora;

constexpr std::size_t kB = 1'000;
constexpr int rounds = 6;
constexpr int turnsOfRound = 5;
// In milliseconds. The first is enough for the drawing that a turn causes and ends before the preparations for the next
// turn begin; those have ended after both.
constexpr unsigned drawingTime = 200;
constexpr unsigned preparationTime = 500;

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

// The program with a library of one book, which is open.
class OpenBook {
public:
    OpenBook(const std::string& home, const std::string& archive)
        : _defaults(folderIn(home, "Data"))
        , _readerWindows(folderIn(home, "Caches"), _toplevel, _runLoop)
        , _controller({ { folderIn(home, "Documents"), home + "/Caches", home, PAGORA_IDENTIFIER, PAGORA_VERSION },
                          _defaults, _workspace, _runLoop, _libraryWindow, _readerWindows },
              [](const std::string& name) {
                  return resourceBytes("/org/pagora/Pagora/scripts/" + name + ".js").value_or("");
              })
    {
        _libraryWindow.mainWindow().setFrame({ 0, 0, 1100, 760 });
        _libraryWindow.mainWindow().makeKeyAndOrderFront();
        _controller.applicationWillFinishLaunching();
        _controller.applicationDidFinishLaunching();
        serveUntil([this] { return !state().launch._initProcessing(); });
        _controller.draggedEpubs({ archive });
        serveUntil([this] { return !state().catalogue.bookList()->empty(); });
        _controller.sendDoubleClick(state().catalogue.bookList()->front());
        serveUntil([this] {
            return state().reading._epubWindowController && !reader().bookSplits().empty() && reader().isSettled();
        });
        serveFor(3'000);
    }
    ~OpenBook()
    {
        _controller.finishReading();
        _controller.applicationWillTerminate();
        _runLoop.finishBackgroundWork();
        _defaults.synchronize();
    }

    void evaluate(const std::string& script)
    {
        bool isAnswered = false;
        reader().ask(script, [&](std::int64_t) { isAnswered = true; });
        serveUntil([&] { return isAnswered && reader().isSettled(); });
    }
    void goToStart()
    {
        reader().goToFirstPage();
        evaluate("0");
    }
    void turn() { reader().changePage(1); }

private:
    static std::string folderIn(const std::string& home, const std::string& name)
    {
        std::filesystem::create_directories(home + "/" + name);
        return home + "/" + name;
    }
    LibraryState& state() { return _controller.state(); }
    EpubController& reader() { return *state().reading._epubWindowController->_epubController(); }

    UserDefaults _defaults;
    GLibRunLoop _runLoop;
    DesktopWorkspace _workspace;
    Toplevel _toplevel;
    LibraryWindowGtk _libraryWindow { _toplevel, _runLoop };
    ReaderWindowFactoryGtk _readerWindows;
    MainController _controller;
};

// What is painted in the chapter.
struct Painting {
    const char* name;
    // An expression in the page's language with the number of a mark as `i`.
    const char* color;
    const char* hasNote;
};

constexpr std::array paintings {
    Painting { "one colour", "'yellow'", "0" },
    Painting { "six colours, every third with a note", "['yellow', 'orange', 'pink', 'purple', 'blue', 'green'][i % 6]",
        "i % 3 ? 0 : 1" },
};

// Marks of 40 characters, or of all characters up to the next one where there are fewer.
std::string paintScript(const Painting& painting)
{
    return std::string("(() => { const text = pagoraFind.text.textIndex().text; const step = text.length / 2000;"
                       "pagoraMarks.paint(Array.from({ length: 2000 }, (_, i) => { const start = Math.floor(i * step);"
                       "const end = start + Math.min(Math.floor(step), 40);"
                       "return [i, start, end, text.slice(start, end), ")
        + painting.color + ", " + painting.hasNote + "]; })); return 0; })()";
}

// The processor time of a turn in milliseconds: of its drawing, and with the preparations for the next one.
struct Cost {
    double drawing = 0;
    double all = 0;
};

// The mean of a round. Its first turns warm up.
Cost turnThrough(OpenBook& book)
{
    book.goToStart();
    serveFor(drawingTime + preparationTime);
    Cost sum;
    for (int i = -1; i < turnsOfRound; ++i) {
        const double before = bench::pageProcessorTime();
        book.turn();
        serveFor(drawingTime);
        const double drawn = bench::pageProcessorTime();
        serveFor(preparationTime);
        if (i < 0)
            continue;
        sum.drawing += drawn - before;
        sum.all += bench::pageProcessorTime() - before;
    }
    return { sum.drawing / turnsOfRound, sum.all / turnsOfRound };
}

// Prints the medians of all rounds. Returns those of the differences for the last painting.
Cost measure(const std::string& folder, std::size_t chapterBytes)
{
    const auto archive = folder + "/marks.epub";
    bench::writeBook(archive, { "Marks", "A. Author", "marks", { chapterBytes, chapterBytes }, {}, false }, 1);
    OpenBook book(folder + "/home" + std::to_string(chapterBytes), archive);
    std::vector<double> plain, plainAll;
    std::array<std::vector<double>, paintings.size()> drawing, all;
    for (int round = 0; round <= rounds; ++round) {
        book.evaluate("pagoraMarks.paint([])");
        const auto without = turnThrough(book);
        for (std::size_t i = 0; i < paintings.size(); ++i) {
            book.evaluate(paintScript(paintings[i]));
            const auto with = turnThrough(book);
            // The first round warms up.
            if (round > 0) {
                drawing[i].push_back(with.drawing - without.drawing);
                all[i].push_back(with.all - without.all);
            }
        }
        if (round > 0) {
            plain.push_back(without.drawing);
            plainAll.push_back(without.all);
        }
    }
    std::cerr << chapterBytes / kB << " kB, without marks: " << median(plain) << " ms, with preparations "
              << median(plainAll) << '\n';
    for (std::size_t i = 0; i < paintings.size(); ++i)
        std::cerr << "  " << paintings[i].name << ": " << median(drawing[i]) << " ms more, with preparations "
                  << median(all[i]) << '\n';
    return { median(drawing.back()), median(all.back()) };
}

}

int main(int count, char** arguments)
{
    if (count < 3)
        return 2;
    const std::string folder = std::filesystem::canonical(arguments[1]).string();
    const std::set<std::string> names(arguments + 2, arguments + count);
    gtk_init();
    Gtk::init_gtkmm_internals();
    if (names.contains("marks.turn_ms"))
        std::cout << "marks.turn_ms " << measure(folder, 500 * kB).drawing << '\n';
    if (names.contains("marks.turn_ms_dense"))
        std::cout << "marks.turn_ms_dense " << measure(folder, 50 * kB).drawing << '\n';
}
