#include "epub/ContainerParser.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static test::MemoryFile file;
    const test::FuzzRun run;
    ContainerParser parser(Url::file(file.write(test::inputBytes(data, size))));
    parser.parse();
    return 0;
}
