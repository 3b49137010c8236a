#include "base/Path.hpp"
#include "files/Archive.hpp"
#include "tests/fuzz/FuzzArchive.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;
using test::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static test::MemoryFile file;
    const auto bytes = test::archiveFrom(test::inputBytes(data, size));
    const test::FuzzRun run;
    const auto archive = Archive::open(file.write(bytes));
    if (!archive)
        return 0;
    for (const auto& path : archive->filePaths())
        require(isPathInside("/folder/" + path, "/folder") && normalizedPath(path) == path);
    return 0;
}
