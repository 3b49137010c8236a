#include "platform/DefaultsFile.hpp"
#include "platform/DefaultsIndex.hpp"
#include "platform/Json.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;

// The input is a file of stored values, as it may lie on a disk that returns other bytes than were written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static test::MemoryFile memory;
    const test::FuzzRun run;
    const auto& path = memory.write(test::inputBytes(data, size));
    auto condition = DefaultsCondition::Good;
    const auto file = DefaultsFile::openToRead(path, condition);
    test::require((file != nullptr) == (condition == DefaultsCondition::Good));
    if (!file)
        return 0;
    const auto source = std::make_shared<StoredDataSource>(path, path);
    DefaultsIndex index(source);
    std::map<std::string, Value> values;
    if (index.load(*file, values) != DefaultsCondition::Good)
        return 0;
    // Elements that are stored apart are read here.
    for (const auto& [key, value] : values)
        jsonText(value);
    return 0;
}
