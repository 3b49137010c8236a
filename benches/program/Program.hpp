#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace pagora::bench {

// What processes have done so far: how often each of their threads woke up, and their processor time in seconds.
struct Activity {
    std::map<pid_t, double> wakeups;
    double processorTime = 0;
    // Of the threads that were there before too.
    double wakeupsSince(const Activity& before) const;
};

// A program that is started to be measured, with a home folder of its own. It ends with this.
class Program {
public:
    Program(const std::string& executable, const std::vector<std::string>& arguments, const std::string& home = "");
    ~Program() { end(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void end();
    // The time just before it was started.
    double started() const { return _started; }
    // In MB.
    double residentMemory() const;
    // Its share and that of all the processes that it started, in MB.
    double proportionalMemory() const;
    // Of it and of all the processes that it started.
    Activity activity() const;

private:
    std::vector<pid_t> processes() const;

    pid_t _pid = 0;
    double _started = 0;
};

// The folder in which the programs are.
std::string programFolder();

}
