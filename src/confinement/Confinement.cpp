#include "confinement/Confinement.hpp"

#include "base/FileDescriptor.hpp"
#include "base/Log.hpp"
#include "base/Surroundings.hpp"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <spawn.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <utility>
#include <vector>

namespace pagora {

namespace {

constexpr const char* switchName = "WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS";
constexpr const char* confinementOn = "0";
constexpr const char* confinementOff = "1";
constexpr auto pollInterval = std::chrono::milliseconds(5);

// Opens a seccomp filter that allows everything. The test uses it, because some kernels lack seccomp filters.
FileDescriptor openFilter()
{
    FileDescriptor file(::memfd_create("filter", MFD_CLOEXEC));
    constexpr sock_filter allow = { BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW };
    if (file && (::write(file.get(), &allow, sizeof allow) != sizeof allow || ::lseek(file.get(), 0, SEEK_SET) != 0))
        return FileDescriptor();
    return file;
}

// The arguments with which the engine starts a page process. The confined program is one that the engine also needs.
std::vector<std::string> arguments(const std::string& program, int filter)
{
    std::vector<std::string> all = { program, "--die-with-parent", "--unshare-uts", "--unshare-pid", "--unshare-ipc",
        "--unshare-net", "--ro-bind", "/", "/", "--dev", "/dev", "--proc", "/proc", "--tmpfs", "/tmp" };
    for (const char* folder : { "/etc", "/sys/block", "/sys/bus", "/sys/class", "/sys/dev", "/sys/devices" })
        all.insert(all.end(), { "--ro-bind", folder, folder });
    all.insert(all.end(), { "--seccomp", std::to_string(filter), "--", "xdg-dbus-proxy", "--version" });
    return all;
}

// Returns the process id; 0 if the process could not be started.
pid_t start(const std::string& program, const FileDescriptor& filter)
{
    auto texts = arguments(program, filter.get());
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t files;
    if (::posix_spawn_file_actions_init(&files) != 0)
        return 0;
    pid_t process = 0;
    bool isReady = true;
    for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
        isReady = isReady && ::posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0) == 0;
    // Duplicating to the same number keeps the descriptor open.
    const bool started = isReady && ::posix_spawn_file_actions_adddup2(&files, filter.get(), filter.get()) == 0
        && ::posix_spawnp(&process, program.c_str(), &files, nullptr, pointers.data(), environ) == 0;
    ::posix_spawn_file_actions_destroy(&files);
    return started ? process : 0;
}

// Returns whether the process exits successfully within the timeout.
bool exitsSuccessfully(pid_t process, double timeout)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(timeout);
    int status = 0;
    pid_t ended = 0;
    while ((ended = ::waitpid(process, &status, WNOHANG)) == 0 || (ended < 0 && errno == EINTR)) {
        if (std::chrono::steady_clock::now() >= end) {
            ::kill(process, SIGKILL);
            ::waitpid(process, &status, 0);
            return false;
        }
        std::this_thread::sleep_for(pollInterval);
    }
    return ended == process && WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

bool confines(const ConfinementProbe::Options& options)
{
    if (isConfinementSwitchedOff())
        return false;
    // In a Flatpak the engine asks the portal to confine its processes.
    if (surroundings() == Surroundings::Flatpak)
        return true;
    const auto filter = openFilter();
    const pid_t process = filter ? start(options.program, filter) : 0;
    return process != 0 && exitsSuccessfully(process, options.timeout);
}

}

ConfinementProbe::ConfinementProbe(Options options)
    : _options(std::move(options))
{
    _worker.perform([this] {
        if (confines(_options))
            _result = Confinement::Full;
        else
            log("this system does not let pages be confined: scripts of books are off");
        _isKnown = true;
    });
}

Confinement ConfinementProbe::result()
{
    _worker.wait();
    return _result;
}

void prepareConfinementSwitch()
{
    ::setenv(switchName, confinementOn, 0);
}

bool isConfinementSwitchedOff()
{
    const char* const value = std::getenv(switchName);
    return value && value != std::string_view(confinementOn);
}

ConfinementSwitchedOff::ConfinementSwitchedOff()
{
    const char* const value = std::getenv(switchName);
    _before = value ? value : confinementOn;
    ::setenv(switchName, confinementOff, 1);
}

ConfinementSwitchedOff::~ConfinementSwitchedOff()
{
    ::setenv(switchName, _before.c_str(), 1);
}

}
