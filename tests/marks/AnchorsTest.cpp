#include "marks/Anchors.hpp"

#include "files/Files.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

constexpr const char* first = "It was the best of times, it was the worst of times, it was the age of wisdom";
constexpr const char* second
    = "There were a king with a large jaw and a queen with a plain face, on the throne of England";

struct Anchors : testing::Test {
    Anchors()
    {
        documents.folder = folder.path();
        documents.packageFolder = folder.path("OEBPS");
        createFolder(folder.path("OEBPS/Text"));
    }

    std::size_t add(const std::string& body)
    {
        documents.paths.push_back(folder.path("OEBPS/Text/one " + std::to_string(documents.paths.size()) + ".xhtml"));
        write(documents.paths.size() - 1, body);
        return documents.paths.size() - 1;
    }
    void write(std::size_t chapter, const std::string& body)
    {
        writeFile(documents.paths[chapter], "<html><body>" + body + "</body></html>");
    }
    // Returns a mark for a text in the document's current content.
    Mark markOf(std::size_t chapter, const std::string& text)
    {
        std::uint32_t blanks = 0;
        for (const char c : text)
            blanks += c == ' ';
        Mark mark;
        mark.text = markedTextAt(documents, { chapter, 0, static_cast<std::uint32_t>(text.size()) - blanks, text });
        return mark;
    }
    std::optional<MarkAnchor> find(const Mark& mark) { return findMarks({ mark }, documents)[0]; }
    std::string foundText(const Mark& mark)
    {
        const auto found = find(mark);
        return found ? found->text : "none";
    }

    const test::TemporaryFolder folder;
    MarkedDocuments documents;
};

}

TEST_F(Anchors, StoreTheTextAndWhatStandsAroundIt)
{
    add(std::string("<p>") + first + "</p><p>" + second + "</p>");
    const auto text = markOf(0, "age of wisdom").text;
    EXPECT_EQ(text.source, "Text/one%200.xhtml");
    EXPECT_EQ(text.exact, "age of wisdom");
    EXPECT_EQ(text.before, " the worst of times, it was the ");
    EXPECT_EQ(text.after, " There were a king with a large ");
    EXPECT_EQ(text.start, 64u);
    EXPECT_EQ(text.end, 77u);
}

TEST_F(Anchors, CountCharactersBeyondTheFirstPlaneOnce)
{
    add("<p>😀😀 a 😀word😀</p>");
    const auto mark = markOf(0, "word");
    EXPECT_EQ(mark.text.start, 6u);
    EXPECT_EQ(mark.text.before, "😀😀 a 😀");
    EXPECT_EQ(find(mark)->start, 7u);
    EXPECT_EQ(find(mark)->end, 11u);
}

TEST_F(Anchors, AreAtTheStoredPlace)
{
    add(std::string("<p>") + first + "</p>");
    const auto found = find(markOf(0, "it was the age"));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->text, "it was the age");
    EXPECT_EQ(found->chapter, 0u);
}

TEST_F(Anchors, KeepTheirPlaceAmongTheSameWords)
{
    std::string words;
    for (int i = 0; i < 50; ++i)
        words += "again and again ";
    add("<p>" + words + "</p>");
    Mark mark;
    mark.text = markedTextAt(documents, { 0, 130, 135, "again" });
    EXPECT_EQ(find(mark)->start, 130u);
}

TEST_F(Anchors, FollowTextThatHasMovedWithinItsDocument)
{
    add(std::string("<p>") + first + "</p>");
    const auto mark = markOf(0, "best");
    write(0,
        "<h1>A preface that the newer edition has</h1><p>The best preface of all</p><p>" + std::string(first) + "</p>");
    const auto found = find(mark);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->text, "best");
    EXPECT_GT(found->start, 50u);
}

TEST_F(Anchors, FollowTextThatHasMovedToAnotherDocument)
{
    add(std::string("<p>") + first + "</p>");
    add("<p>else</p>");
    const auto mark = markOf(0, "the age of wisdom");
    write(0, "<p>nothing</p>");
    write(1, std::string("<p>new words</p><p>") + first + "</p>");
    const auto found = find(mark);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->chapter, 1u);
    EXPECT_EQ(found->text, "the age of wisdom");
}

TEST_F(Anchors, FollowADocumentOfAnotherName)
{
    add(std::string("<p>") + first + "</p>");
    auto mark = markOf(0, "the age of wisdom");
    mark.text.source = "Text/of-the-older-edition.xhtml";
    EXPECT_EQ(foundText(mark), "the age of wisdom");
}

