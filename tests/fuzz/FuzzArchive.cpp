#include "tests/fuzz/FuzzArchive.hpp"

#include "tests/support/StoredArchive.hpp"

namespace pagora::test {

namespace {

constexpr std::size_t maxNameLength = 0xFFFF;

// Removes and returns the text before `separator`, or the whole text. The separator is removed too.
std::string_view taken(std::string_view& rest, std::string_view separator)
{
    const auto at = rest.find(separator);
    const auto part = rest.substr(0, at);
    rest.remove_prefix(at == std::string_view::npos ? rest.size() : at + separator.size());
    return part;
}

}

std::string archiveFrom(std::string_view input)
{
    if (input.starts_with("PK"))
        return std::string(input);
    StoredArchive archive;
    while (!input.empty()) {
        const auto name = taken(input, "\n").substr(0, maxNameLength);
        archive.add(name, taken(input, "\n--\n"));
    }
    return archive.bytes();
}

}
