#include "marks/PackageFolder.hpp"

#include "base/Path.hpp"
#include "files/Files.hpp"
#include "find/ChapterText.hpp"
#include "xml/MarkupScanner.hpp"

namespace pagora {

namespace {
constexpr std::size_t maxContainerBytes = 1u << 20;
}

std::string packageFolderOf(const std::string& bookFolder)
{
    const auto path = appendingPathComponent(bookFolder, "META-INF/container.xml");
    auto container = isWithinFolder(path, bookFolder) ? readFile(path, maxContainerBytes) : std::nullopt;
    if (!container)
        return bookFolder;
    const auto markup = markupFrom(std::move(*container));
    MarkupScanner scanner(markup);
    while (const auto token = scanner.next()) {
        const auto package = token->kind == MarkupToken::Kind::StartTag && token->isNamed("rootfile")
            ? token->attribute("full-path")
            : std::nullopt;
        if (!package)
            continue;
        const auto packagePath = normalizedPath(appendingPathComponent(bookFolder, *package));
        return isPathInside(packagePath, bookFolder) ? deletingLastPathComponent(packagePath) : bookFolder;
    }
    return bookFolder;
}

}
