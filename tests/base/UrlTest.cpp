#include "base/Url.hpp"

#include <gtest/gtest.h>

namespace pagora {

TEST(Url, FilePathComesBackAsItWas)
{
    for (const std::string path : { "/a b/c", "/100%/x#y?z;.epub", "/\u00E9\xFF[1]", "/a:b@c" }) {
        const auto url = Url::file(path);
        EXPECT_TRUE(Url::fromString(url.text())) << url.text();
        EXPECT_EQ(url.path(), path);
        EXPECT_TRUE(url.isFile());
        EXPECT_FALSE(url.fragment());
    }
}

TEST(Url, TextWithCharactersThatAUrlCannotHoldIsNone)
{
    for (const char* text :
        { "a b", "a\"b", "<a>", "a\nb", "\u00E9", "100%", "%4", "%zz", "a\\b", "{a}", "a^b", "a|b", "`" })
        EXPECT_FALSE(Url::fromString(text)) << text;
}

TEST(Url, SchemeIsToldInLowerCase)
{
    EXPECT_EQ(Url::fromString("HTTP://example.org")->scheme(), "http");
    EXPECT_EQ(Url::fromString("/a:b")->scheme(), "");
    EXPECT_EQ(Url::fromString("chapter.xhtml")->scheme(), "");
    EXPECT_EQ(Url::fromString("1a:b")->scheme(), "");
}

TEST(Url, PathLeavesOutHostQueryAndFragment)
{
    EXPECT_EQ(Url::fromString("file://localhost/a%20b?q#f")->path(), "/a b");
    EXPECT_EQ(Url::fromString("/a%23b#c")->path(), "/a#b");
    EXPECT_EQ(Url::fromString("http://example.org")->path(), "");
}

TEST(Url, LastPathComponentIgnoresTrailingSlashes)
{
    EXPECT_EQ(Url::fromString("file:///a/b%20c/")->lastPathComponent(), "b c");
}

TEST(Url, FragmentFollowsTheFirstHash)
{
    EXPECT_EQ(Url::fromString("/a#b%20c#d")->fragment(), "b c#d");
    EXPECT_EQ(Url::fromString("/a#")->fragment(), "");
    EXPECT_EQ(Url::fromString("/a%23b")->fragment(), std::nullopt);
    EXPECT_EQ(Url::fromString("/a#b")->withoutFragment().text(), "/a");
}

TEST(PercentEscapes, ReplacingMakesBytes)
{
    EXPECT_EQ(replacingPercentEscapes("a%20b%C3%a9"), "a b\u00E9");
    EXPECT_EQ(replacingPercentEscapes("100%"), "100%");
    EXPECT_EQ(replacingPercentEscapes("%4g%"), "%4g%");
}

TEST(PercentEscapes, ReplacingIntoSomethingThatIsNotUtf8IsMissing)
{
    EXPECT_EQ(replacingPercentEscapes("%FF"), std::nullopt);
    EXPECT_EQ(replacingPercentEscapes("%C3"), std::nullopt);
    EXPECT_EQ(replacingPercentEscapes("%00%FF"), std::nullopt);
}

TEST(PercentEscapes, AddingLeavesDelimitersAsTheyAre)
{
    constexpr auto kept = "AZaz09-._~:/?#@!$&'()*+,;=";
    EXPECT_EQ(addingPercentEscapes(kept), kept);
}

TEST(PercentEscapes, AddingEscapesEverythingElse)
{
    EXPECT_EQ(addingPercentEscapes("% []^`{|}\\\"<>\n\u00E9"), "%25%20%5B%5D%5E%60%7B%7C%7D%5C%22%3C%3E%0A%C3%A9");
}

}
