#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace pagora {

// Searches of a text for another one, in time that grows with the text only. Any thread.

// Calls `found` with the start of each place where the text has the pattern, overlapping ones too, until it returns
// false.
void findEach(std::u16string_view text, std::u16string_view pattern, const std::function<bool(std::size_t)>& found);

// A place that is similar to the pattern.
struct Likeness {
    // Where the similar text ends, and how many units must be changed, added and left out.
    std::size_t end = 0;
    std::size_t changes = 0;
};
// The place with the fewest changes, of several the one that ends nearest to `near`; missing where a quarter of the
// pattern would change, or the pattern is too short to be alike. At most the last 64 units of the pattern count.
std::optional<Likeness> mostSimilar(std::u16string_view text, std::u16string_view pattern, std::size_t near);

// How many units the pattern needs to be looked for by likeness.
inline constexpr std::size_t minLikeness = 12;
inline constexpr std::size_t maxLikeness = 64;

}
