#include "Program.hpp"

#include "WatchedScreen.hpp"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <set>
#include <signal.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace pagora::bench {

namespace fs = std::filesystem;

namespace {

// A figure of a /proc file with lines like "Pss:  12 kB", in MB.
double megabytes(const std::string& file, const std::string& name)
{
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(name + ":", 0) != 0)
            continue;
        std::istringstream words(line.substr(name.size() + 1));
        double kilobytes = 0;
        words >> kilobytes;
        return kilobytes / 1024;
    }
    return 0;
}

pid_t parentOf(pid_t pid)
{
    std::ifstream file("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("PPid:", 0) == 0)
            return static_cast<pid_t>(std::stol(line.substr(5)));
    }
    return 0;
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
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const auto name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos && isBelow(std::stoi(name), _pid))
            sum += megabytes(entry.path() / "smaps_rollup", "Pss");
    }
    return sum;
}

}
