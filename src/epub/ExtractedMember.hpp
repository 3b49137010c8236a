#pragma once

#include "files/Archive.hpp"

#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Extracts one member into `folder` and returns where it is now; missing when the archive does not hold it. Files that
// are in the folder already count. Only a plain file below the folder is ever returned.
//
// `member` is tried as it is first. A path from inside the archive's documents is then read as the reference that it
// is: escapes replaced, ".." followed, in either Unicode normal form.
enum class MemberName : bool { Exact, Reference };
std::optional<std::string> extractedMember(
    Archive* archive, const std::string& member, const std::string& folder, MemberName kind, SpareFiles* spare);

// The names that are tried for a member, in order.
std::vector<std::string> memberCandidates(const std::string& member, MemberName kind);

}
