#include "confinement/gtk/PageMemoryWatch.hpp"

#include "base/Log.hpp"

#include <glibmm/main.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace pagora {

namespace {

constexpr auto key = "pagora-memory-watch";
// Polling intervals in milliseconds: while all engine processes are idle, while one is working, and when one has
// reached half of its limit. An idle process allocates no memory.
constexpr unsigned idleInterval = 2000;
constexpr unsigned interval = 500;
constexpr unsigned closeInterval = 50;
// Maximum depth of the engine's processes and their sandboxes below the program.
constexpr int maxDepth = 8;
// Process names as the kernel truncates them. The GPU process is treated as a page process.
constexpr std::string_view pageNames[] = { "WebKitWebProces", "WebKitGPUProces" };
constexpr std::string_view networkName = "WebKitNetworkPr";

std::string folderOf(pid_t process)
{
    return "/proc/" + std::to_string(process);
}

std::vector<pid_t> childrenOf(pid_t parent)
{
    std::vector<pid_t> children;
    std::error_code ended;
    for (std::filesystem::directory_iterator task(folderOf(parent) + "/task", ended), last; !ended && task != last;
         task.increment(ended)) {
        std::ifstream list(task->path() / "children");
        for (pid_t child = 0; list >> child;)
            children.push_back(child);
    }
    return children;
}

std::string nameOf(pid_t process)
{
    std::ifstream file(folderOf(process) + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
}

// Returns private memory, swapped memory, and shared memory without files.
std::uint64_t bytesOf(pid_t process)
{
    std::ifstream file(folderOf(process) + "/status");
    std::uint64_t kilobytes = 0;
    for (std::string word; file >> word;) {
        std::uint64_t number = 0;
        if ((word == "RssAnon:" || word == "RssShmem:" || word == "VmSwap:") && file >> number)
            kilobytes += number;
    }
    return kilobytes * 1024;
}

// Returns the processor time of all threads so far, in clock ticks.
std::uint64_t processorTimeOf(pid_t process)
{
    std::ifstream file(folderOf(process) + "/stat");
    // The name is in parentheses and may contain blanks. User and system time are the 12th and 13th values after it.
    file.ignore(std::numeric_limits<std::streamsize>::max(), ')');
    std::string skipped;
    for (int i = 0; i < 11; ++i)
        file >> skipped;
    std::uint64_t program = 0;
    std::uint64_t kernel = 0;
    file >> program >> kernel;
    return program + kernel;
}

struct EngineProcesses {
    std::vector<pid_t> pages;
    std::vector<pid_t> networks;
};

// Adds a process of the engine to `found`. Returns false for other processes.
bool collect(pid_t process, EngineProcesses& found)
{
    const auto name = nameOf(process);
    const bool isPage = std::ranges::find(pageNames, name) != std::end(pageNames);
    if (isPage)
        found.pages.push_back(process);
    else if (name == networkName)
        found.networks.push_back(process);
    return isPage || name == networkName;
}

void collectBelow(pid_t parent, int depth, EngineProcesses& found)
{
    for (const pid_t child : childrenOf(parent)) {
        if (!collect(child, found) && depth < maxDepth)
            collectBelow(child, depth + 1, found);
    }
}

// In a Flatpak all visible processes belong to the program: the portal starts the engine's processes, which are not its
// children but share its process namespace.
void collectVisible(EngineProcesses& found)
{
    std::error_code ended;
    for (std::filesystem::directory_iterator entry("/proc", ended), last; !ended && entry != last;
         entry.increment(ended)) {
        const auto name = entry->path().filename().string();
        pid_t process = 0;
        const auto* const end = name.data() + name.size();
        if (std::from_chars(name.data(), end, process).ptr == end)
            collect(process, found);
    }
}

PageMemoryWatch* watchOf(WebKitWebContext* context)
{
    return static_cast<PageMemoryWatch*>(g_object_get_data(G_OBJECT(context), key));
}

}

void PageMemoryWatch::attach(WebKitWebContext* context, Limits limits)
{
    g_object_set_data_full(G_OBJECT(context), key, std::make_unique<PageMemoryWatch>(limits).release(),
        [](gpointer watch) { std::default_delete<PageMemoryWatch>()(static_cast<PageMemoryWatch*>(watch)); });
}

bool PageMemoryWatch::takeEnded(WebKitWebContext* context)
{
    auto* const watch = watchOf(context);
    return watch && std::exchange(watch->_hasEnded, false);
}

PageMemoryWatch::PageMemoryWatch(Limits limits, Surroundings where)
    : _limits(limits)
    , _where(where)
{
    lookEvery(interval);
}

PageMemoryWatch::~PageMemoryWatch()
{
    _timer.disconnect();
}

void PageMemoryWatch::lookEvery(unsigned milliseconds)
{
    _timer.disconnect();
    _timer = Glib::signal_timeout().connect(
        [this] {
            look();
            return false;
        },
        milliseconds, Glib::PRIORITY_HIGH);
}

void PageMemoryWatch::look()
{
    EngineProcesses processes;
    if (_where == Surroundings::Desktop)
        collectBelow(getpid(), 0, processes);
    else
        collectVisible(processes);
    bool isClose = false;
    bool endsPages = false;
    std::uint64_t work = 0;
    const auto exceeds = [&](pid_t process, std::uint64_t limit) {
        const auto bytes = bytesOf(process);
        work += processorTimeOf(process);
        isClose = isClose || bytes > limit / 2;
        return bytes > limit;
    };
    for (const pid_t process : processes.networks) {
        if (exceeds(process, _limits.network)) {
            endsPages = true;
            log("a page kept too much in memory");
            kill(process, SIGKILL);
        }
    }
    for (const pid_t process : processes.pages) {
        if (exceeds(process, _limits.page) || endsPages) {
            _hasEnded = true;
            log("a page took too much memory");
            kill(process, SIGKILL);
        }
    }
    const bool isIdle = std::exchange(_work, work) == work;
    lookEvery(isClose && !isIdle ? closeInterval : isIdle ? idleInterval : interval);
}

}
