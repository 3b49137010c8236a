// Each kind of fault is counted where it occurs, and nowhere else.

#include "tests/page_check/PageCheck.hpp"

#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/PageViewTest.hpp"
#include "tests/engine/ReadingFixture.hpp"

#include <sstream>

namespace pagora::test {

namespace {

class PageFaultsTest : public PageViewTest {
protected:
    // A page without the corrections of the page scripts.
    PageFaultsTest() { show(PageKind::Fixed); }

    // Returns the faults of a chapter in two columns, with their counts: "cut lines 2, unseen 1".
    std::string faults(const std::string& body, const std::string& styles = {})
    {
        loadDocument(body, "<style>" + styles + "</style>");
        layOut(2);
        std::istringstream lines(evaluate(pageFaultsScript()));
        std::string line;
        std::getline(lines, line);
        std::string found;
        while (std::getline(lines, line)) {
            std::istringstream fields(line);
            std::string kind;
            long count = 0;
            std::getline(fields, kind, '\t');
            fields >> count;
            if (count)
                found += (found.empty() ? "" : ", ") + kind + " " + std::to_string(count);
        }
        return found;
    }
    static constexpr auto fillsColumn = "<div style='height:500px'></div>";
    static constexpr auto newColumn = "<div style='-webkit-column-break-before:always'></div>";
};

}

TEST_F(PageFaultsTest, PlainTextHasNone)
{
    show(PageKind::Columns);
    EXPECT_EQ(faults(paragraphs(20) + newColumn + paragraphs(20), "body{column-fill:auto}"), "");
}

TEST_F(PageFaultsTest, ALineThatIsNotWholeInItsColumnIsCut)
{
    EXPECT_EQ(faults("<p style='position:absolute;top:525px;margin:0;font:60px/60px serif'>Low</p>"), "cut lines 1");
}

TEST_F(PageFaultsTest, ALineThatSticksOutOfItsColumnIsCut)
{
    EXPECT_EQ(faults("<p style='white-space:nowrap'>" + std::string(60, 'm') + "</p>"), "cut lines 1");
}

TEST_F(PageFaultsTest, RoomAroundTheGlyphsMayStickOut)
{
    EXPECT_EQ(faults("<p style='margin:0;font-size:30px;line-height:26px'>moon</p>"), "");
}

TEST_F(PageFaultsTest, APictureAcrossTwoColumnsIsCut)
{
    EXPECT_EQ(faults(std::string(fillsColumn) + "<svg xmlns='http://www.w3.org/2000/svg' width='100' height='100'/>",
                  "body{column-fill:auto} svg{display:block;margin-left:-1px;width:400px}"),
        "cut boxes 1");
}

TEST_F(PageFaultsTest, AnEquationThatSticksOutIsCut)
{
    EXPECT_EQ(faults("<math xmlns='http://www.w3.org/1998/Math/MathML'><mi>" + std::string(90, 'm') + "</mi></math>"),
        "cut boxes 1");
}

TEST_F(PageFaultsTest, TextThatNoPageShowsIsUnseen)
{
    EXPECT_EQ(faults("<p style='position:absolute;top:700px'>Below</p>").find("unseen 1") != std::string::npos, true);
}

TEST_F(PageFaultsTest, TextThatTheBookPutsFarAwayIsMeantToBe)
{
    EXPECT_EQ(faults("<p style='position:absolute;left:-9999px'>Away</p><p style='text-indent:-9999px'>Away</p>"), "");
}

TEST_F(PageFaultsTest, APageWithNothingBetweenTwoIsBlank)
{
    show(PageKind::Columns);
    EXPECT_EQ(faults(std::string("<p>First</p>") + newColumn + "<p><br/></p>" + newColumn + "<p><br/></p>" + newColumn
                      + "<p><br/></p>" + newColumn + "<p>Fifth</p>" + newColumn + "<p>Sixth</p>",
                  "body{column-fill:auto}"),
        "blank pages 1");
}

TEST_F(PageFaultsTest, ThreeLinesOfFewLettersAreANarrowRun)
{
    const std::string words = "some words in a strip that is hardly wide";
    EXPECT_EQ(faults("<p style='width:60px'>" + words + "</p>"), "narrow runs 1");
    EXPECT_EQ(faults("<p>some<br/>words<br/>in a<br/>poem</p>"), "");
}

TEST_F(PageFaultsTest, MoreThanNinetyLettersAreALongLine)
{
    EXPECT_EQ(faults("<p style='font-size:6px'>" + std::string(40, 'i') + " " + std::string(70, 'i') + "</p>"),
        "long lines 1");
}

TEST_F(PageFaultsTest, AWordThatGoesOnInTheNextLineIsBroken)
{
    const std::string word = std::string(60, 'm');
    EXPECT_EQ(faults("<p style='overflow-wrap:anywhere'>" + word + "</p>"), "broken words 1");
    EXPECT_EQ(faults("<p style='width:160px;overflow-wrap:anywhere'>" + std::string(6, 'm') + " mmm mmm</p>"), "");
    EXPECT_EQ(
        faults("<p style='word-break:break-word' lang='ja'>"
            + std::string("日本語の長い文章").append("日本語の長い文章日本語の長い文章日本語の長い文章") + "</p>"),
        "");
}

TEST_F(PageFaultsTest, WhatScrollsWithinItselfIsNotCut)
{
    EXPECT_EQ(faults("<div style='overflow:auto;white-space:nowrap'>" + std::string(60, 'm') + "</div>"), "");
}

// Checks every page of a book.
class PagesOfAnyBook : public testing::TestWithParam<std::string> {
protected:
    static bool isMade() { return GetParam().find('/') == std::string::npos; }
    // Returns whether the book, not the reader, causes this kind of fault. Long lines and broken words are never faults
    // of the reader. Narrow runs in given books may be caused by large letters or titles.
    static bool isExplained(const std::string& kind)
    {
        return kind == "long lines" || kind == "broken words" || (!isMade() && kind == "narrow runs");
    }
    // Returns the other faults: "cut lines 2 (place of the first)".
    static std::string faults(const CheckedPages& checked)
    {
        std::string found;
        for (const auto& [kind, fault] : checked.faults) {
            if (fault.count && !isExplained(kind))
                found += kind + " " + std::to_string(fault.count) + " (" + fault.examples.front() + ") ";
        }
        return found;
    }
};

TEST_P(PagesOfAnyBook, AreWhole)
{
    TemporaryFolder folder;
    const auto archive = isMade() ? writeMadeBook(GetParam(), folder.path()) : GetParam();
    const auto checked = PageCheck().check(archive, pageSettings({ { 900, 600 } }, { 1.1 }, { 1, 2, 3 }));
    ASSERT_TRUE(checked || !isMade());
    if (checked) {
        EXPECT_EQ(faults(*checked), "");
    }
}

std::string nameOfBook(const testing::TestParamInfo<std::string>& info)
{
    return readingTestName(info.param);
}

INSTANTIATE_TEST_SUITE_P(Made, PagesOfAnyBook, testing::ValuesIn(madeBookNames()), nameOfBook);
INSTANTIATE_TEST_SUITE_P(Corpus, PagesOfAnyBook, testing::ValuesIn(corpusBooks()), nameOfBook);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(PagesOfAnyBook);

}
