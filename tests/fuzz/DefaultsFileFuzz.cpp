#include "base/Json.hpp"
#include "store/DefaultsFile.hpp"
#include "store/DefaultsIndex.hpp"
#include "tests/fuzz/FuzzRun.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <cstdio>

using namespace pagora;

namespace {

// A named file, because SQLite resolves links such as /proc/self/fd. Intact files must be readable there.
class StoreFile {
public:
    StoreFile()
    {
        test::require(DefaultsFile::make(path(), DefaultsFile::Journal::InPlace) != nullptr);
        test::require(bool(DefaultsFile::openToRead(path())));
    }
    std::string path() const { return _folder.path("store"); }
    std::string write(std::string_view bytes)
    {
        // Overwriting is faster than creating a file.
        std::FILE* file = std::fopen(path().c_str(), "we");
        test::require(
            file && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fclose(file) == 0);
        return path();
    }

private:
    test::TemporaryFolder _folder;
};

}

// The input is a possibly corrupt file of stored values.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static StoreFile store;
    const test::FuzzRun run;
    const auto path = store.write(test::inputBytes(data, size));
    const auto file = DefaultsFile::openToRead(path);
    test::require(file || file.reason() != DefaultsCondition::Good);
    if (!file)
        return 0;
    const auto source = std::make_shared<StoredDataSource>(path, path);
    DefaultsIndex index(source);
    const auto values = index.load(**file);
    if (!values)
        return 0;
    // Reads elements that are stored separately.
    for (const auto& [key, value] : *values)
        jsonText(value);
    return 0;
}
