#include "benches/marks/PageProcesses.hpp"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <unistd.h>

namespace pagora::bench {

namespace {

namespace fs = std::filesystem;

// The kernel cuts names of processes.
constexpr const char* pageProcess = "WebKitWebProces";

struct Process {
    std::string name;
    long parent = 0;
};

std::map<long, Process> processes()
{
    std::map<long, Process> all;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const auto number = entry.path().filename().string();
        if (number.find_first_not_of("0123456789") != std::string::npos)
            continue;
        std::ifstream file(entry.path() / "stat");
        std::string text;
        std::getline(file, text);
        const auto begin = text.find('(');
        const auto end = text.rfind(')');
        // The state stands between the name and the parent.
        if (end != std::string::npos && end + 4 < text.size())
            all[std::stol(number)] = { text.substr(begin + 1, end - begin - 1), std::stol(text.substr(end + 4)) };
    }
    return all;
}

bool descends(const std::map<long, Process>& all, long process, long ancestor)
{
    for (auto each = all.find(process); each != all.end(); each = all.find(each->second.parent)) {
        if (each->first == ancestor)
            return true;
    }
    return false;
}

double processorTime(long process)
{
    clockid_t clock = 0;
    timespec time {};
    if (clock_getcpuclockid(static_cast<pid_t>(process), &clock) != 0 || clock_gettime(clock, &time) != 0)
        return 0;
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

}

double pageProcessorTime()
{
    double sum = 0;
    const auto all = processes();
    for (const auto& [number, process] : all) {
        if (process.name == pageProcess && descends(all, number, getpid()))
            sum += processorTime(number);
    }
    return sum;
}

}
