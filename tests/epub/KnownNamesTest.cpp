#include "epub/KnownNames.hpp"

#include "base/Path.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

// Returns the locations of many books, above the limit of the linear search.
std::vector<std::string> manyLocations()
{
    std::vector<std::string> locations;
    for (int i = 0; i < 5'000; ++i)
        locations.push_back("/home/ada/Documents/ePubLibrary/Book number " + std::to_string(i) + ".epub");
    return locations;
}

}

TEST(KnownNames, HoldAFileOfTheLibrary)
{
    EXPECT_TRUE(KnownNames("Sea.epub ## Land.epub").hold("Land.epub"));
    EXPECT_FALSE(KnownNames("Sea.epub ## Land.epub").hold("Sky.epub"));
}

TEST(KnownNames, HoldANameThatIsPartOfAnother)
{
    EXPECT_TRUE(KnownNames("data.epub").hold("a.epub"));
}

TEST(KnownNames, OfAnEmptyLibraryHoldNothing)
{
    EXPECT_FALSE(KnownNames("").hold("Sea.epub"));
}

TEST(KnownNames, OfALargeLibraryAreWhatASearchOfTheTextFinds)
{
    const auto text = joined(manyLocations(), " ## ");
    const KnownNames known(text);
    for (const std::string name : { "Book number 0.epub", "Book number 4999.epub", "Book number 5000.epub",
             "umber 17.epub", "7.epub", "Book number 499.epu", "x7.epub", "epub ## /home", "b ## /", "Sea.epub",
             "Book number 12 3.epub", "ePubLibrary", "Book number 1.epub.epub", "a" })
        EXPECT_EQ(known.hold(name), text.find(name) != std::string::npos) << name;
}

}
