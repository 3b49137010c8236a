#include "epub/ExtractedMember.hpp"

#include "base/Path.hpp"
#include "base/Unicode.hpp"
#include "base/Url.hpp"
#include "files/Files.hpp"

#include <algorithm>

namespace pagora {

std::vector<std::string> memberCandidates(const std::string& member, MemberName kind)
{
    std::vector<std::string> names { member };
    if (kind == MemberName::Exact)
        return names;
    const auto add = [&](std::string name) {
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(std::move(name));
    };
    add(normalizedPath(member));
    const auto decoded = normalizedPath(replacingPercentEscapes(member).value_or(member));
    add(decoded);
    add(composedForm(decoded));
    add(decomposedForm(decoded));
    return names;
}

std::optional<std::string> extractedMember(
    Archive* archive, const std::string& member, const std::string& folder, MemberName kind, SpareFiles* spare)
{
    for (const auto& name : memberCandidates(member, kind)) {
        const auto path = appendingPathComponent(folder, name);
        // An empty name would match every member, and paths outside the folder are not allowed.
        if (name.empty() || !isPathInside(path, folder))
            continue;
        if (archive)
            archive->extract({ name }, folder, {}, spare);
        if (isPlainFile(path))
            return path;
    }
    return std::nullopt;
}

}
