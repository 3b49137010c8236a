#pragma once

#include <functional>
#include <string>

namespace pagora {

// Writes one English line to the system's log (the journal, or standard error). Thread-safe.
void log(const std::string& line);

// Redirects log lines to `sink` during its lifetime, for tests. At most one exists at a time.
class LogCapture {
public:
    explicit LogCapture(std::function<void(const std::string&)> sink);
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
};

}
