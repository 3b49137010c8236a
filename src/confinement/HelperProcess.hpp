#pragma once

#include "base/FileDescriptor.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace pagora {

// Limits for one answer.
struct HelperBudget {
    // Processor time.
    std::chrono::milliseconds processorTime;
    // Elapsed time, including waits for the disk.
    std::chrono::milliseconds time;
    // Resident memory.
    std::uint64_t residentBytes;
};

// A helper program that answers one request at a time in a separate process. It is killed if an answer exceeds its
// budget. It starts with the first request, and again after it was killed. Use each object on one thread at a time.
class HelperProcess {
public:
    // `program` is in this program's folder or where it is installed. When `isEnded`, which may be called on any
    // thread, returns true, a running request is soon abandoned and no other one is sent.
    HelperProcess(std::string program, std::function<bool()> isEnded);
    ~HelperProcess();
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;

    // Sets the program's arguments. A change ends a running process.
    void setArguments(std::vector<std::string> arguments);

    // Sends a message, with an open file unless `file` is -1, and waits for the answer. Returns nullopt if the process
    // exits or is killed before it answers.
    std::optional<std::string> ask(std::string_view message, int file, const HelperBudget& budget);
    // Returns false if the last request failed because the program, or a library that it needs, is missing or may not
    // be started.
    bool couldStart() const { return _couldStart; }

    // Ends the process. The next request starts another one.
    void end();
    // Returns the process id; 0 if no process is running.
    pid_t process() const { return _process; }

    // Resources used by the last process, including its children.
    struct Usage {
        std::chrono::milliseconds processorTime {};
        // Peak resident memory.
        std::uint64_t residentBytes = 0;
    };
    const Usage& usage() const { return _usage; }

private:
    bool start();
    bool isWithin(const HelperBudget& budget, std::chrono::nanoseconds processorTimeBefore,
        std::chrono::steady_clock::time_point begin) const;
    std::chrono::nanoseconds processorTime() const;
    std::uint64_t residentBytes() const;

    const std::string _program;
    const std::function<bool()> _isEnded;
    std::vector<std::string> _arguments;
    pid_t _process = 0;
    bool _couldStart = true;
    Usage _usage;
    FileDescriptor _socket;
};

// Returns the path of a helper program.
std::string helperPath(const std::string& program);

}
