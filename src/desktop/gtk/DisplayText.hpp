#pragma once

#include <glibmm/ustring.h>

#include <string>

namespace pagora {

// Returns the text for display: valid UTF-8 without NUL, at most `limit` bytes.
Glib::ustring displayText(const std::string& text, std::size_t limit = 4u << 20);

}
