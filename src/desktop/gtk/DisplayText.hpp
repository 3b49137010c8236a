#pragma once

#include <glibmm/ustring.h>

#include <string>

namespace pagora {

// The text as a control shows it: valid UTF-8 without null characters, at most `limit` bytes of it.
Glib::ustring displayText(const std::string& text, std::size_t limit = 4u << 20);

}
