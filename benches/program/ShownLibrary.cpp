#include "ShownLibrary.hpp"

#include <X11/keysym.h>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace pagora::bench {

namespace fs = std::filesystem;

std::string dataFolder;

double part(std::vector<double> values, double fraction)
{
    std::sort(values.begin(), values.end());
    const auto last = static_cast<double>(values.size() - 1);
    return values.at(static_cast<std::size_t>(fraction * last + 0.5));
}

double median(const std::vector<double>& values)
{
    return part(values, 0.5);
}

void run(const std::string& command)
{
    if (std::system(command.c_str()) != 0)
        fail("this failed: " + command);
}

std::string made(const std::string& kind)
{
    const std::string path = dataFolder + "/" + kind + ".epub";
    if (!fs::exists(path))
        run('"' + programFolder() + "/bench-data\" " + kind + " \"" + dataFolder + '"');
    return path;
}

Program startPagora(const std::string& home, const std::vector<std::string>& files)
{
    return Program(programFolder() + "/pagora", files, home);
}

std::string newHome(const std::string& name)
{
    const std::string home = dataFolder + "/" + name;
    fs::create_directories(home);
    return home;
}

double shownOrFail(WatchedScreen& screen, const Area& area, double quiet, const std::string& what)
{
    const auto time = screen.shown(area, quiet);
    if (!time)
        fail(what + " does not appear");
    return *time;
}

ShownLibrary::ShownLibrary(WatchedScreen& screen, const std::string& kind, std::string bookTitle)
    : home(newHome("home-" + kind))
    , title("Pagora - " + std::move(bookTitle))
    , program(startPagora(home, { made(kind), made(kind == "fixed" ? "chapter-50k" : "fixed") }))
{
    screen.waitForWindow("Pagora");
    screen.placeWindow(screenArea);
    screen.waitForPicture(firstCover);
    screen.settle(1);
}

double ShownLibrary::doubleClick(WatchedScreen& screen)
{
    screen.pointAt(firstCover.x + firstCover.width / 2, firstCover.y + firstCover.height / 2);
    screen.settle();
    return screen.click(2);
}

void ShownLibrary::leavePointer(WatchedScreen& screen)
{
    screen.waitForWindow(title);
    screen.pointAt(700, 845);
    screen.settle();
}

double ShownLibrary::open(WatchedScreen& screen)
{
    fs::remove_all(home + pictures);
    const double asked = doubleClick(screen);
    const double page = shownOrFail(screen, pageArea, 0.5, "the page");
    leavePointer(screen);
    return (page - asked) * 1000;
}

WatchedScreen::FirstPicture ShownLibrary::openFirst(WatchedScreen& screen, const Area& area)
{
    const double asked = doubleClick(screen);
    auto first = screen.firstPicture(area, 1);
    if (!first)
        fail("the page does not appear");
    leavePointer(screen);
    first->time = (first->time - asked) * 1000;
    return *first;
}

double ShownLibrary::close(WatchedScreen& screen)
{
    screen.forget();
    const double asked = screen.press(XK_w, XK_Control_L);
    const double library = shownOrFail(screen, coverArea, 0.3, "the library");
    screen.waitForWindow("Pagora");
    return (library - asked) * 1000;
}

void ShownLibrary::forgetUnpacked() const
{
    fs::remove_all(home + "/.cache/org.pagora.Pagora/_books");
}

}
