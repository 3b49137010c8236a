#include "epub/ContentsTargets.hpp"

#include "platform/Path.hpp"
#include "platform/Unicode.hpp"

#include <utility>

namespace pagora {

ContentsTargets::ContentsTargets(const Archive* archive, std::string packageFolder, const std::string& contentsFolder)
    : _packageFolder(std::move(packageFolder))
    , _contentsFolder(normalizedPath(contentsFolder))
{
    if (!archive || normalizedPath(_packageFolder) == _contentsFolder)
        return;
    for (const auto& member : archive->filePaths())
        _members.insert(composedForm(member));
}

bool ContentsTargets::isMember(const std::string& path) const
{
    return _members.contains(composedForm(normalizedPath(path)));
}

std::string ContentsTargets::path(const std::string& target) const
{
    const auto file = target.substr(0, target.find('#'));
    auto asStated = appendingPathComponent(_packageFolder, target);
    if (_members.empty() || file.empty() || isMember(appendingPathComponent(_packageFolder, file))
        || !isMember(appendingPathComponent(_contentsFolder, file)))
        return asStated;
    return appendingPathComponent(_contentsFolder, target);
}

}
