#include "kept_pages/PageKey.hpp"

#include <array>
#include <charconv>
#include <sys/stat.h>

namespace pagora {

namespace {

// Returns the shortest text that identifies the number, independent of the locale.
template <typename Number>
std::string shortest(Number number)
{
    std::array<char, 64> digits {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return { digits.data(), end };
}

}

std::optional<PageKey> pageKeyOf(const std::string& archive)
{
    struct stat file { };
    if (::stat(archive.c_str(), &file) != 0)
        return std::nullopt;
    PageKey key;
    key.archive = archive;
    key.archiveBytes = static_cast<std::uint64_t>(file.st_size);
    key.archiveTime = std::int64_t(file.st_mtim.tv_sec) * 1'000'000'000 + file.st_mtim.tv_nsec;
    return key;
}

std::string textOf(const PageKey& key)
{
    std::string text;
    // Each text is preceded by its length, so that no content of it can end it.
    const auto add = [&text](const std::string& value) { text += std::to_string(value.size()) + ' ' + value + '\n'; };
    add(key.archive);
    add(shortest(key.archiveBytes));
    add(shortest(key.archiveTime));
    add(shortest(key.theme));
    add(key.font);
    add(shortest(key.textSize));
    add(shortest(key.columns));
    add(shortest(key.chapter));
    add(shortest(key.cap));
    add(key.place ? shortest(*key.place) : "");
    return text;
}

}
