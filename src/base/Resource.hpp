#pragma once

#include <optional>
#include <string>

namespace pagora {

// Returns the bytes of a file that is compiled into the program; nullopt if there is no such file. Thread-safe.
std::optional<std::string> resourceBytes(const std::string& path);

}
