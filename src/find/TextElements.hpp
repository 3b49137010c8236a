#pragma once

#include <string_view>

namespace pagora {

// Classes of elements by their names in lower case. Any thread.

// Its content is not part of the text.
bool isLeftOut(std::string_view name);
// It is a block with separate lines.
bool isBlock(std::string_view name);

}
