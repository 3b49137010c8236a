#pragma once

#include <glibmm/ustring.h>

#include <optional>
#include <string>

namespace pagora {

// Returns a book's text on one line for a cell; empty if there is none. Long texts are truncated. Thread-safe.
Glib::ustring cellText(const std::optional<std::string>& text);

}
