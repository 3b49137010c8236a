#include "platform/gtk/PageMemoryWatch.hpp"

#include "platform/Log.hpp"

#include <glibmm/main.h>

#include <charconv>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace pagora {

namespace {

constexpr auto key = "pagora-memory-watch";
constexpr unsigned interval = 1000;
// The engine's helpers and their sandboxes lie a few steps below the program.
constexpr int deepest = 8;
// As much of the page process's name as the system keeps.
constexpr auto pageProcess = "WebKitWebProces";

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

// In a Flatpak these are the program's own: its portal starts the engine's processes, which are not below the program
// but share its table of processes.
std::vector<pid_t> visibleProcesses()
{
    std::vector<pid_t> processes;
    std::error_code ended;
    for (std::filesystem::directory_iterator entry("/proc", ended), last; !ended && entry != last;
         entry.increment(ended)) {
        const auto name = entry->path().filename().string();
        pid_t process = 0;
        const auto* const end = name.data() + name.size();
        if (std::from_chars(name.data(), end, process).ptr == end)
            processes.push_back(process);
    }
    return processes;
}

bool isPageProcess(pid_t process)
{
    std::ifstream file(folderOf(process) + "/comm");
    std::string name;
    return std::getline(file, name) && name == pageProcess;
}

// What the process has for itself, in memory and swapped out.
std::uint64_t bytesOf(pid_t process)
{
    std::ifstream file(folderOf(process) + "/status");
    std::uint64_t kilobytes = 0;
    for (std::string word; file >> word;) {
        std::uint64_t number = 0;
        if ((word == "RssAnon:" || word == "VmSwap:") && file >> number)
            kilobytes += number;
    }
    return kilobytes * 1024;
}

PageMemoryWatch* watchOf(WebKitWebContext* context)
{
    return static_cast<PageMemoryWatch*>(g_object_get_data(G_OBJECT(context), key));
}

}

void PageMemoryWatch::attach(WebKitWebContext* context, std::uint64_t limit)
{
    g_object_set_data_full(G_OBJECT(context), key, std::make_unique<PageMemoryWatch>(limit).release(),
        [](gpointer watch) { std::default_delete<PageMemoryWatch>()(static_cast<PageMemoryWatch*>(watch)); });
}

bool PageMemoryWatch::takeEnded(WebKitWebContext* context)
{
    auto* const watch = watchOf(context);
    return watch && std::exchange(watch->_hasEnded, false);
}

PageMemoryWatch::PageMemoryWatch(std::uint64_t limit, Surroundings where)
    : _limit(limit)
    , _where(where)
    , _timer(Glib::signal_timeout().connect(
          [this] {
              look();
              return true;
          },
          interval, Glib::PRIORITY_HIGH))
{
}

PageMemoryWatch::~PageMemoryWatch()
{
    _timer.disconnect();
}

void PageMemoryWatch::look()
{
    if (_where == Surroundings::Desktop) {
        lookBelow(getpid(), 0);
        return;
    }
    for (const pid_t process : visibleProcesses())
        check(process);
}

void PageMemoryWatch::lookBelow(pid_t parent, int depth)
{
    for (const pid_t child : childrenOf(parent)) {
        check(child);
        if (depth < deepest)
            lookBelow(child, depth + 1);
    }
}

void PageMemoryWatch::check(pid_t process)
{
    if (!isPageProcess(process) || bytesOf(process) <= _limit)
        return;
    _hasEnded = true;
    log("a page took too much memory");
    kill(process, SIGKILL);
}

}
