#pragma once

#include "Program.hpp"
#include "WatchedScreen.hpp"

#include <string>
#include <vector>

namespace pagora::bench {

constexpr Area screenArea { 0, 0, 1280, 860 };
// The area of the page in a maximized window, in pixels of the screen.
constexpr Area pageView { 264, 54, 1016, 771 };
// A part of the page without controls or covers, if the library has two books.
constexpr Area pageArea { 350, 100, 860, 640 };
// A part of the page beside the loading indicator.
constexpr Area firstColumn { 350, 100, 380, 640 };
// A part of the page in a window of any size, at which a library of a few books has no cover.
constexpr Area middleOfPage { 560, 300, 300, 300 };
// The area of the first covers, and that of the first one.
constexpr Area coverArea { 20, 70, 900, 600 };
constexpr Area firstCover { 60, 120, 80, 120 };

// The folder of the stored pictures of pages in a home folder.
constexpr const char* pictures = "/.local/share/org.pagora.Pagora/pages";

// The folder for generated books and home folders. Set once.
extern std::string dataFolder;

// Returns a quantile of the values.
double part(std::vector<double> values, double fraction);
double median(const std::vector<double>& values);

void run(const std::string& command);
// Returns the archive of a generated book, which is created at the first call.
std::string made(const std::string& kind);
std::string newHome(const std::string& name);
Program startPagora(const std::string& home, const std::vector<std::string>& files = {});
double shownOrFail(WatchedScreen& screen, const Area& area, double quiet, const std::string& what);

// A shown library with two books.
struct ShownLibrary {
    ShownLibrary(WatchedScreen& screen, const std::string& kind, std::string bookTitle);

    // Opens the book and returns the time in milliseconds until the page itself, not its picture, appeared.
    double open(WatchedScreen& screen);
    // Returns the same for the first picture in a part of the page, and the number of its pixels that change later.
    WatchedScreen::FirstPicture openFirst(WatchedScreen& screen, const Area& area);
    // Closes the book and returns the time until the library appeared.
    double close(WatchedScreen& screen);
    void forgetUnpacked() const;

    std::string home;
    std::string title;
    Program program;

private:
    double doubleClick(WatchedScreen& screen);
    void leavePointer(WatchedScreen& screen);
};

}
