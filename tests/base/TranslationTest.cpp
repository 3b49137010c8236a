#include "base/Translation.hpp"

#include <gtest/gtest.h>

namespace pagora {

TEST(Translation, TextWithoutTranslationStaysAsItIs)
{
    EXPECT_STREQ(_("No translation has this"), "No translation has this");
    EXPECT_STREQ(N_("Nor this"), "Nor this");
}

TEST(Translation, PluralGoesByTheCount)
{
    EXPECT_STREQ(plural("one leaf", "many leaves", 1), "one leaf");
    EXPECT_STREQ(plural("one leaf", "many leaves", 0), "many leaves");
    EXPECT_STREQ(plural("one leaf", "many leaves", 2), "many leaves");
}

TEST(Translation, PlaceholdersAreFilledIn)
{
    EXPECT_EQ(formatted("%d of %lu: %s, 100 %%", 3, 12UL, "Ä"), "3 of 12: Ä, 100 %");
}

TEST(Translation, LongTextIsKeptWhole)
{
    const std::string text(100'000, 'a');
    EXPECT_EQ(formatted("<%s>", text.c_str()), "<" + text + ">");
}

}
