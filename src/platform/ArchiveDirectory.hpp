#pragma once

#include "platform/Bounds.hpp"

namespace pagora {

// Whether the directory of the archive in an open file is one that may be read: the archive library keeps all of it in
// memory, and compares names that fall together one by one. What is no archive is within the bounds. Any thread.
bool isDirectoryWithin(int file, std::uint64_t archiveBytes, const ArchiveLimits& limits);

}
