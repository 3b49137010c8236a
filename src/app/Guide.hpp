#pragma once

#include <optional>
#include <string>

namespace pagora {

// Writes the guide to Pagora, a book that comes with the program, in the user's language into the folder. Returns its
// path; nullopt on failure. Thread-safe.
std::optional<std::string> writeGuide(const std::string& folder);

}
