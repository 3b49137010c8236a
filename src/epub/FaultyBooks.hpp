#pragma once

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace pagora {

// The lines on files that were rejected and not yet shown. Any thread.
class FaultyBooks {
public:
    void add(const std::string& line)
    {
        std::scoped_lock lock(_mutex);
        _lines.push_back(line);
    }

    bool empty() const
    {
        std::scoped_lock lock(_mutex);
        return _lines.empty();
    }

    std::vector<std::string> takeAll()
    {
        std::scoped_lock lock(_mutex);
        return std::exchange(_lines, {});
    }

private:
    mutable std::mutex _mutex;
    std::vector<std::string> _lines;
};

}
