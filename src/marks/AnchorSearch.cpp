#include "marks/AnchorSearch.hpp"

#include "files/Files.hpp"
#include "find/ChapterText.hpp"
#include "marks/TextMatch.hpp"

#include <algorithm>
#include <limits>

namespace pagora {

namespace {

constexpr std::size_t maxWork = 400'000'000;
// The maximum size of the cache of texts, in units.
constexpr std::size_t maxKept = 32'000'000;
// Shorter texts may occur by chance, so their context must match too.
constexpr std::size_t distinctiveLength = 16;
// The maximum number of compared places with the same text.
constexpr std::size_t maxPlaces = 10'000;

using View = std::u16string_view;

std::size_t sameAtEnd(View first, View second)
{
    const auto [end, ignored] = std::mismatch(first.rbegin(), first.rend(), second.rbegin(), second.rend());
    return static_cast<std::size_t>(end - first.rbegin());
}

std::size_t sameAtStart(View first, View second)
{
    const auto [end, ignored] = std::mismatch(first.begin(), first.end(), second.begin(), second.end());
    return static_cast<std::size_t>(end - first.begin());
}

std::size_t distance(std::size_t first, std::size_t second)
{
    return first > second ? first - second : second - first;
}

// Returns the start of a text that is similar to the pattern.
std::optional<ApproximateMatch> similarStart(View text, View pattern, std::size_t near)
{
    const std::u16string turnedText(text.rbegin(), text.rend());
    const std::u16string turnedPattern(pattern.rbegin(), pattern.rend());
    auto found = closestMatch(turnedText, turnedPattern, text.size() - std::min(near, text.size()));
    if (found)
        found->end = text.size() - found->end;
    return found;
}

}

struct AnchorSearch::Quote {
    std::u16string exact;
    std::u16string before;
    std::u16string after;
    std::optional<std::size_t> character;

