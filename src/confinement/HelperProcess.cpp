#include "confinement/HelperProcess.hpp"

#include "base/Log.hpp"
#include "confinement/HelperMessages.hpp"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <utility>

namespace pagora {

namespace {

// The interval at which the budget is checked.
constexpr int watchMilliseconds = 50;

// Exit status of a program whose libraries are missing.
constexpr int notLoaded = 127;

std::chrono::nanoseconds durationOf(const timespec& time)
{
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

// Starts the program with that socket as its standard input. Returns 0 on failure.
pid_t spawned(const std::string& program, const std::vector<std::string>& arguments, int socket)
{
    posix_spawn_file_actions_t files;
    if (::posix_spawn_file_actions_init(&files) != 0)
        return 0;
    const auto path = helperPath(program);
    std::vector<std::string> strings { program };
    strings.insert(strings.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (auto& string : strings)
        pointers.push_back(string.data());
    pointers.push_back(nullptr);
    pid_t process = 0;
    const bool started = ::posix_spawn_file_actions_adddup2(&files, socket, STDIN_FILENO) == 0
        && ::posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0) == 0
        && ::posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1) == 0
        && ::posix_spawn(&process, path.c_str(), &files, nullptr, pointers.data(), environ) == 0;
    ::posix_spawn_file_actions_destroy(&files);
    return started ? process : 0;
}

}

std::string helperPath(const std::string& program)
{
    std::error_code ignored;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
    const auto built = folder / program;
    return std::filesystem::exists(built, ignored) ? built : folder.parent_path() / "libexec" / "pagora" / program;
}

HelperProcess::HelperProcess(std::string program, std::function<bool()> isEnded)
    : _program(std::move(program))
    , _isEnded(std::move(isEnded))
{
}

HelperProcess::~HelperProcess()
{
    end();
}

void HelperProcess::setArguments(std::vector<std::string> arguments)
{
    if (arguments == _arguments)
        return;
    end();
    _arguments = std::move(arguments);
}

bool HelperProcess::start()
{
    if (_process)
        return true;
    _couldStart = false;
    int ends[2] = { -1, -1 };
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return false;
    FileDescriptor ours(ends[0]);
    const FileDescriptor theirs(ends[1]);
    _process = spawned(_program, _arguments, theirs.get());
    if (!_process) {
        log("ERROR: " + _program + " cannot be started");
        return false;
    }
    _socket = std::move(ours);
    _couldStart = true;
    return true;
}

std::optional<std::string> HelperProcess::ask(std::string_view message, int file, const HelperBudget& budget)
{
    if (_isEnded())
        return std::nullopt;
    // A process that exited after its last answer is restarted; this request did not cause the exit.
    const bool isFresh = _process == 0;
    if (!start())
        return std::nullopt;
    auto before = processorTime();
    if (!sendMessage(_socket.get(), message, file)) {
        end();
        before = {};
        if (isFresh || !start() || !sendMessage(_socket.get(), message, file)) {
            end();
            return std::nullopt;
        }
    }
    const auto begin = std::chrono::steady_clock::now();
    MessageReader reader;
    while (!_isEnded()) {
        pollfd waiting { _socket.get(), POLLIN, 0 };
        const auto state = ::poll(&waiting, 1, watchMilliseconds) > 0 ? reader.readSome(_socket.get())
                                                                      : MessageReader::State::Waiting;
        if (state == MessageReader::State::Whole)
            return reader.takeMessage();
        if (state == MessageReader::State::Gone || !isWithin(budget, before, begin))
            break;
    }
    end();
    return std::nullopt;
}

void HelperProcess::end()
{
    if (!_process)
        return;
    ::kill(_process, SIGKILL);
    _socket = FileDescriptor();
    int status = 0;
    rusage used {};
    while (::wait4(_process, &status, 0, &used) < 0 && errno == EINTR) { }
    _process = 0;
    if (WIFEXITED(status) && WEXITSTATUS(status) == notLoaded)
        _couldStart = false;
    const auto durationOf = [](const timeval& time) {
        return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
    };
    _usage = { std::chrono::duration_cast<std::chrono::milliseconds>(
                   durationOf(used.ru_utime) + durationOf(used.ru_stime)),
        static_cast<std::uint64_t>(used.ru_maxrss) << 10 };
}

bool HelperProcess::isWithin(const HelperBudget& budget, std::chrono::nanoseconds processorTimeBefore,
    std::chrono::steady_clock::time_point begin) const
{
    return processorTime() - processorTimeBefore <= budget.processorTime
        && std::chrono::steady_clock::now() - begin <= budget.time && residentBytes() <= budget.residentBytes;
}

std::chrono::nanoseconds HelperProcess::processorTime() const
{
    clockid_t clock {};
    timespec time {};
    if (::clock_getcpuclockid(_process, &clock) != 0 || ::clock_gettime(clock, &time) != 0)
        return {};
    return durationOf(time);
}

std::uint64_t HelperProcess::residentBytes() const
{
    std::ifstream file("/proc/" + std::to_string(_process) + "/statm");
    std::uint64_t all = 0;
    std::uint64_t resident = 0;
    file >> all >> resident;
    return file ? resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE)) : 0;
}

}
