#include "base/Unicode.hpp"
#include "marks/AnnotationSet.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;

// A written set must be read again as the same set.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const test::FuzzRun run;
    const auto set = annotationSetFrom(test::inputBytes(data, size));
    if (!set)
        return 0;
    const auto written = annotationText(*set);
    const auto again = annotationSetFrom(written);
    test::require(again.has_value());
    test::require(again->marks.size() == set->marks.size() && again->others.size() == set->others.size());
    test::require(identifiersOf(*again) == identifiersOf(*set) && titleOf(*again) == titleOf(*set));
    for (std::size_t i = 0; i < set->marks.size(); ++i) {
        const auto& mark = set->marks[i];
        test::require(isUtf8(mark.note) && isUtf8(mark.text.exact));
        test::require(again->marks[i].id == mark.id && again->marks[i].note == mark.note);
        test::require(again->marks[i].text == mark.text && again->marks[i].color == mark.color);
    }
    test::require(annotationText(*again) == written);
    return 0;
}
