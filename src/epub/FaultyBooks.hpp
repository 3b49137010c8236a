#pragma once

#include "running/Guarded.hpp"

#include <string>
#include <utility>
#include <vector>

namespace pagora {

// The rejection lines that were not shown yet. Thread-safe.
class FaultyBooks {
public:
    void add(const std::string& line) { _lines.lock()->push_back(line); }
    bool empty() const { return _lines.lock()->empty(); }
    std::vector<std::string> takeAll() { return std::exchange(*_lines.lock(), {}); }

private:
    mutable Guarded<std::vector<std::string>> _lines;
};

}
