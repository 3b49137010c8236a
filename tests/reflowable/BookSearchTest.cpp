#include "reflowable/BookSearch.hpp"

#include "files/Files.hpp"
#include "tests/reflowable/ReaderTest.hpp"
#include "tests/support/TemporaryFolder.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class BookSearchTest : public ReaderTest {
protected:
    // Opens a book with these chapters. The contents have entries for those with a name.
    void read(const std::vector<std::string>& texts, const std::vector<std::string>& names = {})
    {
        std::vector<Url> splits;
        std::vector<ContentsEntry> contents;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const auto path = folder.path("c" + std::to_string(i) + ".xhtml");
            writeFile(path, "<body>" + texts[i] + "</body>");
            splits.push_back(Url::file(path));
            if (i < names.size() && !names[i].empty())
                contents.push_back({ names[i], splits.back(), 1 });
        }
        reader->loadSplits(splits, contents);
        page().finishDocument();
        page().scripts.clear();
        search.setBookFolder(folder.path());
    }
    void find(const std::string& pattern)
    {
        search.search(pattern, WholeWords::No);
        loop.runPosted();
    }
    FakeSearchPane& pane() { return parts->searchPane; }
    // Returns the last script that paints matches.
    std::string lastScript()
    {
        const auto& all = page().scripts;
        const auto last
            = std::find_if(all.rbegin(), all.rend(), [](const auto& each) { return each.starts_with("pagoraFind"); });
        return last == all.rend() ? "none" : *last;
    }

    const TemporaryFolder folder;
    BookSearch search { *reader, parts->searchPane, loop };
};

using Lines = std::vector<std::string>;

}

TEST_F(BookSearchTest, ListsTheMatchesByChapter)
{
    read({ "a lamp", "no", "lamp, lamp" }, { "One", "Two", "Three" });
    find("lamp");
    EXPECT_TRUE(pane().isShown);
    EXPECT_EQ(pane().lines, (Lines { "# One", "a [lamp]", "# Three", "[lamp], lamp", "lamp, [lamp]" }));
    EXPECT_EQ(pane().count, 3u);
    EXPECT_TRUE(pane().isOver);
}

TEST_F(BookSearchTest, CountsADocumentThatTheContentsDoNotNameToTheChapterBefore)
{
    read({ "lamp", "lamp", "lamp" }, { "", "Two", "" });
    find("lamp");
    EXPECT_EQ(pane().lines, (Lines { "# Beginning", "[lamp]", "# Two", "[lamp]", "[lamp]" }));
}

TEST_F(BookSearchTest, PaintsTheMatchesOfTheChapterThatIsShown)
{
    read({ "a lamp", "lamp" });
    find("lamp");
    EXPECT_EQ(lastScript(), "pagoraFind.paint([[1,5,'lamp'],],null)");
}

TEST_F(BookSearchTest, ShowsAMatchAndPaintsIt)
{
    read({ "a lamp", "lamp" });
    find("lamp");
    search.goTo(1);
    EXPECT_EQ(pane().selected, 1u);
    EXPECT_EQ(page().loads.back(), reader->bookSplits()[1]);
    page().finishDocument();
    EXPECT_EQ(lastScript(), "pagoraFind.paint([[0,4,'lamp'],],[0,4,'lamp'])");
    EXPECT_TRUE(parts->canGoBack);
}

TEST_F(BookSearchTest, StepsBeginAtTheChapterThatIsShown)
{
    read({ "lamp", "no", "lamp", "lamp" });
    find("lamp");
    reader->changeChapter(reader->bookSplits()[1]);
    page().finishDocument();
    search.goToNext();
    EXPECT_EQ(pane().selected, 1u);
    page().finishDocument();
    search.goToPrevious();
    EXPECT_EQ(pane().selected, 0u);
}

TEST_F(BookSearchTest, StepsGoRound)
{
    read({ "lamp lamp" });
    find("lamp");
    search.goToNext();
    EXPECT_EQ(pane().selected, 0u);
    search.goToPrevious();
    EXPECT_EQ(pane().selected, 1u);
    search.goToNext();
    EXPECT_EQ(pane().selected, 0u);
}

TEST_F(BookSearchTest, StepsWithoutMatchesDoNothing)
{
    read({ "lamp" });
    search.goToNext();
    find("nothing");
    search.goToPrevious();
    search.goTo(7);
    EXPECT_FALSE(pane().selected);
    EXPECT_FALSE(parts->canGoBack);
}

TEST_F(BookSearchTest, KeepsTheLastResultsUntilThereAreOthers)
{
    read({ "lamp light" });
    find("la");
    search.search("light", WholeWords::No);
    EXPECT_EQ(pane().lines, (Lines { "# Beginning", "[la]mp light" }));
    loop.runPosted();
    EXPECT_EQ(pane().lines, (Lines { "# Beginning", "lamp [light]" }));
}

TEST_F(BookSearchTest, AnEmptyFieldGivesTheContentsBack)
{
    read({ "lamp" });
    find("lamp");
    find("");
    EXPECT_FALSE(pane().isShown);
    EXPECT_EQ(lastScript(), "pagoraFind.clear()");
}

TEST_F(BookSearchTest, TheEndGivesTheContentsBackAndEmptiesTheField)
{
    read({ "lamp" });
    find("lamp");
    search.end();
    EXPECT_FALSE(pane().isShown);
    EXPECT_TRUE(pane().lines.empty());
    EXPECT_EQ(pane().timesEmptied, 1);
    EXPECT_EQ(lastScript(), "pagoraFind.clear()");
}

TEST_F(BookSearchTest, ABookThatIsNotSearchedIsNotPainted)
{
    read({ "lamp", "lamp" });
    reader->changeChapter(reader->bookSplits()[1]);
    page().finishDocument();
    for (const auto& script : page().scripts)
        EXPECT_EQ(script.find("pagoraFind"), std::string::npos) << script;
}
