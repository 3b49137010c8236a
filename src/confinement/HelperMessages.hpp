#pragma once

#include "base/FileDescriptor.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Messages between the program and its helper processes over a socket: a length and that many bytes. A message can
// carry an open file. One thread at a time for each end.

// Longer messages are errors.
constexpr std::size_t maxMessageBytes = std::size_t { 8 } << 20;

// Sends a message, with an open file unless that is -1. False when the other side is gone.
bool sendMessage(int socket, std::string_view message, int file = -1);

// Where confinement forbids sendmsg, the other side uses write.
bool writeMessage(int socket, std::string_view message);

// Assembles a message from the bytes received so far.
class MessageReader {
public:
    enum class State { Waiting, Whole, Gone };

    // Reads the available bytes; waits for the first one.
    State readSome(int socket);
    // The message, once it is whole, and the file that came with it.
    std::string takeMessage();
    FileDescriptor takeFile() { return std::move(_file); }

private:
    std::optional<std::size_t> size() const;

    std::string _bytes;
    FileDescriptor _file;
};

}
