#include "epub/ContentParser.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static test::MemoryFile file;
    const test::FuzzRun run;
    ContentParser parser(Url::file(file.write(test::inputBytes(data, size))));
    parser.parse();
    for (const auto& entry : parser.contentList()) {
        const auto keys = entry.dictionary()->size();
        test::require(keys == 0 || (keys == 3 && entry.find("src")->string() && entry.find("level")->integer()));
    }
    return 0;
}
