#include "epub/HTMLParser.hpp"

#include "base/Log.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using Sizes = std::pair<std::uint64_t, std::uint64_t>;

Sizes sizeOf(const std::string& document)
{
    test::TemporaryFolder folder;
    HTMLParser parser(Url::file(test::makeFile(folder.path("page.xhtml"), document)));
    parser.parse();
    return { parser.viewportWidth(), parser.viewportHeight() };
}

Sizes sizeFor(const std::string& content)
{
    return sizeOf("<html><head><meta name='viewport' content='" + content + "'/></head></html>");
}

}

TEST(HTMLParser, WidthAndHeightAreRead)
{
    EXPECT_EQ(sizeFor("width=768, height=1024"), Sizes(768, 1024));
}

TEST(HTMLParser, OrderDoesNotMatter)
{
    EXPECT_EQ(sizeFor("height=1024,width=768"), Sizes(768, 1024));
}

TEST(HTMLParser, UnitIsPassedOver)
{
    EXPECT_EQ(sizeFor("width=768px,height=1024px"), Sizes(768, 1024));
}

TEST(HTMLParser, PageWithoutAViewportKeepsTheDefaults)
{
    EXPECT_EQ(
        sizeOf("<html><head><meta name='Viewport' content='width=1,height=2'/><meta name='viewport'/></head></html>"),
        Sizes(600, 800));
}

TEST(HTMLParser, OnlyTheFirstTwoPiecesAreRead)
{
    EXPECT_EQ(sizeFor("initial-scale=1,width=768"), Sizes(768, 1));
    EXPECT_EQ(sizeFor("width=768,height=1024,width=1,height=2"), Sizes(768, 1024));
}

TEST(HTMLParser, LastViewportWins)
{
    EXPECT_EQ(sizeOf("<html><META name='viewport' content='width=1,height=2'/><meta name='viewport' "
                     "content='width=3,height=4'/></html>"),
        Sizes(3, 4));
}

TEST(HTMLParser, ValueThatIsNoNumberIsZero)
{
    EXPECT_EQ(sizeFor("width=device-width,height=5"), Sizes(0, 5));
}

TEST(HTMLParser, NegativeNumberKeepsItsSignBits)
{
    EXPECT_EQ(sizeFor("width=-1,height=5"), Sizes(0xFFFFFFFFFFFFFFFFu, 5));
}

TEST(HTMLParser, MissingPiecesKeepTheirDefaults)
{
    EXPECT_EQ(sizeFor("width=700"), Sizes(700, 800));
    EXPECT_EQ(sizeFor("width,height=900"), Sizes(600, 900));
    EXPECT_EQ(sizeFor(""), Sizes(600, 800));
}

TEST(HTMLParser, PageThatIsNotWellFormedIsLoggedAndKeepsWhatWasFound)
{
    std::vector<std::string> lines;
    LogCapture capture([&](const std::string& line) { lines.push_back(line); });
    EXPECT_EQ(sizeOf("<html><meta name='viewport' content='width=3,height=4'/><br></html>"), Sizes(3, 4));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].starts_with("FATAL ERROR: ")) << lines[0];
}

}
