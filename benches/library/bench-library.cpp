// Measures the library without a display: bench-library FOLDER NAME... prints a line for each figure. Each measurement
// runs in a separate process after pending writes are on the disk. A figure is the median of `rounds` after a warm-up,
// and a ratio is the median of the ratios of pairs that were measured one after the other.

#include "benches/data/MadeBooks.hpp"
#include "benches/data/MadeCatalogue.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <set>
#include <spawn.h>
#include <string>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int rounds = 5;
constexpr std::size_t importedBooks = 1'000;
constexpr std::size_t libraryBooks = 50'000;

struct Measured {
    // The time printed by the program, and the time from its start to its end.
    double seconds = 0;
    double wholeSeconds = 0;
    double peakMegabytes = 0;
};

double now()
{
    timespec time {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Allocates and frees memory in a separate process. The host of a virtual machine reclaims memory that was free for a
// while and returns it page by page when it is written, which would slow down an import into a large library. In this
// process, the allocation would count toward the peak memory of the programs that it starts.
void haveFreeMemoryAtHand()
{
    constexpr std::size_t maxBytes = std::size_t(1) << 30;
    const auto pages = static_cast<std::size_t>(std::max(0L, ::sysconf(_SC_AVPHYS_PAGES)));
    const auto bytes = std::min(maxBytes, pages / 2 * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)));
    const pid_t child = ::fork();
    if (child == 0) {
        ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
        ::_exit(0);
    }
    if (child > 0)
        ::waitpid(child, nullptr, 0);
}

class Bench {
public:
    Bench(const std::string& programs, const std::string& folder)
        : _programs(programs)
        , _folder(folder)
    {
    }

    void importRatioAndPeak(const std::set<std::string>& names);
    void importGrowth();
    void saveAndRemove(const std::set<std::string>& names);
    void unpackRatio();

private:
    Measured run(const std::string& program, const std::vector<std::string>& arguments) const;
    Measured importInto(const std::string& home, const std::string& books) const
    {
        haveFreeMemoryAtHand();
        return run(_programs + "/library-work", { "import", home, books });
    }
    // Creates hard links to the generated books under other names and returns their folder.
    std::string booksNamed(const std::string& prefix) const;
    std::string freshFolder(const std::string& name) const
    {
        fs::remove_all(_folder + "/" + name);
        fs::create_directories(_folder + "/" + name);
        return _folder + "/" + name;
    }
    // Created on first use.
    std::string books();
    std::string largeLibrary();

    static void print(const std::string& name, double value) { std::cout << name << " " << value << std::endl; }

    const std::string _programs;
    const std::string _folder;
};

