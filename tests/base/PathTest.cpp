#include "base/Path.hpp"

#include "base/Unicode.hpp"

#include <gtest/gtest.h>

namespace pagora {

TEST(Path, LastComponentIgnoresTrailingSlashes)
{
    EXPECT_EQ(lastPathComponent("/a/b.epub//"), "b.epub");
    EXPECT_EQ(lastPathComponent("b.epub"), "b.epub");
    EXPECT_EQ(lastPathComponent("/"), "");
}

TEST(Path, FolderOfAPathHasNoTrailingSlash)
{
    EXPECT_EQ(deletingLastPathComponent("/a/b/c"), "/a/b");
    EXPECT_EQ(deletingLastPathComponent("/a"), "/");
    EXPECT_EQ(deletingLastPathComponent("a"), "");
}

TEST(Path, ExtensionIsWhatFollowsTheLastDot)
{
    EXPECT_EQ(pathExtension("/x/Book.v2.epub"), "epub");
    EXPECT_EQ(pathExtension("/x.y/Book"), "");
    EXPECT_EQ(deletingPathExtension("/x/Book.v2.epub"), "Book.v2");
}

TEST(Path, LeadingDotStartsNoExtension)
{
    EXPECT_EQ(pathExtension(".epub"), "");
    EXPECT_EQ(deletingPathExtension(".epub"), ".epub");
}

TEST(Path, JoiningPutsOneSlashBetween)
{
    EXPECT_EQ(appendingPathComponent("/a/", "/b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("", "b"), "b");
    EXPECT_EQ(appendingPathComponent("/a", ""), "/a");
    EXPECT_EQ(appendingPathComponent("/", "b"), "/b");
}

TEST(Path, NormalizingFollowsDotDot)
{
    EXPECT_EQ(normalizedPath("a/./b/../c"), "a/c");
    EXPECT_EQ(normalizedPath("/../a//b"), "/a/b");
    EXPECT_EQ(normalizedPath("a/../../b"), "../b");
}

TEST(Path, InsideIsDecidedAfterNormalizing)
{
    EXPECT_TRUE(isPathInside("/books/x/a/../b", "/books/x"));
    EXPECT_FALSE(isPathInside("/books/x/../y", "/books/x"));
    EXPECT_FALSE(isPathInside("/books/xy", "/books/x"));
    EXPECT_FALSE(isPathInside("/books/x", "/books/x"));
}

TEST(Path, PathWithANulByteIsInsideNothing)
{
    EXPECT_FALSE(isPathInside(std::string_view("/books/x/a\0b", 12), "/books/x"));
}

TEST(Path, SplittingKeepsEmptyParts)
{
    EXPECT_EQ(split("a,,b,", ','), (std::vector<std::string> { "a", "", "b", "" }));
    EXPECT_EQ(split("", ','), (std::vector<std::string> { "" }));
    EXPECT_EQ(joined({ "a", "b" }, " ## "), "a ## b");
}

TEST(Path, TrimmingTakesSpacesBeyondAsciiToo)
{
    EXPECT_EQ(trimmed(" \t\r\n\u00A0\u2003\u3000a b\u2028\u0085 "), "a b");
    EXPECT_EQ(trimmed(" \n "), "");
    EXPECT_EQ(trimmed(" \xFF "), "\xFF");
}

TEST(Path, LowerCaseChangesAsciiOnly)
{
    EXPECT_EQ(lowercased("RootFILE \u00C9"), "rootfile \u00C9");
}

TEST(Wildcards, StarStandsForSlashesToo)
{
    EXPECT_TRUE(matchesWildcards("OEBPS/text/a.xhtml", "OEBPS/*.xhtml"));
    EXPECT_FALSE(matchesWildcards("OEBPS/text/a.html", "OEBPS/*.xhtml"));
    EXPECT_TRUE(matchesWildcards("a", "a**"));
}

TEST(Wildcards, QuestionMarkStandsForOneByte)
{
    EXPECT_TRUE(matchesWildcards("a1", "a?"));
    EXPECT_FALSE(matchesWildcards("a", "a?"));
}

TEST(Wildcards, SetStandsForOneOfItsBytes)
{
    EXPECT_TRUE(matchesWildcards("a1.txt", "a[12].txt"));
    EXPECT_TRUE(matchesWildcards("ac", "a[a-d]"));
    EXPECT_FALSE(matchesWildcards("ae", "a[a-d]"));
    EXPECT_TRUE(matchesWildcards("ae", "a[!a-d]"));
    EXPECT_TRUE(matchesWildcards("a]", "a[\\]]"));
}

TEST(Wildcards, FirstBracketClosesASet)
{
    EXPECT_FALSE(matchesWildcards("a]", "a[]]"));
}

TEST(Wildcards, UnclosedSetStandsForNothing)
{
    EXPECT_FALSE(matchesWildcards("a[1", "a[1"));
    EXPECT_FALSE(matchesWildcards("a1", "a[1"));
}

TEST(Wildcards, BackslashTakesTheMeaningOfACharacter)
{
    EXPECT_TRUE(matchesWildcards("a*", "a\\*"));
    EXPECT_FALSE(matchesWildcards("ab", "a\\*"));
    EXPECT_TRUE(matchesWildcards("ab", "a\\b"));
}

TEST(Wildcards, ManyStarsAreMatchedWithoutExploding)
{
    std::string pattern;
    for (int i = 0; i < 200; ++i)
        pattern += "*a";
    EXPECT_FALSE(matchesWildcards(std::string(2'000, 'a'), pattern + "b"));
}

TEST(Unicode, NormalFormsConvertIntoEachOther)
{
    EXPECT_EQ(composedForm("e\u0301"), "\u00E9");
    EXPECT_EQ(decomposedForm("\u00E9"), "e\u0301");
    EXPECT_EQ(composedForm("\xFF"), "\xFF");
}

TEST(Unicode, OtherBytesBecomeReplacementCharacters)
{
    EXPECT_EQ(validUtf8("a\xFF"), "a\uFFFD");
    EXPECT_EQ(validUtf8(""), "");
}

}
