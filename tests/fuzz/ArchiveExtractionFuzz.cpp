#include "files/Archive.hpp"
#include "files/Files.hpp"
#include "tests/fuzz/FuzzArchive.hpp"
#include "tests/fuzz/FuzzRun.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <filesystem>
#include <iterator>

using namespace pagora;
using test::require;
namespace fs = std::filesystem;

// A destination with a link that points out of it, in an otherwise empty folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const test::TemporaryFolder root;
    static test::MemoryFile file;
    const auto bytes = test::archiveFrom(test::inputBytes(data, size));
    const test::FuzzRun run;
    constexpr ArchiveLimits limits { .members = 64, .memberBytes = 1 << 20, .totalBytes = 1 << 20 };
    auto archive = Archive::open(file.write(bytes), limits);
    if (!archive)
        return 0;
    const auto destination = root.path("out/in");
    fs::create_directories(destination);
    fs::create_symlink("..", destination + "/link");
    archive->extract({ "mimetype", "META-INF/container.xml", "[a-m]*" }, destination);
    archive->extract({}, destination);
    std::error_code isTooLong;
    for (const auto& path : archive->filePaths())
        require(!fs::is_symlink(destination + "/" + path, isTooLong));
    require(std::distance(fs::directory_iterator(root.path("out")), {}) == 1);
    removeItem(destination);
    return 0;
}
