#include "base/Log.hpp"

#include <glib.h>

#include <algorithm>
#include <mutex>
#include <unistd.h>
#include <utility>

namespace pagora {

namespace {

std::mutex sinkMutex;
std::function<void(const std::string&)> capturingSink;

bool isCaptured(const std::string& line)
{
    const std::lock_guard lock(sinkMutex);
    if (!capturingSink)
        return false;
    capturingSink(line);
    return true;
}

void writeToJournal(const std::string& line)
{
    const GLogField fields[] = {
        { "MESSAGE", line.data(), static_cast<gssize>(line.size()) },
        { "PRIORITY", "6", -1 },
        { "SYSLOG_IDENTIFIER", PAGORA_IDENTIFIER, -1 },
    };
    g_log_writer_journald(G_LOG_LEVEL_INFO, fields, G_N_ELEMENTS(fields), nullptr);
}

}

void log(const std::string& text)
{
    std::string line = text;
    std::replace(line.begin(), line.end(), '\n', ' ');
    if (isCaptured(line))
        return;
    static const bool toJournal = g_log_writer_is_journald(STDERR_FILENO);
    if (toJournal) {
        writeToJournal(line);
        return;
    }
    line += '\n';
    // A single write keeps the lines of several threads apart. A failure cannot be reported anywhere.
    if (write(STDERR_FILENO, line.data(), line.size()) < 0)
        return;
}

LogCapture::LogCapture(std::function<void(const std::string&)> sink)
{
    const std::lock_guard lock(sinkMutex);
    capturingSink = std::move(sink);
}

LogCapture::~LogCapture()
{
    const std::lock_guard lock(sinkMutex);
    capturingSink = nullptr;
}

}