TEST_F(Anchors, FindTheMostSimilarText)
{
    add(std::string("<p>") + second + "</p>");
    const auto mark = markOf(0, "a queen with a plain face");
    write(0, "<p>Before it. There were a king with a large jaw and a queene with the plain face, on the throne.</p>");
    EXPECT_EQ(foundText(mark), "a queene with the plain face");
}

TEST_F(Anchors, FindALongTextByItsBeginningAndItsEnd)
{
    std::string words;
    for (int i = 0; i < 60; ++i)
        words += "word" + std::to_string(i) + " ";
    add("<p>Start " + words + "end</p>");
    const auto mark = markOf(0, words.substr(0, words.size() - 1));
    auto changed = words;
    changed.replace(changed.find("word30"), 6, "something else in the middle");
    write(0, "<p>moved Start " + changed + "end</p>");
    EXPECT_EQ(foundText(mark), changed.substr(0, changed.size() - 1));
}

TEST_F(Anchors, FindAnotherTextBetweenTheSameSurroundings)
{
    add(std::string("<p>") + first + "</p>");
    const auto mark = markOf(0, "worst");
    std::string changed = first;
    changed.replace(changed.find("worst"), 5, "poorest");
    write(0, "<p>" + changed + "</p>");
    EXPECT_EQ(foundText(mark), "poorest");
}

TEST_F(Anchors, AreMissingWhereNothingIsSimilar)
{
    add(std::string("<p>") + first + "</p>");
    const auto mark = markOf(0, "the age of wisdom");
    write(0, std::string("<p>") + second + "</p>");
    EXPECT_FALSE(find(mark));
}

TEST_F(Anchors, TakeNoOtherPlaceOfAShortWord)
{
    add("<p>one word here</p>");
    const auto mark = markOf(0, "word");
    write(0, std::string("<p>another text in which a word is said by chance, and ") + second + "</p>");
    EXPECT_FALSE(find(mark));
}

TEST_F(Anchors, OfABookmarkAreBetweenWhatStoodAroundIt)
{
    add(std::string("<p>") + first + "</p>");
    Mark mark;
    mark.isBookmark = true;
    mark.text = markedTextAt(documents, { 0, 20, 20, "" });
    EXPECT_EQ(mark.text.exact, "");
    EXPECT_EQ(mark.text.after, "it was the worst of times, it wa");
    EXPECT_EQ(find(mark)->start, 20u);
    write(0, std::string("<p>0123456789</p><p>") + first + "</p>");
    EXPECT_EQ(find(mark)->start, 30u);
    EXPECT_EQ(find(mark)->end, 30u);
}

TEST_F(Anchors, OfABookmarkAtTheStartOrTheEndAreFound)
{
    add(std::string("<p>") + first + "</p>");
    for (const std::uint32_t place : { 0u, 60u }) {
        Mark mark;
        mark.isBookmark = true;
        mark.text = markedTextAt(documents, { 0, place, place, "" });
        EXPECT_EQ(find(mark)->start, place);
    }
}

TEST_F(Anchors, OfOtherProgramsMayHaveOnlyAPosition)
{
    add(std::string("<p>") + first + "</p><p id=\"p2\">" + second + "</p>");
    Mark mark;
    mark.text.source = "Text/one%200.xhtml";
    mark.text.start = 7;
    mark.text.end = 15;
    EXPECT_EQ(foundText(mark), "the best");
    mark.text.element = "p2";
    EXPECT_EQ(foundText(mark), "ere a ki");
    mark.text.element = "p3";
    EXPECT_FALSE(find(mark));
    mark.text = { "Text/one%200.xhtml", "", "", "", std::size_t(-1), std::size_t(-1), "" };
    EXPECT_FALSE(find(mark));
}

TEST_F(Anchors, LeadToNoFileOutsideTheBook)
{
    add("<p>x</p>");
    writeFile(folder.path("../outside.xhtml"), "<p>secret</p>");
    Mark mark;
    for (const char* source :
        { "../../outside.xhtml", "/etc/passwd", "file:///etc/passwd", "https://example.org/", "", "%00" }) {
        mark.text = { source, "", "", "", 0, 4, "" };
        EXPECT_FALSE(find(mark)) << source;
    }
}

TEST_F(Anchors, OfHostileTextsAreGivenUpInBoundedWork)
{
    add("<p>" + std::string(2'000'000, 'a') + "</p>");
    std::vector<Mark> marks(5'000);
    for (auto& mark : marks)
        mark.text = { "Text/one%200.xhtml", std::string(1'000, 'a') + "b", std::string(32, 'a'), "aaaa", 5, 9, "" };
    const auto found = findMarks(marks, documents);
    EXPECT_EQ(found.size(), marks.size());
}

}
