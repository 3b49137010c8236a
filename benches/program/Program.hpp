#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace pagora::bench {

// The wakeups of each thread and the processor time in seconds of processes since their start.
struct Activity {
    std::map<pid_t, double> wakeups;
    double processorTime = 0;
    // Includes threads that existed before.
    double wakeupsSince(const Activity& before) const;
};

// A measured program with a temporary home folder. The destructor ends the program.
class Program {
public:
    Program(const std::string& executable, const std::vector<std::string>& arguments, const std::string& home = "");
    ~Program() { end(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void end();
    // The time directly before the program was started.
    double started() const { return _started; }
    // In MB.
    double residentMemory() const;
    // The proportional memory of the program and its descendants, in MB.
    double proportionalMemory() const;
    // Returns the activity of the program and its descendants.
    Activity activity() const;

private:
    std::vector<pid_t> processes() const;

    pid_t _pid = 0;
    double _started = 0;
};

// Returns the folder of the built programs.
std::string programFolder();

}
