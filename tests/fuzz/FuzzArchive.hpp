#pragma once

#include <string>
#include <string_view>

namespace pagora::test {

// The archive that an input stands for. One that begins with "PK" is an archive itself. Any other is a list of members:
// a name that ends at a line break, then the content up to a line of "--".
std::string archiveFrom(std::string_view input);

}
