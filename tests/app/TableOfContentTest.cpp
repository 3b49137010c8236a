#include "app/BookOpening.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

Value point(const char* text, const char* src, int level = 1)
{
    return Value::Dictionary { { "text", text }, { "src", src }, { "level", level } };
}

}

TEST(TableOfContent, FoldersAreEscapedTwiceAndFileNamesOnce)
{
    const auto entries = tableOfContentFrom({ point("One", "/my books/Sea/chapter 1.xhtml") });
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].src.text(), "/my%2520books/Sea/chapter%201.xhtml");
}

TEST(TableOfContent, PercentSignsAreEscapedAsWell)
{
    const auto entries = tableOfContentFrom({ point("One", "/50%/100%.xhtml") });
    EXPECT_EQ(entries.at(0).src.text(), "/50%2525/100%25.xhtml");
}

TEST(TableOfContent, AFragmentStaysOneAlsoWithSlashes)
{
    const auto entries = tableOfContentFrom({ point("One", "/b/a.xhtml#part/two 2") });
    EXPECT_EQ(entries.at(0).src.text(), "/b/a.xhtml#part/two%202");
    EXPECT_EQ(entries.at(0).src.fragment(), "part/two 2");
}

TEST(TableOfContent, KeepsTextsAndLevelsInTheirOrder)
{
    const auto entries = tableOfContentFrom({ point("One", "/b/a.xhtml", 1), point("Two", "/b/b.xhtml", 3) });
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].text, "One");
    EXPECT_EQ(entries[1].text, "Two");
    EXPECT_EQ(entries[1].level, 3);
}

TEST(TableOfContent, EntriesWithoutTextOrTargetAreLeftOut)
{
    const auto entries = tableOfContentFrom({ point("", "/b/a.xhtml"), Value::Dictionary { { "src", "/b/b.xhtml" } },
        Value::Dictionary { { "text", "Lost" } }, point("Kept", "/b/c.xhtml") });
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].text, "Kept");
}

TEST(TableOfContent, NoContentGivesNoEntries)
{
    EXPECT_TRUE(tableOfContentFrom({}).empty());
}

}
