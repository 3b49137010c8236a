#include "base/Bounds.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "epub/EpubInspection.hpp"
#include "files/Files.hpp"
#include "store/ValueCoding.hpp"
#include "tests/fuzz/FuzzArchive.hpp"
#include "tests/fuzz/FuzzRun.hpp"
#include "tests/support/FakeInspectionHub.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>

using namespace pagora;
using test::require;

namespace {

// The maximum size of an expanded input.
constexpr std::size_t maxBytes = std::size_t { 4 } << 20;
// A slower input is a finding.
constexpr double maxSeconds = 2;

// Expands repetitions in an input: "{200:text}" is 200 times the text.
std::string expanded(std::string_view input)
{
    std::string result;
    while (!input.empty() && result.size() < maxBytes) {
        const auto open = input.find('{');
        result.append(input.substr(0, open));
        if (open == std::string_view::npos)
            break;
        input.remove_prefix(open + 1);
        const auto colon = input.find(':');
        const auto close = input.find('}');
        if (colon == std::string_view::npos || close == std::string_view::npos || colon > close)
            continue;
        const auto count = std::strtoul(std::string(input.substr(0, colon)).c_str(), nullptr, 10);
        const auto text = input.substr(colon + 1, close - colon - 1);
        for (unsigned long i = 0; i < count && !text.empty() && result.size() < maxBytes; ++i)
            result.append(text);
        input.remove_prefix(close + 1);
    }
    result.resize(std::min(result.size(), maxBytes));
    return result;
}

double processorSeconds()
{
    timespec now {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

std::uint64_t bytesBelow(const std::string& folder)
{
    std::uint64_t bytes = 0;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, ignored)) {
        if (entry.is_regular_file(ignored))
            bytes += entry.file_size(ignored);
    }
    return bytes;
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const test::TemporaryFolder root;
    static test::FakeInspectionHub hub(root.path());
    static test::MemoryFile file;
    const auto bytes = test::archiveFrom(expanded(test::inputBytes(data, size)));
    const auto& path = file.write(bytes);
    const test::FuzzRun run;
    hub.faultyBooks.clear();
    const auto begin = processorSeconds();
    const auto book = EpubInspection(hub).getBookInfo(path, StopOnErrors::Yes);
    require(processorSeconds() - begin < maxSeconds);
    require(hub.faultyBooks.size() == (book ? 0 : 1));
    require(bytesBelow(hub.layout._dataPath) <= BookLimits().extractedBytes);
    if (book)
        require(encodeValue(entryFromBook(*book)).size() <= BookLimits().entryBytes);
    removeItem(hub.layout._dataPath);
    return 0;
}
