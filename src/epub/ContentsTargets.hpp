#pragma once

#include "base/Value.hpp"

#include <string>

namespace pagora {

// Resolves the targets of a table of contents in the unpacked book. Targets are relative to the package document's
// folder. A target that does not exist there is resolved against the folder of a contents file. If it exists there, it
// is replaced by that path. Other entries stay unchanged. `content` is a record's content, `bookPath` the folder of its
// unpacked book. Reads the disk. Thread-safe.
Value::Array withTargetsFound(const Value::Array& content, const std::string& bookPath);

}
