#pragma once

#include <unistd.h>
#include <utility>

namespace pagora {

// Owns a file descriptor and closes it.
class FileDescriptor {
public:
    explicit FileDescriptor(int fd = -1)
        : _fd(fd)
    {
    }
    FileDescriptor(FileDescriptor&& other) noexcept
        : _fd(std::exchange(other._fd, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(_fd, other._fd);
        return *this;
    }
    ~FileDescriptor()
    {
        if (_fd >= 0)
            ::close(_fd);
    }

    int get() const { return _fd; }
    // Returns the descriptor without closing it. The caller owns it.
    int release() { return std::exchange(_fd, -1); }
    explicit operator bool() const { return _fd >= 0; }

private:
    int _fd;
};

}
