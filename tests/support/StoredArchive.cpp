#include "tests/support/StoredArchive.hpp"

#include "tests/support/EpubBuilder.hpp"

#include <algorithm>
#include <array>

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

// Appends little-endian numbers.
class Writer {
public:
    explicit Writer(std::string start = {})
        : _bytes(std::move(start))
    {
    }
    Writer& put(std::uint64_t number, int size)
    {
        for (; size > 0; --size, number >>= 8)
            _bytes += static_cast<char>(number & 0xFF);
        return *this;
    }
    Writer& put(std::string_view bytes)
    {
        _bytes.append(bytes);
        return *this;
    }
    const std::string& bytes() const { return _bytes; }

private:
    std::string _bytes;
};

// Returns the common fields of a local header and a directory entry: version, flags, method, time, sizes.
std::string common(std::string_view name, std::string_view content, std::uint64_t size)
{
    Writer writer;
    writer.put(20, 2).put(0x800, 2).put(0, 6).put(checkSum(content), 4);
    return writer.put(content.size(), 4).put(size, 4).put(name.size(), 2).put(0, 2).bytes();
}

}

StoredArchive& StoredArchive::add(std::string_view name, std::string_view content, const Header& header)
{
    const auto place = _members.size();
    _members += Writer("PK\3\4").put(common(name, content, content.size())).put(name).put(content).bytes();
    Writer entry("PK\1\2");
    // "Version made by": Unix.
    entry.put(0x31E, 2).put(common(name, content, header.size.value_or(content.size()))).put(0, 6);
    entry.put(std::uint64_t { header.mode } << 16, 4).put(place, 4).put(name);
    _directory += entry.bytes();
    ++_count;
    _memberBytes += header.size.value_or(content.size());
    return *this;
}

std::string StoredArchive::bytes() const
{
    const auto start = _members.size();
    Writer end;
    constexpr std::uint64_t most = 0xFFFF;
    if (_count > most) {
        end.put("PK\6\6").put(44, 8).put(45, 2).put(45, 2).put(0, 8).put(_count, 8).put(_count, 8);
        end.put(_directory.size(), 8).put(start, 8);
        end.put("PK\6\7").put(0, 4).put(start + _directory.size(), 8).put(1, 4);
    }
    end.put("PK\5\6").put(0, 4).put(std::min(_count, most), 2).put(std::min(_count, most), 2);
    end.put(_directory.size(), 4).put(start, 4).put(0, 2);
    return _members + _directory + end.bytes();
}

std::string StoredArchive::write(const std::string& path) const
{
    return makeFile(path, bytes());
}

}
