#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pagora::test {

// Writes ZIP archives byte by byte, also invalid ones. Members are stored uncompressed, with UTF-8 names, as regular
// files unless another mode is given.
class StoredArchive {
public:
    struct Header {
        // The size in the directory, if it differs from the real one.
        std::optional<std::uint32_t> size = std::nullopt;
        std::uint32_t mode = 0100644;
    };
    StoredArchive& add(std::string_view name, std::string_view content = {}) { return add(name, content, {}); }
    StoredArchive& add(std::string_view name, std::string_view content, const Header& header);

    std::uint64_t count() const { return _count; }
    // Returns the size of all members according to the directory.
    std::uint64_t memberBytes() const { return _memberBytes; }
    std::uint64_t directoryBytes() const { return _directory.size(); }
    std::string bytes() const;
    // Writes the archive and returns its path.
    std::string write(const std::string& path) const;

private:
    std::string _members;
    std::string _directory;
    std::uint64_t _count = 0;
    std::uint64_t _memberBytes = 0;
};

}
