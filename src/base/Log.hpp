#pragma once

#include <functional>
#include <string>

namespace pagora {

// One English line to the system's log (the journal, or standard error). Any thread.
void log(const std::string& line);

// Sends the lines to `sink` for as long as it lives, for tests. One at a time.
class LogCapture {
public:
    explicit LogCapture(std::function<void(const std::string&)> sink);
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
};

}
