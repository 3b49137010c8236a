#include "epub/ContentParser.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

Value::Array entriesOf(const std::string& document)
{
    test::TemporaryFolder folder;
    ContentParser parser(Url::file(test::makeFile(folder.path("toc.ncx"), document)));
    parser.parse();
    return parser.contentList();
}

std::string point(const std::string& label, const std::string& src, const std::string& children = {})
{
    return "<navPoint id='" + src + "'><navLabel><text>" + label + "</text></navLabel><content src='" + src + "'/>"
        + children + "</navPoint>";
}

Value entry(const std::string& src, const std::string& text, int level)
{
    return Value::Dictionary { { "src", src }, { "text", text }, { "level", level } };
}

std::string labelOf(const std::string& text)
{
    const auto entries = entriesOf("<ncx><navMap>" + point(text, "a") + "</navMap></ncx>");
    return entries.empty() ? "" : *entries[0].find("text")->string();
}

}

TEST(ContentParser, NestedPointsAreAFlatListWithLevels)
{
    EXPECT_EQ(entriesOf("<ncx><navMap>" + point("A", "a.html", point("B", "a.html#b%20c")) + point("C", "c.html")
                  + "</navMap></ncx>"),
        (Value::Array { entry("a.html", "A", 1), entry("a.html#b%20c", "B", 2), entry("c.html", "C", 1) }));
}

TEST(ContentParser, PiecesOfALabelAreJoinedWithoutABlank)
{
    EXPECT_EQ(labelOf(" Chapter\n   One "), "ChapterOne");
    EXPECT_EQ(labelOf("Tom &amp; Jerry"), "Tom & Jerry");
}

TEST(ContentParser, MarkedSectionOfALabelIsText)
{
    EXPECT_EQ(labelOf("<![CDATA[ Tom & Jerry ]]>"), "Tom & Jerry");
    EXPECT_EQ(labelOf("One <![CDATA[Two]]>"), "OneTwo");
}

TEST(ContentParser, AuthorIsGluedToTheFirstLabel)
{
    const auto entries
        = entriesOf("<ncx><docTitle><text>T</text></docTitle><docAuthor><text>Who</text></docAuthor><navMap>"
            + point("One", "a") + point("Two", "b") + "</navMap></ncx>");
    EXPECT_EQ(entries, (Value::Array { entry("a", "WhoOne", 1), entry("b", "Two", 1) }));
}

TEST(ContentParser, PrefixesAndCaseOfElementsDoNotMatter)
{
    EXPECT_EQ(entriesOf("<ncx:ncx><NCX:NavPoint><ncx:Text>A</ncx:Text><ncx:CONTENT src='a'/></NCX:NavPoint></ncx:ncx>"),
        (Value::Array { entry("a", "A", 1) }));
}

TEST(ContentParser, EntryOutsideAPointHasLevelZero)
{
    EXPECT_EQ(entriesOf("<ncx><pageList><pageTarget><text>1</text><content src='p'/></pageTarget></pageList></ncx>"),
        (Value::Array { entry("p", "1", 0) }));
}

TEST(ContentParser, EntryWithoutATargetIsEmpty)
{
    EXPECT_EQ(entriesOf("<ncx><navPoint><text>A</text><content/></navPoint>" + point("B", "b") + "</ncx>"),
        (Value::Array { Value::Dictionary {}, entry("b", "B", 1) }));
}

TEST(ContentParser, EntriesBeforeAnErrorStand)
{
    EXPECT_EQ(entriesOf("<ncx>" + point("A", "a") + "<navPoint></ncx>"), (Value::Array { entry("a", "A", 1) }));
}

TEST(ContentParser, ParseThatBrokeOffLeavesNoTraceForTheNext)
{
    entriesOf("<ncx><navPoint><navPoint><text>left over");
    EXPECT_EQ(entriesOf("<ncx>" + point("A", "a") + "</ncx>"), (Value::Array { entry("a", "A", 1) }));
}

TEST(ContentParser, PointsNestedDeepAreRead)
{
    constexpr int depth = 10'000;
    std::string document = "<ncx>";
    for (int i = 0; i < depth; ++i)
        document += "<navPoint><content src='a'/>";
    for (int i = 0; i < depth; ++i)
        document += "</navPoint>";
    const auto entries = entriesOf(document + "</ncx>");
    ASSERT_EQ(entries.size(), static_cast<std::size_t>(depth));
    EXPECT_EQ(entries.back(), entry("a", "", depth));
}

TEST(ContentParser, FileThatCannotBeReadGivesNoEntries)
{
    ContentParser parser(Url::file("/nothing/toc.ncx"));
    parser.parse();
    EXPECT_TRUE(parser.contentList().empty());
}

}
