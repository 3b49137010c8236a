#pragma once

#include "base/Value.hpp"

#include <string>

namespace pagora {

// A table of contents whose targets are looked for in the unpacked book. Targets count from the package document's
// folder. One that names no file there, but a file when it counts from the folder of a contents file, becomes that
// file; every other entry stays as it is. `content` is a record's content, `bookPath` the folder of its unpacked book.
// Reads the disk; any thread.
Value::Array withTargetsFound(const Value::Array& content, const std::string& bookPath);

}
