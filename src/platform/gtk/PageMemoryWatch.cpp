#include "platform/gtk/PageMemoryWatch.hpp"

#include "platform/Log.hpp"

#include <glibmm/main.h>

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

PageMemoryWatch::PageMemoryWatch(std::uint64_t limit)
    : _limit(limit)
    , _timer(Glib::signal_timeout().connect(
          [this] {
              look(getpid(), 0);
              return true;
          },
          interval, Glib::PRIORITY_HIGH))
{
}

PageMemoryWatch::~PageMemoryWatch()
{
    _timer.disconnect();
}

void PageMemoryWatch::look(pid_t parent, int depth)
{
    for (const pid_t child : childrenOf(parent)) {
        if (isPageProcess(child) && bytesOf(child) > _limit) {
            _hasEnded = true;
            log("a page took too much memory");
            kill(child, SIGKILL);
        } else if (depth < deepest)
            look(child, depth + 1);
    }
}

}
