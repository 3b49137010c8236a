#include "find/ChapterText.hpp"

#include "files/Files.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <filesystem>
#include <gtest/gtest.h>

using namespace pagora;

namespace {
std::string text(const std::string& body)
{
    return chapterText("<html><head><title>t</title></head><body>" + body + "</body></html>").text;
}
}

TEST(ChapterText, JoinsWhatMarkupSplits)
{
    EXPECT_EQ(text("foo<b>bar</b><i>baz</i>"), "foobarbaz");
}

TEST(ChapterText, PutsOneBlankForARunOfBlanks)
{
    EXPECT_EQ(text("a \n\t b<i> </i> c"), "a b c");
}

TEST(ChapterText, EndsParagraphsAndCellsWithALineFeed)
{
    EXPECT_EQ(text("<p>a </p>\n<p>b</p><table><tr><td>c</td><td>d</td></tr></table>e"), "a\nb\nc\nd\ne");
}

TEST(ChapterText, TakesALineBreakAsABlank)
{
    EXPECT_EQ(text("a<br/>b<br>c"), "a b c");
}

TEST(ChapterText, LeavesOutWhatIsNotReadWithTheText)
{
    EXPECT_EQ(text("a<script>x</script><style>x</style><ruby>b<rp>(</rp><rt>x</rt></ruby><noscript><p>x</p></noscript>"
                   "<svg><title>x</title></svg>c"),
        "abc");
    EXPECT_EQ(text("a<template><template>x</template>x</template>b"), "ab");
    EXPECT_EQ(text("a<title/>b"), "ab");
}

TEST(ChapterText, ReadsADocumentWithoutABody)
{
    EXPECT_EQ(chapterText("<p>a<p>b").text, "a\nb");
    EXPECT_EQ(chapterText("").text, "");
}

TEST(ChapterText, ReadsNothingOutsideTheFolder)
{
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("book"));
    writeFile(folder.path("book/a.xhtml"), "<p>in</p>");
    writeFile(folder.path("secret.xhtml"), "<p>out</p>");
    std::filesystem::create_symlink(folder.path("secret.xhtml"), folder.path("book/link.xhtml"));
    EXPECT_EQ(chapterTextOf(folder.path("book/a.xhtml"), folder.path("book"))->text, "in\n");
    EXPECT_FALSE(chapterTextOf(folder.path("book/link.xhtml"), folder.path("book")));
    EXPECT_FALSE(chapterTextOf(folder.path("book/../secret.xhtml"), folder.path("book")));
    EXPECT_FALSE(chapterTextOf(folder.path("book/none.xhtml"), folder.path("book")));
}
