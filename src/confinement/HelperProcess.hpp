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

// What one answer may take.
struct HelperBudget {
    // Of the processor.
    std::chrono::milliseconds processorTime;
    // From asking to answering, also while it waits for a disk.
    std::chrono::milliseconds time;
    // In its memory.
    std::uint64_t residentBytes;
};

// A program of Pagora's own that works for this one in a process apart, answer by answer, and is ended when an answer
// takes more than its budget. It starts when it is first asked, and anew after it was ended. One thread at a time.
class HelperProcess {
public:
    // `program` lies beside this program, or where that installs it. Once `isEnded` says so, which any thread may bring
    // about, what is being asked is given up within moments, and nothing is asked any more.
    HelperProcess(std::string program, std::function<bool()> isEnded);
    ~HelperProcess();
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;

    // What the program is started with; a change ends the one that runs.
    void setArguments(std::vector<std::string> arguments);

    // Sends a message, with an open file unless that is -1, and waits for the answer. Missing when the process ends
    // before it has answered, or had to be ended.
    std::optional<std::string> ask(std::string_view message, int file, const HelperBudget& budget);

    // Ends the process; the next question starts another one.
    void end();
    // 0 when none runs.
    pid_t process() const { return _process; }

    // What the process that was ended last had taken, with those that it started.
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
    Usage _usage;
    FileDescriptor _socket;
};

// The path of a program of Pagora's own.
std::string helperPath(const std::string& program);

}
