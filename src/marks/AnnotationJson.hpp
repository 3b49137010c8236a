#pragma once

#include "marks/Mark.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// The item of a set for a mark, and back. Any thread.

// Missing where the item is no annotation with a target, or past the bounds.
std::optional<Mark> markFrom(std::string_view item);
// The item as it is to be written. Members that `mark.written` has besides are kept, and its target is as it was.
std::string markText(const Mark& mark);

}
