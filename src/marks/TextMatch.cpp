#include "marks/TextMatch.hpp"

#include <unordered_map>
#include <vector>

namespace pagora {

void findEach(std::u16string_view text, std::u16string_view pattern, const std::function<bool(std::size_t)>& found)
{
    if (pattern.empty() || pattern.size() > text.size())
        return;
    // Knuth-Morris-Pratt: for each matched length, the length of the longest proper prefix that is also a suffix.
    std::vector<std::size_t> fallbacks(pattern.size() + 1, 0);
    for (std::size_t i = 1, length = 0; i < pattern.size();) {
        if (pattern[i] == pattern[length])
            fallbacks[++i] = ++length;
        else if (length > 0)
            length = fallbacks[length];
        else
            ++i;
    }
    std::size_t matched = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        while (matched > 0 && text[i] != pattern[matched])
            matched = fallbacks[matched];
        if (text[i] == pattern[matched])
            ++matched;
        if (matched < pattern.size())
            continue;
        if (!found(i + 1 - matched))
            return;
        matched = fallbacks[matched];
    }
}

// Myers' bit-parallel algorithm: a column of the table of edit distances is held in the bits of two words.
std::optional<ApproximateMatch> closestMatch(std::u16string_view text, std::u16string_view pattern, std::size_t near)
{
    if (pattern.size() > maxApproximateLength)
        pattern.remove_prefix(pattern.size() - maxApproximateLength);
    if (pattern.size() < minApproximateLength)
        return {};
    std::vector<std::uint64_t> low(0x80, 0);
    std::unordered_map<char16_t, std::uint64_t> high;
    for (std::size_t i = 0; i < pattern.size(); ++i)
        (pattern[i] < 0x80 ? low[pattern[i]] : high[pattern[i]]) |= std::uint64_t(1) << i;
    const auto places = [&low, &high](char16_t unit) -> std::uint64_t {
        if (unit < 0x80)
            return low[unit];
        const auto found = high.find(unit);
        return found == high.end() ? 0 : found->second;
    };
    const std::uint64_t last = std::uint64_t(1) << (pattern.size() - 1);
    std::uint64_t more = ~std::uint64_t(0);
    std::uint64_t fewer = 0;
    std::size_t changes = pattern.size();
    const std::size_t maxChanges = pattern.size() / 4;
    std::optional<ApproximateMatch> best;
    const auto distance = [near](std::size_t end) { return end > near ? end - near : near - end; };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint64_t equal = places(text[i]);
        const std::uint64_t vertical = equal | fewer;
        const std::uint64_t horizontal = (((equal & more) + more) ^ more) | equal;
        std::uint64_t plus = fewer | ~(horizontal | more);
        std::uint64_t minus = more & horizontal;
        if (plus & last)
            ++changes;
        else if (minus & last)
            --changes;
        plus <<= 1;
        minus <<= 1;
        more = minus | ~(vertical | plus);
        fewer = plus & vertical;
        if (changes > maxChanges)
            continue;
        const bool isBetter
            = !best || changes < best->changes || (changes == best->changes && distance(i + 1) < distance(best->end));
        if (isBetter)
            best = { i + 1, changes };
    }
    return best;
}

}
