// Measures the program as a user sees it: from real keys and clicks to their effect on the screen.
// bench-display FOLDER NAME... prints "NAME VALUE" lines. Needs a display of at least 1280 by 860.

#include "AwakeProcessors.hpp"
#include "Program.hpp"
#include "WatchedScreen.hpp"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <thread>

namespace {

using namespace pagora::bench;
namespace fs = std::filesystem;

constexpr int runs = 9;
constexpr Area screenArea { 0, 0, 1280, 860 };
// The area of the page in a maximized window, and a part of it that nothing overlaps.
constexpr Area pageView { 264, 54, 1016, 771 };
constexpr Area pageArea { 330, 100, 880, 640 };
// The area of the first covers, and of the first one.
constexpr Area coverArea { 20, 70, 900, 600 };
constexpr Area firstCover { 60, 120, 80, 120 };

// The program's default text size, as a multiple of the engine's.
constexpr const char* textSize = "1.75";

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

Program startPagora(const std::string& home, const std::vector<std::string>& files = {})
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

// A shown library with one book.
struct Library {
    Library(WatchedScreen& screen, const std::string& kind, std::string bookTitle)
        : home(newHome("home-" + kind))
        , title("Pagora - " + std::move(bookTitle))
        , program(startPagora(home, { made(kind), made(kind == "fixed" ? "chapter-50k" : "fixed") }))
    {
        screen.waitForWindow("Pagora");
        screen.placeWindow(screenArea);
        screen.waitForPicture(firstCover);
        screen.settle(1);
    }

    // Opens the book and returns how long the page took to appear, in milliseconds.
    double open(WatchedScreen& screen)
    {
        screen.pointAt(firstCover.x + firstCover.width / 2, firstCover.y + firstCover.height / 2);
        screen.settle();
        const double asked = screen.click(2);
        const double page = shownOrFail(screen, pageArea, 0.5, "the page");
        screen.waitForWindow(title);
        screen.pointAt(700, 845);
        screen.settle();
        return (page - asked) * 1000;
    }

    // Closes the book and returns the time until the library appeared.
    double close(WatchedScreen& screen)
    {
        screen.forget();
        const double asked = screen.press(XK_w, XK_Control_L);
        const double library = shownOrFail(screen, coverArea, 0.3, "the library");
        screen.waitForWindow("Pagora");
        return (library - asked) * 1000;
    }

    void forgetUnpacked() const { fs::remove_all(home + "/.cache/org.pagora.Pagora/_books"); }

