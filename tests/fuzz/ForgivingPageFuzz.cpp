#include "tests/fuzz/FuzzRun.hpp"
#include "xml/ForgivingPage.hpp"

using namespace pagora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const test::FuzzRun run;
    const std::string text(test::inputBytes(data, size));
    const auto page = forgivingPage(text);
    test::require(page || text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"));
    if (page) {
        test::require(page->html.starts_with("<!DOCTYPE html>\n") && !page->encoding.empty());
        // Each character becomes at most a character reference.
        test::require(page->html.size() <= 8 * size + 64);
    }
    return 0;
}
