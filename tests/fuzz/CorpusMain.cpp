// Runs a target with each file, and each file of a folder, given as an argument.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace fs = std::filesystem;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void runFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes { std::istreambuf_iterator<char>(file), {} };
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}

int main(int count, char** arguments)
{
    int files = 0;
    for (int i = 1; i < count; ++i) {
        const fs::path path = arguments[i];
        if (!fs::is_directory(path)) {
            runFile(path);
            ++files;
            continue;
        }
        for (const auto& entry : fs::directory_iterator(path)) {
            runFile(entry.path());
            ++files;
        }
    }
    std::printf("%d inputs\n", files);
    // A missing corpus is a failure.
    return files > 0 ? 0 : 1;
}