    std::string home;
    std::string title;
    Program program;
};

// A chapter of a made book as laid out by the program.
std::string preparedChapter(const std::string& kind, int number)
{
    const std::string folder = dataFolder + "/prepared-" + kind;
    const std::string name = "chapter000" + std::to_string(number) + ".xhtml";
    fs::create_directories(folder + "/text");
    run("unzip -qo \"" + made(kind) + "\" OEBPS/style.css OEBPS/text/" + name + " -d \"" + folder + '"');
    const std::string path = folder + "/OEBPS/text/" + name;
    std::ifstream file(path);
    std::string text((std::istreambuf_iterator<char>(file)), {});
    const std::string height = std::to_string(pageView.height - 80) + "px";
    text.replace(text.find("<body"), 5,
        "<body style=\"column-width: auto; column-count: 2; column-gap: 40px; margin: 0; padding: 40px 20px; "
        "font-family: Georgia; overflow: hidden; height: "
            + height + "\"");
    std::ofstream(path) << text;
    return path;
}

// The time in milliseconds until a plain page appears in another window at the place of the program's page.
double bareLoad(WatchedScreen& screen, const std::string& file)
{
    const Program program(programFolder() + "/floor_page",
        { file, std::to_string(pageView.width), std::to_string(pageView.height), textSize });
    screen.waitForWindow("floor");
    screen.placeWindow(pageView);
    screen.settle(1);
    screen.forget();
    const double asked = screen.press(XK_space);
    return (shownOrFail(screen, pageArea, 0.5, "the bare page") - asked) * 1000;
}

// The median ratio of the measured time to the floor's time, measured alternately after a warm-up.
double ratioToFloor(
    WatchedScreen& screen, const std::string& file, Window window, const std::function<double()>& measured)
{
    std::vector<double> ratios;
    for (int i = 0; i <= runs; ++i) {
        screen.activate(window);
        screen.settle();
        const double ours = measured();
        const double bare = bareLoad(screen, file);
        std::cerr << ours << " ms against " << bare << " ms\n";
        ratios.push_back(ours / bare);
    }
    ratios.erase(ratios.begin());
    return median(ratios);
}

double openRatioToFloor(WatchedScreen& screen)
{
    Library library(screen, "chapter-500k", "A Chapter of 500 kB");
    const auto window = screen.activeWindow();
    return ratioToFloor(screen, preparedChapter("chapter-500k", 1), window, [&] {
        library.forgetUnpacked();
        const double time = library.open(screen);
        library.close(screen);
        return time;
    });
}

double openWarm(WatchedScreen& screen)
{
    Library library(screen, "chapter-50k", "Chapters of 50 kB");
    std::vector<double> times;
    for (int i = 0; i <= runs; ++i) {
        times.push_back(library.open(screen));
        library.close(screen);
    }
    times.erase(times.begin());
    return median(times);
}

struct Idleness {
    double wakeups;
    double processorTime;
};

// The cost of an idle second with an open book.
Idleness idle(WatchedScreen& screen)
{
    Library library(screen, "chapter-50k", "Chapters of 50 kB");
    library.open(screen);
    screen.press(XK_Right);
    // The program's preparations have ended by then.
    std::this_thread::sleep_for(std::chrono::seconds(20));
    constexpr double seconds = 60;
    const auto before = library.program.activity();
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    const auto after = library.program.activity();
    return { after.wakeupsSince(before) / seconds, (after.processorTime - before.processorTime) / seconds };
}

double reopen(WatchedScreen& screen)
{
    Library library(screen, "chapter-50k", "Chapters of 50 kB");
    std::vector<double> times;
    for (int i = 0; i <= runs; ++i) {
        library.open(screen);
        times.push_back(library.close(screen));
    }
    times.erase(times.begin());
    return median(times);
}

const std::vector<KeySym> onAndBack { XK_Right, XK_Right, XK_Right, XK_Left };

// Turns pages with the given sequence of keys, repeatedly, and returns the time of each turn.
std::vector<double> turns(WatchedScreen& screen, const std::string& kind, const std::string& title,
    const std::vector<KeySym>& keys, double pause)
{
    Library library(screen, kind, title);
    library.open(screen);
    std::vector<double> times;
    constexpr std::size_t count = 40, warmUp = 4;
    for (std::size_t i = 0; i < count + warmUp; ++i) {
        screen.settle(pause);
        const double asked = screen.press(keys[i % keys.size()]);
        times.push_back((shownOrFail(screen, pageArea, 0.12, "the page") - asked) * 1000);
    }
    times.erase(times.begin(), times.begin() + warmUp);
    return times;
}

double chapterRatioToFloor(WatchedScreen& screen)
{
    Library library(screen, "chapter-50k", "Chapters of 50 kB");
    const auto window = screen.activeWindow();
    library.open(screen);
    return ratioToFloor(screen, preparedChapter("chapter-50k", 2), window, [&] {
        screen.press(XK_End);
        screen.settle(1);
        const double asked = screen.press(XK_Right);
        return (shownOrFail(screen, pageArea, 0.5, "the chapter") - asked) * 1000;
    });
}

struct Launch {
    double time;
    double memory;
};

Launch launch(WatchedScreen& screen, const std::string& count)
{
    const std::string home = newHome("home-" + count);
    run('"' + programFolder() + "/bench-data\" catalogue \"" + home + "\" " + count);
    std::vector<double> times, memory;
    for (int i = 0; i <= 5; ++i) {
        screen.settle(0.5);
        screen.forget();
        const auto program = startPagora(home);
        const double painted = shownOrFail(screen, screenArea, 1, "the library");
        if (screen.colors(coverArea) < 1000)
            fail("the covers do not appear");
        screen.waitForWindow("Pagora");
        times.push_back((painted - program.started()) * 1000);
        memory.push_back(program.residentMemory());
    }
    fs::remove_all(home);
    times.erase(times.begin());
    return { median(times), median(memory) };
}

Launch openFile(WatchedScreen& screen)
{
    const std::string home = newHome("home-file");
    const std::string book = made("chapter-50k");
    std::vector<double> times, memory;
    for (int i = 0; i <= 5; ++i) {
        screen.settle(0.5);
        screen.forget();
        const auto program = startPagora(home, { book });
        const double painted = shownOrFail(screen, screenArea, 1, "the page");
        screen.waitForWindow("Pagora - Chapters of 50 kB");
        times.push_back((painted - program.started()) * 1000);
        memory.push_back(program.proportionalMemory());
    }
    times.erase(times.begin());
    return { median(times), median(memory) };
}

}

