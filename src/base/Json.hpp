#pragma once

#include "base/Value.hpp"

#include <string>

namespace pagora {

// Returns the value as JSON text, indented by two spaces a level. Data become {"data": "<base64>"} and dates {"date":
// seconds}. Reals keep every digit and stay recognizable as reals (".0"); NaN and infinities become null. Invalid UTF-8
// bytes are replaced by U+FFFD. Thread-safe.
std::string jsonText(const Value& value);

}
