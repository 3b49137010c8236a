#pragma once

#include "base/Value.hpp"

#include <string>

namespace pagora {

// The value as JSON text, indented by two spaces a level. Data are {"data": "<base64>"}, dates {"date": seconds}; reals
// keep every digit and read as reals (".0"), not-a-number and infinite ones are null; bytes of a text that are no UTF-8
// are replaced by U+FFFD. Any thread.
std::string jsonText(const Value& value);

}
