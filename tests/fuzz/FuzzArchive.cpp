#include "tests/fuzz/FuzzArchive.hpp"

#include <array>
#include <cstdint>

namespace pagora::test {

namespace {

constexpr std::array<std::uint32_t, 256> makeTable()
{
    std::array<std::uint32_t, 256> table {};
    for (std::uint32_t i = 0; i < 256; ++i) {
        table[i] = i;
        for (int bit = 0; bit < 8; ++bit)
            table[i] = table[i] & 1 ? table[i] >> 1 ^ 0xEDB88320u : table[i] >> 1;
    }
    return table;
}

std::uint32_t checkSum(std::string_view bytes)
{
    static constexpr auto table = makeTable();
    std::uint32_t sum = ~0u;
    for (const char c : bytes)
        sum = sum >> 8 ^ table[(sum ^ static_cast<unsigned char>(c)) & 0xFF];
    return ~sum;
}

// Members are stored as they are, so that a change to the input is the same change to a member.
class ArchiveWriter {
public:
    void add(std::string_view name, std::string_view content)
    {
        std::string common;
        // Names are UTF-8.
        put(common, 20, 2).put(common, 0x800, 2).put(common, 0, 6).put(common, checkSum(content), 4);
        put(common, content.size(), 4).put(common, content.size(), 4).put(common, name.size(), 2).put(common, 0, 2);
        _directory.append("PK\1\2");
        put(_directory, 0x31E, 2);
        _directory.append(common);
        // Made on a system whose modes are read: a plain file.
        put(_directory, 0, 6).put(_directory, 0100644u << 16, 4).put(_directory, _bytes.size(), 4);
        _directory.append(name);
        _bytes.append("PK\3\4").append(common).append(name).append(content);
        ++_members;
    }

    std::string finish()
    {
        std::string end = "PK\5\6";
        put(end, 0, 4).put(end, _members, 2).put(end, _members, 2).put(end, _directory.size(), 4);
        put(end, _bytes.size(), 4).put(end, 0, 2);
        return _bytes + _directory + end;
    }

private:
    ArchiveWriter& put(std::string& bytes, std::uint64_t number, int size)
    {
        for (; size > 0; --size, number >>= 8)
            bytes += static_cast<char>(number & 0xFF);
        return *this;
    }

    std::string _bytes;
    std::string _directory;
    std::uint64_t _members = 0;
};

// What comes before `separator`, which goes with it; all when it is not there.
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
    ArchiveWriter writer;
    while (!input.empty()) {
        const auto name = taken(input, "\n").substr(0, 0xFFFF);
        writer.add(name, taken(input, "\n--\n"));
    }
    return writer.finish();
}

}
