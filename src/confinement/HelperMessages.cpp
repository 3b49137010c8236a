#include "confinement/HelperMessages.hpp"

#include "base/LittleEndian.hpp"
#include "files/Files.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>

namespace pagora {

namespace {

constexpr std::size_t sizeBytes = 4;
constexpr std::size_t pieceBytes = std::size_t { 64 } << 10;

std::string framed(std::string_view message)
{
    std::string bytes(sizeBytes, '\0');
    putLittleEndian(bytes, 0, message.size(), sizeBytes);
    return bytes.append(message);
}

// Buffer for the control data of one file descriptor.
union FileRoom {
    cmsghdr header;
    std::array<char, CMSG_SPACE(sizeof(int))> bytes;
};

ssize_t sendSome(int socket, std::string_view bytes, int file)
{
    iovec piece { const_cast<char*>(bytes.data()), bytes.size() };
    msghdr message {};
    message.msg_iov = &piece;
    message.msg_iovlen = 1;
    FileRoom room {};
    if (file >= 0) {
        message.msg_control = room.bytes.data();
        message.msg_controllen = room.bytes.size();
        auto* header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof file);
        std::memcpy(CMSG_DATA(header), &file, sizeof file);
    }
    ssize_t sent = 0;
    do
        sent = ::sendmsg(socket, &message, MSG_NOSIGNAL);
    while (sent < 0 && errno == EINTR);
    return sent;
}

}

bool sendMessage(int socket, std::string_view message, int file)
{
    const auto bytes = framed(message);
    for (std::string_view rest(bytes); !rest.empty();) {
        const auto sent = sendSome(socket, rest, std::exchange(file, -1));
        if (sent <= 0)
            return false;
        rest.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

bool writeMessage(int socket, std::string_view message)
{
    return writeAll(socket, framed(message));
}

std::optional<std::size_t> MessageReader::size() const
{
    if (_bytes.size() < sizeBytes)
        return std::nullopt;
    return static_cast<std::size_t>(littleEndian(_bytes, 0, sizeBytes));
}

MessageReader::State MessageReader::readSome(int socket)
{
    std::array<char, pieceBytes> buffer;
    // Do not read beyond the end of this message.
    const auto wanted = size() ? sizeBytes + *size() - _bytes.size() : sizeBytes - _bytes.size();
    iovec piece { buffer.data(), std::min(buffer.size(), wanted) };
    msghdr message {};
    message.msg_iov = &piece;
    message.msg_iovlen = 1;
    FileRoom room {};
    message.msg_control = room.bytes.data();
    message.msg_controllen = room.bytes.size();
    ssize_t got = 0;
    do
        got = ::recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    while (got < 0 && errno == EINTR);
    if (got <= 0)
        return State::Gone;
    for (auto* header = CMSG_FIRSTHDR(&message); header; header = CMSG_NXTHDR(&message, header)) {
        if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS)
            continue;
        int file = -1;
        std::memcpy(&file, CMSG_DATA(header), sizeof file);
        _file = FileDescriptor(file);
    }
    _bytes.append(buffer.data(), static_cast<std::size_t>(got));
    if (!size())
        return State::Waiting;
    if (*size() > maxMessageBytes)
        return State::Gone;
    return _bytes.size() == sizeBytes + *size() ? State::Whole : State::Waiting;
}

std::string MessageReader::takeMessage()
{
    auto message = _bytes.substr(sizeBytes);
    _bytes.clear();
    return message;
}

}
