#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace pagora {

// Tells whether a file name occurs in the joined archive locations of a library. The time does not depend on the size
// of the library, except for names that consist of pieces of known ones. Use each object on one thread at a time.
class KnownNames {
public:
    // `text` has the locations joined with " ## ".
    explicit KnownNames(std::string text);
    KnownNames(const KnownNames&) = delete;
    KnownNames& operator=(const KnownNames&) = delete;

    bool hold(std::string_view name) const;

private:
    void readPieces();
    std::size_t bitOf(const char* piece) const;

    const std::string _text;
    // The file names of the locations.
    std::unordered_set<std::string_view> _names;
    // A bit for each run of a few characters in the text; several runs may share a bit.
    std::vector<std::uint64_t> _pieces;
};

}
