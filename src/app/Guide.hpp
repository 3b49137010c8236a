#pragma once

#include <optional>
#include <string>

namespace pagora {

// Writes the guide to Pagora, a book that comes with the program in the person's language, into the folder and returns
// its path; nullopt if that fails. Thread-safe.
std::optional<std::string> writeGuide(const std::string& folder);

}
