#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pagora::test {

using Milliseconds = std::chrono::duration<double, std::milli>;

// Measures the run of one input. The number of inputs and the processor time of the slowest one in milliseconds are
// written to the file PAGORA_FUZZ_REPORT when the program ends. If PAGORA_FUZZ_SLOWEST is set, an input that takes that
// many milliseconds or more is a finding. Suppresses log messages.
class FuzzRun {
public:
    FuzzRun();
    ~FuzzRun();
    FuzzRun(const FuzzRun&) = delete;
    FuzzRun& operator=(const FuzzRun&) = delete;

private:
    Milliseconds _start;
};

// Aborts the program, as a finding, if a condition does not hold.
void require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE());

inline std::string_view inputBytes(const std::uint8_t* data, std::size_t size)
{
    return { reinterpret_cast<const char*>(data), size };
}

// An unlinked file with the current input.
class MemoryFile {
public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    // Replaces the content of the file and returns its path.
    const std::string& write(std::string_view bytes);

private:
    int _file;
    std::string _path;
};

}
