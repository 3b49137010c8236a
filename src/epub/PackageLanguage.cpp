#include "epub/PackageLanguage.hpp"

#include "base/Path.hpp"

#include <filesystem>
#include <fstream>
#include <regex>

namespace pagora {

namespace {

// The metadata are at the start of a package document, so only this many bytes are read.
constexpr std::size_t maxReadBytes = 65536;
constexpr std::size_t maxTagLength = 300;
// Maximum number of tags that are searched.
constexpr int maxTags = 50;

std::string beginningOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string text(maxReadBytes, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return text;
}

}

std::string languageInPackage(const std::string& document)
{
    // Elements of the Dublin Core namespace have any prefix or none.
    static const std::regex element(
        R"(^language(?:\s[^<>]{0,200})?>\s{0,20}([A-Za-z]{2,8}(?:-[A-Za-z0-9]{1,8}){0,4})\s{0,20}<)");
    int tags = 0;
    for (auto at = document.find("language"); at != std::string::npos && tags < maxTags;
         at = document.find("language", at + 1)) {
        const bool isTag = at > 0 && (document[at - 1] == '<' || document[at - 1] == ':');
        if (!isTag)
            continue;
        ++tags;
        std::smatch found;
        const std::string piece = document.substr(at, maxTagLength);
        if (std::regex_search(piece, found, element))
            return found[1];
    }
    return {};
}

std::string packageLanguage(const std::string& folder)
{
    static const std::regex rootFile(R"(<rootfile\b[^<>]{0,300}\bfull-path\s{0,5}=\s{0,5}["']([^"'<>]{1,300})["'])");
    const std::filesystem::path book(folder);
    const auto container = beginningOf(book / "META-INF/container.xml");
    std::smatch found;
    if (!std::regex_search(container, found, rootFile))
        return {};
    const auto package = (book / found[1].str()).lexically_normal();
    return isPathInside(package.string(), folder) ? languageInPackage(beginningOf(package)) : std::string();
}

}
