#include "base/Unicode.hpp"
#include "find/ChapterText.hpp"
#include "marks/AnchorSearch.hpp"
#include "tests/fuzz/FuzzRun.hpp"

#include <algorithm>

using namespace pagora;

// The first line of the input is a text on the page, and its length determines the text's place; the rest is the
// document.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const test::FuzzRun run;
    const std::string input(test::inputBytes(data, size));
    const auto lineEnd = std::min(input.find('\n'), input.size());
    const auto quote = validUtf8(input.substr(0, lineEnd));
    const ChapterUnits units(chapterText(input.substr(lineEnd)).text);

    const auto place = static_cast<std::uint32_t>(lineEnd) * 7;
    test::require(isUtf8(units.between(place, place + 9)));
    test::require(isUtf8(units.before(place, marksContext)) && isUtf8(units.after(place, marksContext)));
    test::require(isUtf8(units.from(place, marksContext)));
    test::require(units.placeOf(units.characterAt(place)) <= units.size());

    const auto length = static_cast<std::uint32_t>(unitsOf(quote).size());
    const auto span = placeOfText(units, { 0, place, place + length, quote });
    if (span) {
        test::require(span->start <= span->end && span->end <= units.size());
        test::require(units.units().compare(span->start, span->end - span->start, unitsOf(quote)) == 0);
    }
    return 0;
}
