#include "base/Unicode.hpp"
#include "find/TextPattern.hpp"
#include "tests/fuzz/FuzzRun.hpp"

#include <algorithm>

using namespace pagora;

// The first line of the input is the pattern, the rest is the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const test::FuzzRun run;
    const std::string input(test::inputBytes(data, size));
    const auto lineEnd = std::min(input.find('\n'), input.size());
    const auto text = validUtf8(input.substr(lineEnd));
    for (const auto wholeWords : { WholeWords::No, WholeWords::Yes }) {
        const TextPattern pattern(std::string_view(input).substr(0, lineEnd), wholeWords);
        TextMatch last;
        pattern.search(text, [&](const TextMatch& match) {
            test::require(!pattern.isEmpty());
            test::require(
                match.firstByte >= last.endByte && match.firstByte < match.endByte && match.endByte <= text.size());
            test::require(match.start >= last.end && match.start <= match.end);
            test::require(isUtf8(text.substr(match.firstByte, match.endByte - match.firstByte)));
            last = match;
            return true;
        });
    }
    return 0;
}
