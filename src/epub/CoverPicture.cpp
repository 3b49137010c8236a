#include "epub/CoverPicture.hpp"

#include "base/Path.hpp"
#include "base/Resource.hpp"
#include "epub/ContainerParser.hpp"
#include "epub/ExtractedMember.hpp"
#include "epub/OPFParser.hpp"
#include "files/Archive.hpp"
#include "files/Files.hpp"
#include "pictures/Image.hpp"
#include "store/ValueCoding.hpp"

#include <cstdint>
#include <utility>

namespace pagora {

namespace {

constexpr Size coverBox { 106, 156 };
constexpr double jpegQuality = 0.8;
// The maximum size of a member that is read for a prefetch.
constexpr std::uint64_t maxPrefetchBytes = 4u << 20;
constexpr auto defaultCover = "/org/pagora/Pagora/pagora_default_cover.jpg";

std::optional<Data> encoded(const std::optional<Image>& image)
{
    auto bytes = image ? image->jpegData(jpegQuality) : std::nullopt;
    return bytes ? std::optional(Data(std::move(*bytes))) : std::nullopt;
}

std::optional<Data> scaled(const std::string& file)
{
    const auto image = Image::fromBytes(file, coverBox);
    return image ? encoded(image->imageByScalingProportionallyToSize(coverBox)) : std::nullopt;
}

}

std::optional<Data> coverPicture(const std::string& coverFile, const ScaledCover* ahead)
{
    const auto bytes = readFile(coverFile);
    if (!bytes)
        return std::nullopt;
    const bool isDone = ahead && ahead->size == bytes->size() && ahead->sum == checksum(*bytes);
    return isDone ? ahead->picture : scaled(*bytes);
}

std::optional<ScaledCover> prefetchCover(FileDescriptor file)
{
    const auto archive = Archive::open(std::move(file));
    const auto container = archive ? archive->read("META-INF/container.xml", maxPrefetchBytes) : std::nullopt;
    if (!container)
        return std::nullopt;
    ContainerParser containerParser(Url::file("/"));
    containerParser.parseBytes(*container);
    const auto packagePath = containerParser.opfFile().value_or("");
    const auto package = archive->read(packagePath, maxPrefetchBytes);
    if (!package)
        return std::nullopt;
    OPFParser packageParser(Url::file("/"));
    packageParser.parseBytes(*package);
    const auto cover = packageParser.metaDict().find("cover");
    const auto href = cover == packageParser.metaDict().end() ? "cover.jpg" : cover->second;
    const auto slash = packagePath.rfind('/');
    const auto folder = slash == std::string::npos ? std::string() : packagePath.substr(0, slash);
    for (const auto& name : memberCandidates(appendingPathComponent(folder, href), MemberName::Reference)) {
        if (auto bytes = archive->read(name, maxPrefetchBytes)) {
            return ScaledCover { bytes->size(), checksum(*bytes), scaled(*bytes) };
        }
    }
    return std::nullopt;
}

std::optional<Data> defaultCoverPicture()
{
    const auto bytes = resourceBytes(defaultCover);
    return bytes ? encoded(Image::fromBytes(*bytes)) : std::nullopt;
}

}
