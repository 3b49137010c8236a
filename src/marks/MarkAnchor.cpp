#include "marks/MarkAnchor.hpp"

#include "base/Path.hpp"
#include "base/Url.hpp"

#include <algorithm>

namespace pagora {

namespace {

std::string relativeTo(const std::string& folder, const std::string& path)
{
    return path.starts_with(folder + '/') ? path.substr(folder.size() + 1) : std::string();
}

}

std::string MarkedDocuments::sourceOf(std::size_t chapter) const
{
    const auto path = normalizedPath(paths.at(chapter));
    const auto relative = relativeTo(normalizedPath(packageFolder), path);
    if (!relative.empty())
        return addingPercentEscapes(relative);
    // The document is outside the package document's folder.
    const auto fromRoot = relativeTo(normalizedPath(folder), path);
    std::string up;
    for (auto above = normalizedPath(packageFolder); isPathInside(above, folder) && above.size() > 1;) {
        above = deletingLastPathComponent(above);
        up += "../";
        if (path.starts_with(above + '/'))
            return addingPercentEscapes(up + path.substr(above.size() + 1));
    }
    return addingPercentEscapes(fromRoot.empty() ? lastPathComponent(path) : fromRoot);
}

std::optional<std::size_t> MarkedDocuments::chapterOf(const std::string& source) const
{
    const auto decoded = replacingPercentEscapes(source).value_or(source);
    for (const auto& base : { packageFolder, folder }) {
        for (const auto& name : { decoded, source }) {
            const auto path = normalizedPath(base + '/' + name);
            const auto found = std::find_if(paths.begin(), paths.end(),
                [&path](const std::string& other) { return normalizedPath(other) == path; });
            if (found != paths.end())
                return static_cast<std::size_t>(found - paths.begin());
        }
    }
    return {};
}

}
