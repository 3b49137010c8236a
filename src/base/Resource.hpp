#pragma once

#include <optional>
#include <string>

namespace pagora {

// The bytes of a file that is compiled into the program; missing when there is none of that name. Any thread.
std::optional<std::string> resourceBytes(const std::string& path);

}
