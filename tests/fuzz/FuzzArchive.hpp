#pragma once

#include <string>
#include <string_view>

namespace pagora::test {

// Makes an archive from an input. An input that begins with "PK" is an archive itself. Any other is a list of members:
// a line with a name, then the content up to a line "--".
std::string archiveFrom(std::string_view input);

}
