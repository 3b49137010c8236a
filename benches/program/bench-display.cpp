// Measures the program as a user sees it: from real keys and clicks to their effect on the screen.
// bench-display FOLDER NAME... prints "NAME VALUE" lines. Needs a display of at least 1280 by 860.

#include "AwakeProcessors.hpp"
#include "Program.hpp"
#include "ShownLibrary.hpp"
#include "WatchedScreen.hpp"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <thread>

namespace {

using namespace pagora::bench;
namespace fs = std::filesystem;

constexpr int runs = 9;
// The program's default text size, as a multiple of the engine's.
constexpr const char* textSize = "1.75";

// Returns a chapter of a generated book as laid out by the program.
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

// Returns the time in milliseconds until a plain page appears in another window at the position of the program's page.
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

// Returns the median ratio of the measured time to the floor's time, measured alternately after a warm-up.
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
    ShownLibrary library(screen, "chapter-500k", "A Chapter of 500 kB");
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
    ShownLibrary library(screen, "chapter-50k", "Chapters of 50 kB");
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

// Returns the cost of an idle second with an open book.
Idleness idle(WatchedScreen& screen)
{
    ShownLibrary library(screen, "chapter-50k", "Chapters of 50 kB");
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
    ShownLibrary library(screen, "chapter-50k", "Chapters of 50 kB");
    std::vector<double> times;
    for (int i = 0; i <= runs; ++i) {
        library.open(screen);
        times.push_back(library.close(screen));
    }
    times.erase(times.begin());
    return median(times);
}

// Returns the time until the stored picture of a page appears, and the maximum number of pixels that the page changes.
WatchedScreen::FirstPicture reopenPage(WatchedScreen& screen)
{
    std::vector<double> times;
    std::size_t changed = 0;
    for (const auto& [kind, title] : std::map<std::string, std::string> {
             { "chapter-50k", "Chapters of 50 kB" }, { "chapter-500k", "A Chapter of 500 kB" } }) {
        ShownLibrary library(screen, kind, title);
        library.open(screen);
        for (int i = 0; i <= runs; ++i) {
            screen.press(XK_Right);
            screen.settle(1);
            library.close(screen);
            const auto first = library.openFirst(screen, pageArea);
            changed = std::max(changed, first.changedPixels);
            if (i > 0)
                times.push_back(first.time);
        }
    }
    return { median(times), changed };
}

// Returns the time until the first page of a chapter of 8 MB appears, in a book that is opened for the first time.
double firstPageOf8Megabytes(WatchedScreen& screen)
{
    std::vector<double> times;
    for (int i = 0; i < 5; ++i) {
        std::string home;
        {
            ShownLibrary library(screen, "chapter-8m", "A Chapter of 8 MB");
            home = library.home;
            times.push_back(library.openFirst(screen, firstColumn).time);
        }
        fs::remove_all(home);
    }
    return median(times);
}

const std::vector<KeySym> onAndBack { XK_Right, XK_Right, XK_Right, XK_Left };

// Turns pages with the given sequence of keys, repeatedly, and returns the time of each turn.
std::vector<double> turns(WatchedScreen& screen, const std::string& kind, const std::string& title,
    const std::vector<KeySym>& keys, double pause)
{
    ShownLibrary library(screen, kind, title);
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
    ShownLibrary library(screen, "chapter-50k", "Chapters of 50 kB");
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

// Returns a home folder with a library of `count` books.
std::string homeOf(const std::string& count)
{
    const std::string home = newHome("home-" + count);
    if (fs::is_empty(home))
        run('"' + programFolder() + "/bench-data\" catalogue \"" + home + "\" " + count);
    return home;
}

Launch launchOnce(WatchedScreen& screen, const std::string& home)
{
    screen.settle(0.5);
    screen.forget();
    const auto program = startPagora(home);
    const double painted = shownOrFail(screen, screenArea, 1, "the library");
    if (screen.colors(coverArea) < 1000)
        fail("the covers do not appear");
    screen.waitForWindow("Pagora");
    return { (painted - program.started()) * 1000, program.residentMemory() };
}

Launch launch(WatchedScreen& screen, const std::string& count)
{
    const std::string home = homeOf(count);
    std::vector<double> times, memory;
    for (int i = 0; i <= 5; ++i) {
        const auto one = launchOnce(screen, home);
        times.push_back(one.time);
        memory.push_back(one.memory);
    }
    fs::remove_all(home);
    times.erase(times.begin());
    return { median(times), median(memory) };
}

// Returns the median ratio of the time to launch with 50,000 books to the time with 1,000, measured alternately.
double launchGrowth(WatchedScreen& screen)
{
    const std::string small = homeOf("1000");
    const std::string large = homeOf("50000");
    std::vector<double> ratios;
    for (int i = 0; i <= runs; ++i) {
        const double least = launchOnce(screen, small).time;
        const double time = launchOnce(screen, large).time;
        std::cerr << time << " ms against " << least << " ms\n";
        ratios.push_back(time / least);
    }
    fs::remove_all(small);
    fs::remove_all(large);
    ratios.erase(ratios.begin());
    return median(ratios);
}

// `Again` shows the picture of the last page shown of the book.
enum class Reading : bool { First, Again };

Launch openFile(WatchedScreen& screen, Reading reading)
{
    const std::string home = newHome(reading == Reading::First ? "home-file" : "home-file-again");
    const std::string book = made("chapter-50k");
    std::vector<double> times, memory;
    for (int i = 0; i <= 5; ++i) {
        if (reading == Reading::First)
            fs::remove_all(home + pictures);
        screen.settle(0.5);
        screen.forget();
        const auto program = startPagora(home, { book });
        const auto& area = reading == Reading::First ? screenArea : middleOfPage;
        const double painted = shownOrFail(screen, area, 1, "the page");
        screen.waitForWindow("Pagora - Chapters of 50 kB");
        std::cerr << "openfile: " << (painted - program.started()) * 1000 << " ms\n";
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
    if (isWanted("launch.growth"))
        values["launch.growth_50k"] = launchGrowth(screen);
    if (isWanted("openfile.")) {
        const auto [time, memory] = openFile(screen, Reading::First);
        values["openfile.ms"] = time;
        values["openfile.rss_mb"] = memory;
    }
    if (isWanted("openfile_again"))
        values["openfile_again.ms"] = openFile(screen, Reading::Again).time;
    if (isWanted("reopen_page") || isWanted("first_change")) {
        const auto [time, changed] = reopenPage(screen);
        values["reopen_page.ms"] = time;
        values["first_change.pixels"] = static_cast<double>(changed);
    }
    if (isWanted("open.first_ms_8m"))
        values["open.first_ms_8m"] = firstPageOf8Megabytes(screen);
    if (isWanted("open.ratio"))
        values["open.ratio_to_floor"] = openRatioToFloor(screen);
    if (isWanted("open.ms_warm"))
        values["open.ms_warm"] = openWarm(screen);
    if (isWanted("reopen."))
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
