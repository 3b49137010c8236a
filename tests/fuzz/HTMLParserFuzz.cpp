#include "epub/HTMLParser.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static test::MemoryFile file;
    const test::FuzzRun run;
    HTMLParser parser(Url::file(file.write(test::inputBytes(data, size))));
    parser.parse();
    const auto isWhole
        = [](std::uint64_t number) { return static_cast<std::int64_t>(number) == static_cast<std::int32_t>(number); };
    test::require(isWhole(parser.viewportWidth()) && isWhole(parser.viewportHeight()));
    return 0;
}
