// The durations of animations in style sheets and layouts.

#include "base/Resource.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

namespace pagora {

namespace {

// Returns the times in a file, in milliseconds. The first group of the expression is the number, the second the unit.
std::vector<double> timesIn(const std::string& name, const std::string& expression)
{
    const auto text = resourceBytes("/org/pagora/Pagora/" + name).value_or("");
    EXPECT_FALSE(text.empty()) << name;
    const std::regex pattern(expression);
    std::vector<double> times;
    for (std::sregex_iterator each(text.begin(), text.end(), pattern), end; each != end; ++each)
        times.push_back(std::stod((*each)[1]) * ((*each)[2] == "s" ? 1000 : 1));
    return times;
}

}

TEST(Motion, NothingMovesForLongerThanAFifthOfASecond)
{
    std::vector<double> times;
    const auto collect = [&](const std::string& name, const char* expression) {
        const auto found = timesIn(name, expression);
        times.insert(times.end(), found.begin(), found.end());
    };
    for (const char* sheet : { "library.css", "library-books.css", "reader.css", "reader-pane.css",
             "reader-popovers.css", "reader-marks.css" })
        collect(sheet, R"(\b([0-9.]+)(m?s)\b)");
    for (const char* layout : { "LibraryWindow", "EpubWindow", "FixedLayout", "ImageView", "TableView", "Alert" })
        collect(std::string("ui/") + layout + ".ui", R"(-duration">([0-9]+)()<)");
    // The bars of full screen are not in a layout; ReaderFullScreenTest tests their duration.
    ASSERT_GE(times.size(), 5U);
    EXPECT_LE(*std::max_element(times.begin(), times.end()), 200);
}

}
