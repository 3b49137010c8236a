#pragma once

#include <string_view>

namespace pagora {

// Classes of elements by their names in lower case. Thread-safe.

// Returns whether the element's content is not part of the text.
bool isLeftOut(std::string_view name);
// Returns whether the element is a block with separate lines.
bool isBlock(std::string_view name);

}
