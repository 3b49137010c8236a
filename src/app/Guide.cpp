#include "app/Guide.hpp"

#include "base/Path.hpp"
#include "base/Resource.hpp"
#include "base/Translation.hpp"
#include "files/Files.hpp"

namespace pagora {

std::optional<std::string> writeGuide(const std::string& folder)
{
    // Translators: the guide in your language, which is a file of resources/CMakeLists.txt; where there is none, this
    // one.
    const std::string name = _("guide.epub");
    const auto guide = resourceBytes("/org/pagora/Pagora/" + name);
    auto path = appendingPathComponent(folder, "Pagora-Guide.epub");
    if (!guide || !createFolder(folder) || !writeFile(path, *guide))
        return std::nullopt;
    return path;
}

}
