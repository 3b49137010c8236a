#include "app/Guide.hpp"

#include "platform/Files.hpp"
#include "platform/Path.hpp"
#include "platform/Resource.hpp"

namespace pagora {

std::optional<std::string> writeGuide(const std::string& folder)
{
    const auto guide = resourceBytes("/org/pagora/Pagora/guide.epub");
    auto path = appendingPathComponent(folder, "Pagora-Guide.epub");
    if (!guide || !createFolder(folder) || !writeFile(path, *guide))
        return std::nullopt;
    return path;
}

}
