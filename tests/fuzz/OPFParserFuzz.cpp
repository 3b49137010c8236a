#include "epub/OPFParser.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static test::MemoryFile file;
    const test::FuzzRun run;
    OPFParser parser(Url::file(file.write(test::inputBytes(data, size))));
    parser.parse();
    for (const auto& [key, value] : parser.metaDict())
        test::require(!value.empty() || key == "tocfile");
    // Each file is an item of the manifest, which needs more bytes there.
    test::require(parser.fileList().size() <= size && parser.imageList().size() <= size);
    return 0;
}
