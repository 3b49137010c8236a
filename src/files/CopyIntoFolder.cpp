#include "files/CopyIntoFolder.hpp"

#include "base/Path.hpp"
#include "files/Files.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace pagora {

namespace {

constexpr int maxNames = 10'000;

bool haveSameBytes(const std::string& a, const std::string& b)
{
    if (isSameFile(a, b))
        return true;
    std::error_code error;
    const auto size = std::filesystem::file_size(a, error);
    if (error || size != std::filesystem::file_size(b, error) || error)
        return false;
    std::ifstream first(a, std::ios::binary);
    std::ifstream second(b, std::ios::binary);
    std::array<char, 64 << 10> one {};
    std::array<char, 64 << 10> other {};
    while (first && second) {
        first.read(one.data(), one.size());
        second.read(other.data(), other.size());
        if (first.gcount() != second.gcount() || !std::equal(one.begin(), one.begin() + first.gcount(), other.begin()))
            return false;
    }
    return first.eof() && second.eof();
}

std::string numbered(const std::string& name, int number)
{
    const auto extension = pathExtension(name);
    const auto stem = deletingPathExtension(name);
    return stem + " " + std::to_string(number) + (extension.empty() ? "" : "." + extension);
}

}

bool isSameFile(const std::string& a, const std::string& b)
{
    std::error_code error;
    return std::filesystem::equivalent(a, b, error) && !error;
}

std::optional<std::string> copyIntoFolder(const std::string& source, const std::string& folder)
{
    const auto name = lastPathComponent(source);
    for (int number = 1; number < maxNames; ++number) {
        const auto candidate = number == 1 ? name : numbered(name, number);
        const auto destination = appendingPathComponent(folder, candidate);
        if (fileExists(destination)) {
            if (haveSameBytes(source, destination))
                return candidate;
        } else if (copyFile(source, destination))
            return candidate;
        // The copy failed for a reason other than the name.
        else if (!fileExists(destination))
            return std::nullopt;
    }
    return std::nullopt;
}

}
