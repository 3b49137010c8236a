#pragma once

#include <glibmm/ustring.h>

#include <optional>
#include <string>

namespace pagora {

// A book's text on one line of a cell; empty when there is none. Long texts are cut. Any thread.
Glib::ustring cellText(const std::optional<std::string>& text);

}