int main(int count, char** arguments)
{
    if (count < 3)
        return 2;
    dataFolder = fs::canonical(arguments[1]);
    const std::vector<std::string> names(arguments + 2, arguments + count);
    const auto isWanted = [&](const std::string& start) {
        return std::any_of(names.begin(), names.end(), [&](const auto& name) { return name.rfind(start, 0) == 0; });
    };
    const AwakeProcessors awake;
    const Program windowManager("openbox", { "--sm-disable" });
    WatchedScreen screen;
    std::map<std::string, double> values;
    for (const std::string size : { "10k", "50k" }) {
        if (!isWanted("launch.ms_" + size) && !isWanted("launch.rss_mb_" + size))
            continue;
        const auto [time, memory] = launch(screen, size.substr(0, 2) + "000");
        values["launch.ms_" + size] = time;
        values["launch.rss_mb_" + size] = memory;
    }
    if (isWanted("openfile")) {
        const auto [time, memory] = openFile(screen);
        values["openfile.ms"] = time;
        values["openfile.rss_mb"] = memory;
    }
    if (isWanted("open.ratio"))
        values["open.ratio_to_floor"] = openRatioToFloor(screen);
    if (isWanted("open.ms_warm"))
        values["open.ms_warm"] = openWarm(screen);
    if (isWanted("reopen"))
        values["reopen.ms"] = reopen(screen);
    if (isWanted("idle")) {
        const auto [wakeups, processorTime] = idle(screen);
        values["idle.wakeups_per_s"] = wakeups;
        values["idle.processor_percent"] = 100 * processorTime;
    }
    if (isWanted("turn.p50_ms_50k") || isWanted("turn.p95_ms_50k")) {
        const auto times = turns(screen, "chapter-50k", "Chapters of 50 kB", onAndBack, 0.15);
        values["turn.p50_ms_50k"] = median(times);
        values["turn.p95_ms_50k"] = part(times, 0.95);
    }
    if (isWanted("turn.p95_ms_8m"))
        values["turn.p95_ms_8m"] = part(turns(screen, "chapter-8m", "A Chapter of 8 MB", onAndBack, 0.5), 0.95);
    if (isWanted("chapter"))
        values["chapter.ratio_to_floor"] = chapterRatioToFloor(screen);
    if (isWanted("fixed.turn"))
        values["fixed.turn_p95_ms"] = part(turns(screen, "fixed", "Fixed Pages", { XK_Right }, 0.5), 0.95);
    for (const auto& [name, value] : values) {
        if (isWanted(name))
            std::cout << name << ' ' << value << '\n';
    }
}
