#include "notebook/PlainText.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {
constexpr const char* mark = "\xEF\xBF\xBD";
}

TEST(PlainText, KeepsWhatIsText)
{
    const std::string text
        = "two\nlines, a\ttab, \xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D, \xE2\x80\x8F and \xE2\x80\xA6 \xF0\x9F\x93\x96";
    EXPECT_EQ(plainText(text), text);
}

TEST(PlainText, ReplacesControlCharacters)
{
    EXPECT_EQ(plainText(std::string("a\0b", 3)), std::string("a") + mark + "b");
    EXPECT_EQ(plainText("a\x1B[31mb\x7F"), std::string("a") + mark + "[31mb" + mark);
    EXPECT_EQ(plainText("a\xC2\x85z"), std::string("a") + mark + "z");
}

TEST(PlainText, ReplacesWhatTurnsTheDirectionRound)
{
    // U+202E, U+202C, U+2067, U+2069 and U+2028.
    for (const char* const turn : { "\xE2\x80\xAE", "\xE2\x80\xAC", "\xE2\x81\xA7", "\xE2\x81\xA9", "\xE2\x80\xA8" })
        EXPECT_EQ(plainText(std::string("exe") + turn + "gpj"), std::string("exe") + mark + "gpj");
}

TEST(PlainText, IsOnItsOwnWithinASentence)
{
    EXPECT_EQ(isolatedText("\xD7\xA9 \xE2\x81\xA9"), std::string("\xE2\x81\xA8\xD7\xA9 ") + mark + "\xE2\x81\xA9");
}

TEST(PlainText, EndsWithinACharacterAtTheEndOfTheText)
{
    EXPECT_EQ(plainText("a\xE2\x80"), "a\xE2\x80");
    EXPECT_EQ(plainText("\xC2"), "\xC2");
}

}
