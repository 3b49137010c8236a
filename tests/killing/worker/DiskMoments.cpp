// Disables the C library's fortified and redirected variants of these calls.
#undef _FORTIFY_SOURCE
#undef _FILE_OFFSET_BITS

#include "tests/killing/worker/DiskMoments.hpp"

#include <atomic>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace pagora::test {

namespace {
std::atomic<long> countDown = 0;
std::atomic<bool> counting = false;

bool itIsTime()
{
    return counting && --countDown == 0;
}

void die()
{
    syscall(SYS_kill, getpid(), SIGKILL);
    for (;;)
        pause();
}

void dieInTime()
{
    if (itIsTime())
        die();
}
}

void countDiskMoments(long killAt)
{
    countDown = killAt;
    counting = true;
}

void pauseDiskMoments()
{
    counting = false;
}

void resumeDiskMoments()
{
    counting = true;
}

}

using pagora::test::dieInTime;

// NOLINTBEGIN: the names and shapes are the C library's.
#pragma GCC visibility push(default)
extern "C" {

ssize_t write(int file, const void* bytes, size_t size)
{
    if (pagora::test::itIsTime()) {
        syscall(SYS_write, file, bytes, size / 2);
        pagora::test::die();
    }
    return syscall(SYS_write, file, bytes, size);
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset)
{
    if (pagora::test::itIsTime()) {
        syscall(SYS_pwrite64, file, bytes, size / 2, offset);
        pagora::test::die();
    }
    return syscall(SYS_pwrite64, file, bytes, size, offset);
}

ssize_t pwrite(int file, const void* bytes, size_t size, off_t offset)
{
    return pwrite64(file, bytes, size, offset);
}

ssize_t copy_file_range(int from, off64_t* fromOffset, int to, off64_t* toOffset, size_t size, unsigned flags)
{
    if (pagora::test::itIsTime()) {
        syscall(SYS_copy_file_range, from, fromOffset, to, toOffset, size / 2, flags);
        pagora::test::die();
    }
    return syscall(SYS_copy_file_range, from, fromOffset, to, toOffset, size, flags);
}

ssize_t sendfile64(int to, int from, off64_t* offset, size_t size)
{
    dieInTime();
    return syscall(SYS_sendfile, to, from, offset, size);
}

ssize_t sendfile(int to, int from, off_t* offset, size_t size)
{
    return sendfile64(to, from, offset, size);
}

int ftruncate64(int file, off64_t size) noexcept
{
    dieInTime();
    return static_cast<int>(syscall(SYS_ftruncate, file, size));
}

int ftruncate(int file, off_t size) noexcept
{
    return ftruncate64(file, size);
}

int fsync(int file)
{
    dieInTime();
    return static_cast<int>(syscall(SYS_fsync, file));
}

int fdatasync(int file)
{
    dieInTime();
    return static_cast<int>(syscall(SYS_fdatasync, file));
}

int rename(const char* from, const char* to) noexcept
{
    dieInTime();
    return static_cast<int>(syscall(SYS_rename, from, to));
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept
{
    dieInTime();
    return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

int link(const char* from, const char* to) noexcept
{
    dieInTime();
    return static_cast<int>(syscall(SYS_link, from, to));
}

int unlink(const char* path) noexcept
{
    dieInTime();
    return static_cast<int>(syscall(SYS_unlink, path));
}

int unlinkat(int folder, const char* path, int flags) noexcept
{
    dieInTime();
    return static_cast<int>(syscall(SYS_unlinkat, folder, path, flags));
}

int mkdir(const char* path, mode_t mode) noexcept
{
    dieInTime();
    return static_cast<int>(syscall(SYS_mkdir, path, mode));
}
}
#pragma GCC visibility pop
// NOLINTEND
