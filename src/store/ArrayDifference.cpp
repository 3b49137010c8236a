#include "store/ArrayDifference.hpp"

#include <algorithm>
#include <unordered_map>

namespace pagora {

namespace {

constexpr std::int64_t rankStep = std::int64_t { 1 } << 20;
constexpr std::size_t none = static_cast<std::size_t>(-1);

// For each of `count` new values, returns the index of the stored element in the run that it is a copy of, or `none`.
std::vector<std::size_t> matches(
    const std::vector<StoredElement>& stored, const ArrayDifference& run, const Value* values, std::size_t count)
{
    std::unordered_map<const void*, std::size_t> places;
    places.reserve(run.count);
    for (std::size_t i = run.start; i < run.start + run.count; ++i)
        places.emplace(stored[i].value.identity(), i);
    std::vector<std::size_t> result(count, none);
    for (std::size_t i = 0; i < count; ++i) {
        const auto place = places.find(values[i].identity());
        if (place == places.end())
            continue;
        result[i] = place->second;
        places.erase(place);
    }
    return result;
}

// Keeps only the longest increasing subsequence of the matches, so that kept rows do not change their order.
void keepLongestAscent(std::vector<std::size_t>& matches)
{
    // `ends`: where the best subsequence of each length ends. `before`: the predecessor of each match.
    std::vector<std::size_t> ends;
    std::vector<std::size_t> before(matches.size(), none);
    for (std::size_t i = 0; i < matches.size(); ++i) {
        if (matches[i] == none)
            continue;
        const auto end = std::lower_bound(ends.begin(), ends.end(), matches[i],
            [&](std::size_t at, std::size_t match) { return matches[at] < match; });
        if (end != ends.begin())
            before[i] = *(end - 1);
        if (end == ends.end())
            ends.push_back(i);
        else
            *end = i;
    }
    std::vector<std::size_t> ascent(matches.size(), none);
    for (std::size_t i = ends.empty() ? none : ends.back(); i != none; i = before[i])
        ascent[i] = matches[i];
    matches = std::move(ascent);
}

// Appends elements with `count` ranks between `low` and `high`. Returns false if there are not enough ranks.
bool addRanks(std::optional<std::int64_t> low, std::optional<std::int64_t> high, std::size_t count,
    std::vector<StoredElement>& elements, const Value* values)
{
    const auto number = static_cast<std::int64_t>(count);
    std::int64_t step = rankStep;
    if (low && high)
        step = (*high - *low) / (number + 1);
    if (step == 0)
        return false;
    const std::int64_t first = low ? *low + step : high ? *high - number * step : step;
    for (std::int64_t i = 0; i < number; ++i)
        elements.push_back({ values[i], 0, first + i * step });
    return true;
}

// Assigns a row to each new value. Returns false if the ranks do not suffice.
bool placeElements(const std::vector<StoredElement>& stored, ArrayDifference& run, const Value* values,
    const std::vector<std::size_t>& kept)
{
    const std::size_t storedEnd = run.start + run.count;
    std::size_t next = run.start;
    for (std::size_t i = 0; i <= kept.size();) {
        // New values before the next kept one reuse the rows before it. The others get new rows with ranks in between.
        const auto stop = static_cast<std::size_t>(std::find_if(kept.begin() + static_cast<std::ptrdiff_t>(i),
                                                       kept.end(), [](std::size_t match) { return match != none; })
            - kept.begin());
        const std::size_t storedStop = stop < kept.size() ? kept[stop] : storedEnd;
        for (; i < stop && next < storedStop; ++i, ++next)
            run.elements.push_back({ values[i], stored[next].id, stored[next].rank });
        if (i < stop) {
            std::optional<std::int64_t> low;
            if (!run.elements.empty())
                low = run.elements.back().rank;
            else if (run.start > 0)
                low = stored[run.start - 1].rank;
            std::optional<std::int64_t> high;
            if (storedStop < stored.size())
                high = stored[storedStop].rank;
            if (!addRanks(low, high, stop - i, run.elements, values + i))
                return false;
        }
        run.isKept.resize(run.elements.size(), false);
        if (stop == kept.size())
            break;
        run.elements.push_back(stored[storedStop]);
        run.isKept.push_back(true);
        next = storedStop + 1;
        i = stop + 1;
    }
    return true;
}

}

ArrayDifference arrayDifference(const std::vector<StoredElement>& stored, const Value::Array& array)
{
    const auto isSame = [](const StoredElement& element, const Value& value) { return element.value.isSameAs(value); };
    const std::size_t shorter = std::min(stored.size(), array.size());
    ArrayDifference run;
    while (run.start < shorter && isSame(stored[run.start], array[run.start]))
        ++run.start;
    std::size_t tail = 0;
    while (tail < shorter - run.start && isSame(stored[stored.size() - 1 - tail], array[array.size() - 1 - tail]))
        ++tail;
    run.count = stored.size() - run.start - tail;
    const Value* values = array.data() + run.start;
    auto kept = matches(stored, run, values, array.size() - run.start - tail);
    keepLongestAscent(kept);
    if (placeElements(stored, run, values, kept))
        return run;
    ArrayDifference all { 0, stored.size(), {}, std::vector<bool>(array.size(), false) };
    addRanks(std::nullopt, std::nullopt, array.size(), all.elements, array.data());
    return all;
}

}
