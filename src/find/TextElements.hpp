#pragma once

#include <string_view>

namespace pagora {

// What elements do to the text around them, by their names in lower case. Any thread.

// Its content is not read with the text around it.
bool isLeftOut(std::string_view name);
// It has lines of its own.
bool isBlock(std::string_view name);

}
