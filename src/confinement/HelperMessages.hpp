#pragma once

#include "base/FileDescriptor.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Messages between the program and its helper processes over a socket: a length and that many bytes. A message can
// carry an open file. Each end must be used on one thread at a time.

// Longer messages are errors.
constexpr std::size_t maxMessageBytes = std::size_t { 8 } << 20;

// Sends a message, with an open file unless `file` is -1. Returns false if the other end is closed.
bool sendMessage(int socket, std::string_view message, int file = -1);

// Sends a message with write, for processes that may not call sendmsg.
bool writeMessage(int socket, std::string_view message);

// Assembles a message from the bytes received so far.
class MessageReader {
public:
    enum class State { Waiting, Whole, Gone };

    // Reads the available bytes. Blocks until the first byte.
    State readSome(int socket);
    // Returns a complete message, and the file that was sent with it.
    std::string takeMessage();
    FileDescriptor takeFile() { return std::move(_file); }

private:
    std::optional<std::size_t> size() const;

    std::string _bytes;
    FileDescriptor _file;
};

}
