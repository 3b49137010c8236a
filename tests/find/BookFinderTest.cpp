#include "find/BookFinder.hpp"

#include "files/Files.hpp"
#include "tests/support/ManualRunLoop.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

using namespace pagora;

namespace {

class BookFinderTest : public testing::Test {
protected:
    void addChapter(const std::string& body)
    {
        const auto path = folder.path("chapter" + std::to_string(paths.size()) + ".xhtml");
        writeFile(path, "<html><body>" + body + "</body></html>");
        paths.push_back(path);
    }

    void find(const std::string& pattern, WholeWords words = WholeWords::No)
    {
        if (!finder)
            finder = std::make_unique<BookFinder>(loop, paths, folder.path());
        found.clear();
        count = 0;
        timesOver = 0;
        finder->find(pattern, words, [this](const SearchProgress& progress) {
            found.insert(found.end(), progress.found.begin(), progress.found.end());
            count = progress.count;
            timesOver += progress.isOver ? 1 : 0;
        });
    }
    // Runs the search until it has ended.
    void findAll(const std::string& pattern, WholeWords words = WholeWords::No)
    {
        find(pattern, words);
        loop.runPosted();
    }

    const test::TemporaryFolder folder;
    test::ManualRunLoop loop;
    std::vector<std::string> paths;
    std::unique_ptr<BookFinder> finder;
    std::vector<FoundText> found;
    std::size_t count = 0;
    int timesOver = 0;
};

}

TEST_F(BookFinderTest, TellsEachMatchWithItsWordsInTheOrderOfTheBook)
{
    addChapter("<p>Call me Ishmael. Some years ago</p><p>x</p>");
    addChapter("<p>some more</p>");
    findAll("some");
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].chapter, 0u);
    EXPECT_EQ(found[0].before, "Call me Ishmael. ");
    EXPECT_EQ(found[0].match, "Some");
    EXPECT_EQ(found[0].after, " years ago");
    EXPECT_EQ(found[1].chapter, 1u);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(timesOver, 1);
}

TEST_F(BookFinderTest, KeepsTheWordsAroundAMatchWithinTheParagraph)
{
    addChapter("<p>before</p><p>a match</p><p>behind</p>");
    findAll("match");
    EXPECT_EQ(found.at(0).before, "a ");
    EXPECT_EQ(found.at(0).after, "");
}

TEST_F(BookFinderTest, CutsTheWordsAroundAMatchBetweenCharacters)
{
    std::string line;
    for (int i = 0; i < 200; ++i)
        line += "é";
    addChapter("<p>" + line + "x" + line + "</p>");
    findAll("x");
    EXPECT_EQ(found.at(0).before.size() % 2, 0u);
    EXPECT_EQ(found.at(0).after.size() % 2, 0u);
    EXPECT_LT(found.at(0).after.size(), 130u);
}

TEST_F(BookFinderTest, CountsMoreMatchesThanItTells)
{
    std::string many;
    for (int i = 0; i < 12'000; ++i)
        many += "a ";
    addChapter(many);
    findAll("a");
    EXPECT_EQ(found.size(), maxFoundTexts);
    EXPECT_EQ(count, 12'000u);
}

TEST_F(BookFinderTest, PassesOverDocumentsThatAreMissing)
{
    addChapter("a");
    paths.push_back(folder.path("missing.xhtml"));
    paths.push_back("/etc/passwd");
    addChapter("a");
    findAll("a");
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(timesOver, 1);
}

TEST_F(BookFinderTest, FindsNothingForABlankPattern)
{
    addChapter("a b");
    findAll(" ");
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(timesOver, 1);
}

TEST_F(BookFinderTest, TellsNothingOfASearchThatAnotherOneFollowed)
{
    addChapter("a b");
    find("a");
    findAll("b");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].match, "b");
}

TEST_F(BookFinderTest, TellsNothingOnceItsBookIsClosed)
{
    addChapter("a");
    loop.holdsBackground = true;
    find("a");
    finder = nullptr;
    loop.finishBackground();
    loop.runPosted();
    EXPECT_EQ(timesOver, 0);
}

TEST_F(BookFinderTest, EndsWhereItsBookIsRemovedMeanwhile)
{
    addChapter("a");
    loop.holdsBackground = true;
    find("a");
    removeItem(folder.path());
    loop.finishBackground();
    loop.runPosted();
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(timesOver, 1);
}

TEST_F(BookFinderTest, SearchesTextsThatItHasReadWithoutReadingThemAgain)
{
    addChapter("a");
    findAll("a");
    removeItem(paths[0]);
    findAll("a");
    EXPECT_EQ(count, 1u);
}
