#include "base/Unicode.hpp"
#include "epub/NavigationDocument.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;

namespace {

void checkPoints(const std::vector<NavigationPoint>& points)
{
    for (const auto& point : points) {
        test::require(isUtf8(point.text) && point.level >= 1);
        test::require(point.target.text().starts_with("file:///book/"));
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const test::FuzzRun run;
    const std::string document(test::inputBytes(data, size));
    const auto lists = navigationLists(document, "/book/text/nav.xhtml", "/book");
    checkPoints(lists.contents);
    checkPoints(lists.pages);
    return 0;
}
