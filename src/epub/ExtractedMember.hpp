#pragma once

#include "files/Archive.hpp"

#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Extracts one member into `folder` and returns its path; nullopt if the archive does not contain it. A file that
// already exists in the folder is returned as well. Only regular files below the folder are returned.
//
// `member` is first tried as it is. With `MemberName::Reference` it is then resolved like a reference in a document of
// the archive: percent escapes decoded, ".." resolved, in both Unicode normal forms.
enum class MemberName : bool { Exact, Reference };
std::optional<std::string> extractedMember(
    Archive* archive, const std::string& member, const std::string& folder, MemberName kind, SpareFiles* spare);

// Returns the names that are tried for a member, in order.
std::vector<std::string> memberCandidates(const std::string& member, MemberName kind);

}
