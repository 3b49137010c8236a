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
    // Elapsed time, waits for the disk included.
    std::chrono::milliseconds time;
    // Resident memory.
    std::uint64_t residentBytes;
};

// A helper program that answers one question at a time in a process of its own and is killed when an answer exceeds its
// budget. It starts with the first question and again after it was killed. One thread at a time.
class HelperProcess {
public:
    // `program` is in this program's folder or where it is installed. Once `isEnded` returns true, on any thread, a
    // question in progress is given up soon and no other is asked.
    HelperProcess(std::string program, std::function<bool()> isEnded);
    ~HelperProcess();
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;

    // The program's arguments; a change ends a running process.
    void setArguments(std::vector<std::string> arguments);

    // Sends a message, with an open file unless that is -1, and waits for the answer. Missing when the process ends
    // before it has answered, or had to be ended.
    std::optional<std::string> ask(std::string_view message, int file, const HelperBudget& budget);
    // False when the last question has no answer because the program, or a library that it needs, is not there or may
    // not be started.
    bool couldStart() const { return _couldStart; }

    // Ends the process; the next question starts another one.
    void end();
    // 0 when none runs.
    pid_t process() const { return _process; }

    // Resources used by the last process, including its children.
    struct Usage {
        std::chrono::milliseconds processorTime {};
        // At its peak.
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

// The path of a helper program.
std::string helperPath(const std::string& program);

}
