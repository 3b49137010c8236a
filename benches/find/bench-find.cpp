// Searches a book of 11 MB as the reader does, and the same files with grep and with a plain program on libxml2:
// bench-find FOLDER NAME...

#include "benches/data/MadeText.hpp"
#include "find/BookFinder.hpp"
#include "running/GLibRunLoop.hpp"

#include <glib.h>
#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace pagora;
using Clock = std::chrono::steady_clock;

constexpr std::size_t bookBytes = 11'000'000;
constexpr std::size_t chapterBytes = 100'000;
constexpr int rounds = 7;
constexpr const char* word = "needle";

double since(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// The word occurs once in every tenth chapter.
std::vector<std::string> writeChapters(const std::string& folder)
{
    bench::MadeText text(7);
    std::vector<std::string> paths;
    for (std::size_t bytes = 0; bytes < bookBytes;) {
        auto chapter = text.chapter("Chapter " + std::to_string(paths.size()), chapterBytes);
        if (paths.size() % 10 == 0)
            chapter.insert(chapter.rfind("</p>"), std::string(" the ") + word + " in it");
        paths.push_back(folder + "/chapter" + std::to_string(paths.size()) + ".xhtml");
        std::ofstream(paths.back()) << chapter;
        bytes += chapter.size();
    }
    return paths;
}

struct Times {
    std::vector<double> first;
    std::vector<double> whole;
};

void search(const std::vector<std::string>& paths, const std::string& folder, Times& times)
{
    GLibRunLoop loop;
    // A new finder has an empty cache.
    BookFinder finder(loop, paths, folder);
    bool isOver = false;
    bool isFirst = true;
    const auto start = Clock::now();
    finder.find(word, WholeWords::No, [&](const SearchProgress& progress) {
        if (!progress.found.empty() && std::exchange(isFirst, false))
            times.first.push_back(since(start));
        isOver = progress.isOver;
    });
    while (!isOver)
        g_main_context_iteration(nullptr, TRUE);
    times.whole.push_back(since(start));
}

void gather(void* text, const xmlChar* characters, int length)
{
    static_cast<std::string*>(text)->append(
        reinterpret_cast<const char*>(characters), static_cast<std::size_t>(length));
}

double searchByLibrary(const std::vector<std::string>& paths)
{
    const auto start = Clock::now();
    std::size_t count = 0;
    xmlSAXHandler handler {};
    handler.characters = gather;
    for (const auto& path : paths) {
        std::string text;
        xmlSAXUserParseFile(&handler, &text, path.c_str());
        std::transform(text.begin(), text.end(), text.begin(), [](char c) { return g_ascii_tolower(c); });
        for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
            ++count;
    }
    return count > 0 ? since(start) : -1;
}

double searchByGrep(const std::string& folder)
{
    const std::string command = "grep -rci " + std::string(word) + " '" + folder + "' >/dev/null";
    const auto start = Clock::now();
    return std::system(command.c_str()) == 0 ? since(start) : -1;
}

}

int main(int count, char** arguments)
{
    if (count < 2)
        return 2;
    const std::set<std::string> names(arguments + 2, arguments + count);
    const std::string folder = arguments[1];
    const auto paths = writeChapters(folder);
    Times times;
    std::vector<double> grep;
    std::vector<double> library;
    for (int round = 0; round < rounds; ++round) {
        search(paths, folder, times);
        grep.push_back(searchByGrep(folder));
        library.push_back(searchByLibrary(paths));
    }
    const auto print = [&](const char* name, std::vector<double> values) {
        if (names.contains(name))
            std::printf("%s %.1f\n", name, median(std::move(values)));
    };
    print("find.first_ms", times.first);
    print("find.book_11mb_ms", times.whole);
    print("find.grep_11mb_ms", grep);
    print("find.libxml2_11mb_ms", library);
    return 0;
}
