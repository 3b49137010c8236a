#include "page/PageSelection.hpp"

#include <gtest/gtest.h>
#include <sstream>

namespace pagora::test {

namespace {

std::optional<PageSelection> told(const std::string& text)
{
    std::istringstream words(text);
    return pageSelectionFrom(words);
}

}

TEST(PageSelection, IsReadWithItsPlaceAndItsText)
{
    const auto selection = told("key 2 1 2 3 4 5 6 7 8 1 2 3 2 5 12.5 7 2 two words");
    ASSERT_TRUE(selection);
    EXPECT_EQ(selection->cause, PageSelection::Cause::Key);
    EXPECT_EQ(selection->text, "two words");
    EXPECT_EQ(selection->boxes, (std::vector<Rect> { { 1, 2, 3, 4 }, { 5, 6, 7, 8 } }));
    EXPECT_EQ(selection->firstLine, (Rect { 1, 2, 3, 2 }));
    EXPECT_EQ(selection->lastLine, (Rect { 5, 12.5, 7, 2 }));
}

TEST(PageSelection, IsMissingWithoutAnyWords)
{
    EXPECT_FALSE(told(""));
}

TEST(PageSelection, IsMissingWithoutAPart)
{
    EXPECT_FALSE(told("pointer 0 word"));
    EXPECT_FALSE(told("pointer 9 1 1 1 1 1 1 1 1 1 1 1 1 word"));
    EXPECT_FALSE(told("pointer 1 1 2 3 4 1 2 3 4 1 2 3"));
    EXPECT_FALSE(told("pointer 1 1 2 3 4 1 2 3 4 1 2 3 4 "));
    EXPECT_FALSE(told("pointer 1 1 2 3 4 1 2 x 4 1 2 3 4 word"));
}

}
