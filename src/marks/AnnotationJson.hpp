#pragma once

#include "marks/Mark.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Converts between a mark and its item in an annotation set. Thread-safe.

// Returns nullopt if the item is not an annotation with a target, or exceeds the limits.
std::optional<Mark> markFrom(std::string_view item);
// Returns the JSON text of the item. Unknown members of `mark.written` and its target are kept.
std::string markText(const Mark& mark);

}
