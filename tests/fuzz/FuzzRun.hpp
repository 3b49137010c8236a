#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pagora::test {

using Milliseconds = std::chrono::duration<double, std::milli>;

// One input's way through a target: it takes the time. The number of inputs, and the milliseconds of processor time of
// the slowest one, are written to the file PAGORA_FUZZ_REPORT when the program ends. An input that takes
// PAGORA_FUZZ_SLOWEST milliseconds or more is a finding, where that is set. Nothing that the input makes the program
// log is shown.
class FuzzRun {
public:
    FuzzRun();
    ~FuzzRun();
    FuzzRun(const FuzzRun&) = delete;
    FuzzRun& operator=(const FuzzRun&) = delete;

private:
    Milliseconds _start;
};

// Ends the program, as a finding, when something that must hold does not.
void require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE());

inline std::string_view inputBytes(const std::uint8_t* data, std::size_t size)
{
    return { reinterpret_cast<const char*>(data), size };
}

// A file without a folder, that holds each input in turn.
class MemoryFile {
public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    // Replaces what the file holds, and returns its path.
    const std::string& write(std::string_view bytes);

private:
    int _file;
    std::string _path;
};

}