    // A bookmark has no text; its context is searched instead.
    bool isPlace() const { return exact.empty(); }
    std::u16string wanted() const { return isPlace() ? before + after : exact; }
    std::size_t skipped() const { return isPlace() ? before.size() : 0; }
    std::size_t context() const { return isPlace() ? 0 : before.size() + after.size(); }
};

struct AnchorSearch::Candidate {
    std::size_t chapter = 0;
    TextSpan span;
    // The number of equal units around it, the number of changed units in it, and the distance from the stored place.
    std::size_t context = 0;
    std::size_t changes = 0;
    std::size_t distance = 0;
};

AnchorSearch::AnchorSearch(const MarkedDocuments& documents)
    : _documents(documents)
    , _workLeft(maxWork)
{
}

std::optional<MarkAnchor> AnchorSearch::find(const MarkedText& text)
{
    const auto chapter = _documents.chapterOf(text.source);
    const Quote quote { unitsOf(text.exact), unitsOf(text.before), unitsOf(text.after), text.start };
    if (quote.wanted().empty())
        return chapter ? atPosition(*chapter, text) : std::nullopt;
    std::vector<std::size_t> others;
    for (std::size_t i = 0; i < _documents.paths.size(); ++i) {
        if (i != chapter)
            others.push_back(i);
    }
    const auto home = chapter.value_or(0);
    std::stable_sort(others.begin(), others.end(),
        [home](std::size_t first, std::size_t second) { return distance(first, home) < distance(second, home); });
    if (const auto found = chapter ? same(*chapter, quote) : std::nullopt)
        return anchor(*found);
    std::optional<Candidate> best;
    for (const auto other : others) {
        const auto found = same(other, quote);
        const bool isDistinctive
            = found && (quote.wanted().size() >= distinctiveLength || found->context >= distinctiveLength);
        if (isDistinctive && (!best || found->context > best->context))
            best = found;
        if (best && best->context == quote.context())
            break;
    }
    if (best)
        return anchor(*best);
    if (const auto found = chapter ? similar(*chapter, quote) : std::nullopt)
        return anchor(*found);
    for (const auto other : others) {
        const auto found = similar(other, quote);
        if (found && (!best || found->changes < best->changes))
            best = found;
    }
    return best ? std::optional(anchor(*best)) : std::nullopt;
}

// Returns the place of the exact text. Of several places, it is the one with the most equal context, then the nearest.
std::optional<AnchorSearch::Candidate> AnchorSearch::same(std::size_t chapter, const Quote& quote)
{
    const auto* const text = units(chapter);
    if (!text)
        return {};
    const View all = text->units();
    const auto near = quote.character ? text->placeOf(*quote.character) : 0;
    const auto wanted = quote.wanted();
    const auto skipped = quote.skipped();
    const auto candidateAt = [&](std::size_t at) {
        const auto start = static_cast<std::uint32_t>(at + skipped);
        const auto end = static_cast<std::uint32_t>(start + quote.exact.size());
        std::size_t context = 0;
        if (!quote.isPlace())
            context = sameAtEnd(quote.before, all.substr(0, start)) + sameAtStart(quote.after, all.substr(end));
        return Candidate { chapter, { start, end }, context, 0, distance(start, near) };
    };
    if (!spend(wanted.size()))
        return {};
    if (near >= skipped && all.substr(near - skipped).starts_with(wanted)) {
        const auto there = candidateAt(near - skipped);
        if (there.context == quote.context())
            return there;
    }
    if (!spend(all.size()))
        return {};
    std::optional<Candidate> best;
    std::size_t places = 0;
    findEach(all, wanted, [&](std::size_t at) {
        const auto found = candidateAt(at);
        if (!best || found.context > best->context
            || (found.context == best->context && found.distance < best->distance))
            best = found;
        return ++places < maxPlaces;
    });
    // A short text without equal context may be another occurrence.
    const bool isDistinctive = best
        && (wanted.size() >= distinctiveLength || best->context >= std::min(distinctiveLength, quote.context())
            || (best->distance == 0 && quote.character));
    return isDistinctive ? best : std::nullopt;
}

std::optional<AnchorSearch::Candidate> AnchorSearch::similar(std::size_t chapter, const Quote& quote)
{
    const auto* const text = units(chapter);
    if (!text || !spend(6 * text->units().size()))
        return {};
    const View all = text->units();
    const std::size_t near = quote.character ? text->placeOf(*quote.character) : 0;
    const auto candidate = [chapter](std::size_t start, std::size_t end, std::size_t changes) {
        const TextSpan span { static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(end) };
        return std::optional(Candidate { chapter, span, 0, changes, 0 });
    };
    const auto length = quote.exact.size();
    if (length >= minApproximateLength) {
        const auto start = similarStart(all, quote.exact, near);
        if (start) {
            const auto rest = all.substr(start->end, 2 * length + maxApproximateLength);
            const auto end = closestMatch(rest, quote.exact, length);
            return candidate(start->end, start->end + (end ? end->end : std::min(length, rest.size())), start->changes);
        }
    }
    const auto before = closestMatch(all, quote.before, near);
    const auto from = before ? before->end : 0;
    const auto rest = all.substr(from);
    const auto after = similarStart(rest, quote.after, before ? length : (near > from ? near - from : 0));
    if (quote.isPlace() && before)
        return candidate(before->end, before->end, before->changes);
    if (quote.isPlace() && after)
        return candidate(from + after->end, from + after->end, after->changes);
    // The same context encloses a different text.
    if (before && after && after->end > 0 && after->end <= 2 * length + maxApproximateLength)
        return candidate(from, from + after->end, before->changes + after->changes);
    return {};
}

// Used for a mark of another program that has a position but no text.
std::optional<MarkAnchor> AnchorSearch::atPosition(std::size_t chapter, const MarkedText& text)
{
    const auto* const all = units(chapter);
    if (!all)
        return {};
    std::size_t first = 0;
    if (!text.element.empty()) {
        const auto place = placeOfElement(chapter, text.element);
        if (!place)
            return {};
        first = all->characterAt(*place);
    }
    const auto bounded
        = [](std::size_t number) { return std::min<std::size_t>(number, std::numeric_limits<int>::max()); };
    const auto start = all->placeOf(first + bounded(text.start.value_or(0)));
    const auto end = std::max(start, all->placeOf(first + bounded(text.end.value_or(0))));
    if (start > all->size() || (start == all->size() && text.start.value_or(0) > 0))
        return {};
    return anchor({ chapter, { start, end }, 0, 0, 0 });
}

// The element's place is the length of the text before its tag.
std::optional<std::uint32_t> AnchorSearch::placeOfElement(std::size_t chapter, const std::string& id)
{
    const auto& path = _documents.paths[chapter];
    const auto bytes = isWithinFolder(path, _documents.folder) ? readFile(path, maxChapterBytes) : std::nullopt;
    if (!bytes || !spend(2 * bytes->size()))
        return {};
    for (const char* quotes : { "\"", "'" }) {
        const auto at = bytes->find("id=" + std::string(quotes) + id + quotes);
        const auto tag = at == std::string::npos ? at : bytes->rfind('<', at);
        if (tag != std::string::npos)
            return static_cast<std::uint32_t>(unitsOf(chapterText(bytes->substr(0, tag)).text).size());
    }
    return {};
}

MarkAnchor AnchorSearch::anchor(const Candidate& candidate)
{
    const auto [start, end] = candidate.span;
    const auto* const text = units(candidate.chapter);
    return { candidate.chapter, start, end, text ? text->between(start, end) : std::string() };
}

const ChapterUnits* AnchorSearch::units(std::size_t chapter)
{
    const auto known = _units.find(chapter);
    if (known != _units.end())
        return known->second.get();
    auto text = chapterTextOf(_documents.paths[chapter], _documents.folder);
    if (!spend(text ? text->text.size() : 1))
        return nullptr;
    if (_kept > maxKept) {
        _units.clear();
        _kept = 0;
    }
    auto& kept = _units[chapter];
    if (text) {
        kept = std::make_unique<ChapterUnits>(std::move(text->text));
        _kept += kept->size();
    }
    return kept.get();
}

bool AnchorSearch::spend(std::size_t work)
{
    if (work > _workLeft)
        return false;
    _workLeft -= work;
    return true;
}

std::optional<TextSpan> placeOfText(const ChapterUnits& units, const MarkAnchor& place)
{
    if (place.start >= place.end)
        return place.start <= units.size() ? std::optional(TextSpan { place.start, place.start }) : std::nullopt;
    const auto wanted = unitsOf(place.text);
    const View all = units.units();
    const auto spanAt = [&wanted](std::size_t start) {
        return TextSpan { static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(start + wanted.size()) };
    };
    if (place.start < all.size() && !wanted.empty() && all.substr(place.start).starts_with(wanted))
        return spanAt(place.start);
    std::optional<std::size_t> best;
    findEach(all, wanted, [&](std::size_t at) {
        const bool isNearer = !best || distance(at, place.start) < distance(*best, place.start);
        if (isNearer)
            best = at;
        return isNearer;
    });
    return best ? std::optional(spanAt(*best)) : std::nullopt;
}

}
