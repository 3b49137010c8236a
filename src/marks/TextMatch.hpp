#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace pagora {

// String searches in time linear in the length of the text. Thread-safe.

// Calls `found` with the start of each occurrence, also overlapping ones, until it returns false.
void findEach(std::u16string_view text, std::u16string_view pattern, const std::function<bool(std::size_t)>& found);

// An approximate match of a pattern.
struct ApproximateMatch {
    // The end of the match, and its edit distance in units.
    std::size_t end = 0;
    std::size_t changes = 0;
};
// Returns the match with the smallest edit distance. If several have it, it is the match that ends nearest to `near`.
// Returns nullopt if the distance exceeds a quarter of the pattern's length, or if the pattern is too short. Only the
// last `maxApproximateLength` units of the pattern are compared.
std::optional<ApproximateMatch> closestMatch(std::u16string_view text, std::u16string_view pattern, std::size_t near);

// The minimum length of a pattern, and the number of its units that are compared.
inline constexpr std::size_t minApproximateLength = 12;
inline constexpr std::size_t maxApproximateLength = 64;

}
