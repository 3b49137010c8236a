#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace pagora::bench {

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

private:
    pid_t _pid = 0;
    double _started = 0;
};

// The folder in which the programs are.
std::string programFolder();

}