Measured Bench::run(const std::string& program, const std::vector<std::string>& arguments) const
{
    std::array<int, 2> output {};
    if (::pipe2(output.data(), O_CLOEXEC) != 0)
        std::exit(1);
    std::vector<char*> argv { const_cast<char*>(program.c_str()) };
    for (const auto& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    // Log lines are discarded.
    posix_spawn_file_actions_addopen(
        &actions, STDERR_FILENO, (_folder + "/log").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    ::sync();
    const double start = now();
    pid_t child = 0;
    if (posix_spawnp(&child, program.c_str(), &actions, nullptr, argv.data(), environ) != 0) {
        std::cerr << "cannot start " << program << "\n";
        std::exit(1);
    }
    ::close(output[1]);
    std::string text;
    std::array<char, 256> buffer {};
    for (ssize_t got = 0; (got = ::read(output[0], buffer.data(), buffer.size())) > 0;)
        text.append(buffer.data(), static_cast<std::size_t>(got));
    ::close(output[0]);
    int status = 0;
    rusage usage {};
    ::wait4(child, &status, 0, &usage);
    const double end = now();
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        std::cerr << program << " failed\n";
        std::exit(1);
    }
    return { std::atof(text.c_str()), end - start, static_cast<double>(usage.ru_maxrss) / 1'000 };
}

std::string Bench::books()
{
    const auto folder = _folder + "/books";
    if (!fs::exists(folder))
        pagora::bench::writeEverydayBooks(folder, importedBooks);
    return folder;
}

std::string Bench::booksNamed(const std::string& prefix) const
{
    const auto named = freshFolder("named");
    for (const auto& book : fs::directory_iterator(_folder + "/books"))
        fs::create_hard_link(book.path(), named + "/" + prefix + book.path().filename().string());
    return named;
}

std::string Bench::largeLibrary()
{
    const auto home = _folder + "/large";
    if (!fs::exists(home))
        pagora::bench::makeCatalogue(home, libraryBooks);
    return home;
}

void Bench::importRatioAndPeak(const std::set<std::string>& names)
{
    const auto from = books();
    std::vector<double> ratios;
    std::vector<double> ratiosToTwo;
    std::vector<double> peaks;
    for (int round = 0; round <= rounds; ++round) {
        haveFreeMemoryAtHand();
        const auto floor = run(_programs + "/floor_import", { from, freshFolder("floor") }).seconds;
        const auto import = importInto(freshFolder("home"), from);
        haveFreeMemoryAtHand();
        const auto two = run(_programs + "/floor_import", { "--threads", "2", from, freshFolder("floor") }).seconds;
        std::cerr << "import " << import.seconds << " s, floor " << floor << " s, with two threads " << two
                  << " s, peak " << import.peakMegabytes << " MB\n";
        if (round == 0)
            continue;
        ratios.push_back(import.seconds / floor);
        ratiosToTwo.push_back(import.seconds / two);
        peaks.push_back(import.peakMegabytes);
    }
    freshFolder("floor");
    freshFolder("home");
    if (names.contains("import.ratio_to_floor"))
        print("import.ratio_to_floor", median(ratios));
    if (names.contains("import.ratio_to_floor_2"))
        print("import.ratio_to_floor_2", median(ratiosToTwo));
    if (names.contains("import.peak_mb"))
        print("import.peak_mb", median(peaks));
}

void Bench::importGrowth()
{
    books();
    const auto large = largeLibrary();
    std::vector<double> ratios;
    for (int round = 0; round <= rounds; ++round) {
        const auto from = booksNamed("Round " + std::to_string(round) + " ");
        const auto empty = importInto(freshFolder("home"), from);
        const auto full = importInto(large, from);
        std::cerr << "import " << full.seconds << " s into 50k, " << empty.seconds << " s into an empty library, peak "
                  << full.peakMegabytes << " MB\n";
        if (round > 0)
            ratios.push_back(full.seconds / empty.seconds);
    }
    freshFolder("home");
    print("import.growth_50k", median(ratios));
}

void Bench::saveAndRemove(const std::set<std::string>& names)
{
    const auto home = largeLibrary();
    for (const std::string name : { "save.ms_50k", "remove.ms_50k" }) {
        if (!names.contains(name))
            continue;
        const auto kind = name.substr(0, name.find('.'));
        std::vector<double> times;
        for (int round = 0; round <= rounds; ++round) {
            const auto measured = run(_programs + "/library-work", { kind, home });
            std::cerr << kind << " " << measured.seconds * 1'000 << " ms\n";
            if (round > 0)
                times.push_back(measured.seconds * 1'000);
        }
        print(name, median(times));
    }
}

void Bench::unpackRatio()
{
    const auto made = freshFolder("archive");
    if (std::system(("'" + _programs + "/bench-data' archive '" + made + "'").c_str()) != 0)
        std::exit(1);
    const auto archive = made + "/archive.epub";
    std::vector<double> ratios;
    for (int round = 0; round <= rounds; ++round) {
        const auto tool = run("unzip", { "-o", "-q", archive, "-d", freshFolder("tool") }).wholeSeconds;
        freshFolder("tool");
        const auto own = run(_programs + "/library-work", { "unpack", archive, freshFolder("own") }).wholeSeconds;
        freshFolder("own");
        std::cerr << "unpack " << own << " s, the tool " << tool << " s\n";
        if (round > 0)
            ratios.push_back(own / tool);
    }
    freshFolder("archive");
    print("unpack.ratio", median(ratios));
}

}

int main(int count, char** arguments)
{
    if (count < 2)
        return 2;
    const std::string program = *arguments;
    const std::set<std::string> names(arguments + 2, arguments + count);
    const auto has = [&](const char* name) { return names.contains(name); };
    const auto folder = fs::canonical(arguments[1]).string();
    // Uses the Trash of a temporary home folder.
    setenv("HOME", (folder + "/large").c_str(), 1);
    for (const auto* variable : { "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME" })
        unsetenv(variable);
    Bench bench(fs::path(program).parent_path().string(), folder);
    if (has("import.ratio_to_floor") || has("import.ratio_to_floor_2") || has("import.peak_mb"))
        bench.importRatioAndPeak(names);
    if (has("import.growth_50k"))
        bench.importGrowth();
    if (has("save.ms_50k") || has("remove.ms_50k"))
        bench.saveAndRemove(names);
    if (has("unpack.ratio"))
        bench.unpackRatio();
    return 0;
}
