#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace pagora {

// The conditions for the first page of an opened book: the archive, the display options and the stored place.
struct PageKey {
    std::string archive;
    // Size of the archive in bytes, and time of its last change in nanoseconds.
    std::uint64_t archiveBytes = 0;
    std::int64_t archiveTime = 0;

    std::int32_t theme = 0;
    std::string font;
    float textSize = 0;
    std::int32_t columns = 0;

    std::uint64_t chapter = 0;
    std::uint64_t cap = 0;
    std::optional<double> place;
};

// Returns a key with the current size and time of the archive; nullopt if the archive cannot be accessed.
std::optional<PageKey> pageKeyOf(const std::string& archive);

// Two keys have the same text only if they are equal.
std::string textOf(const PageKey& key);

}
