#include "store/HomeLock.hpp"

#include "base/Path.hpp"

#include <glib.h>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

namespace pagora {

HomeLock::HomeLock(const std::string& folder)
{
    // 0700: the stored values in the folder are private.
    g_mkdir_with_parents(folder.c_str(), 0700);
    _file = FileDescriptor(
        ::open(appendingPathComponent(folder, "in-use").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
}

bool HomeLock::take(double seconds)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (_file && ::flock(_file.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK)
            return true;
        if (Clock::now() >= end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return true;
}

}
