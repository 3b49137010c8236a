#pragma once

#include "base/FileDescriptor.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Messages between the program and a process that works for it, over a socket: a number of bytes, and those bytes. A
// file may be handed over with a message. One thread at a time for each end.

// A message longer than this is none.
constexpr std::size_t largestMessage = std::size_t { 8 } << 20;

// Sends a message, with an open file unless that is -1. False when the other side is gone.
bool sendMessage(int socket, std::string_view message, int file = -1);

// Where the other side may not send (it is confined), a plain write takes its place.
bool writeMessage(int socket, std::string_view message);

// Puts a message together from what has arrived so far.
class MessageReader {
public:
    enum class State { Waiting, Whole, Gone };

    // Reads what is there, and waits for the first byte of it.
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
