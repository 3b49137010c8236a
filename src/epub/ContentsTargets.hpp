#pragma once

#include "base/Value.hpp"

#include <string>

namespace pagora {

// Resolves the targets of a table of contents in the unpacked book. Targets are relative to the package document's
// folder. If a target is not a file there, but is one relative to the folder of a contents file, it is replaced by that
// file; other entries stay unchanged. `content` is a record's content, `bookPath` the folder of its unpacked book.
// Reads the disk. Thread-safe.
Value::Array withTargetsFound(const Value::Array& content, const std::string& bookPath);

}
