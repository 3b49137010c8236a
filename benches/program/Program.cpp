#include "Program.hpp"

#include "WatchedScreen.hpp"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <limits>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pagora::bench {

namespace fs = std::filesystem;

namespace {

// Returns a value of a /proc file with lines like "Pss:  12 kB"; 0 if it is missing.
double figureOf(const std::string& file, const std::string& name)
{
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(name + ":", 0) == 0)
            return std::stod(line.substr(name.size() + 1));
    }
    return 0;
}

double megabytes(const std::string& file, const std::string& name)
{
    return figureOf(file, name) / 1024;
}

pid_t parentOf(pid_t pid)
{
    return static_cast<pid_t>(figureOf("/proc/" + std::to_string(pid) + "/status", "PPid"));
}

bool isBelow(pid_t pid, pid_t ancestor)
{
    while (pid > 1 && pid != ancestor)
        pid = parentOf(pid);
    return pid == ancestor;
}

}

std::string programFolder()
{
    return fs::read_symlink("/proc/self/exe").parent_path();
}

double Activity::wakeupsSince(const Activity& before) const
{
    double sum = 0;
    for (const auto& [thread, count] : wakeups) {
        if (const auto found = before.wakeups.find(thread); found != before.wakeups.end())
            sum += count - found->second;
    }
    return sum;
}

Program::Program(const std::string& executable, const std::vector<std::string>& arguments, const std::string& home)
{
    std::vector<std::string> words { executable };
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (auto& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    _started = now();
    _pid = fork();
    if (_pid != 0)
        return;
    if (!home.empty())
        setenv("HOME", home.c_str(), 1);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    execvp(pointers[0], pointers.data());
    _exit(127);
}

void Program::end()
{
    if (_pid == 0)
        return;
    kill(_pid, SIGTERM);
    waitpid(_pid, nullptr, 0);
    _pid = 0;
}

double Program::residentMemory() const
{
    return megabytes("/proc/" + std::to_string(_pid) + "/status", "VmRSS");
}

double Program::proportionalMemory() const
{
    double sum = 0;
    for (const pid_t process : processes())
        sum += megabytes("/proc/" + std::to_string(process) + "/smaps_rollup", "Pss");
    return sum;
}

Activity Program::activity() const
{
    Activity sum;
    for (const pid_t process : processes()) {
        const std::string folder = "/proc/" + std::to_string(process);
        for (const auto& thread : fs::directory_iterator(folder + "/task"))
            sum.wakeups[std::stoi(thread.path().filename().string())]
                = figureOf(thread.path() / "status", "voluntary_ctxt_switches");
        // User and system time are the 12th and 13th values after the name in parentheses.
        std::ifstream file(folder + "/stat");
        file.ignore(std::numeric_limits<std::streamsize>::max(), ')');
        std::string skipped;
        for (int i = 0; i < 11; ++i)
            file >> skipped;
        double program = 0;
        double kernel = 0;
        file >> program >> kernel;
        sum.processorTime += (program + kernel) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    return sum;
}

std::vector<pid_t> Program::processes() const
{
    std::vector<pid_t> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const auto name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos && isBelow(std::stoi(name), _pid))
            found.push_back(std::stoi(name));
    }
    return found;
}

}
