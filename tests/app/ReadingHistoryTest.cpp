#include "catalogue/ReadingHistory.hpp"

#include "tests/app/Program.hpp"

#include <gtest/gtest.h>

namespace pagora {

using test::EpubBuilder;
using Names = std::vector<std::string>;

namespace {

// A library with three reflowable books and a fixed-layout book.
struct ReadingHistoryTest : testing::Test {
    ReadingHistoryTest()
    {
        program.import({ "Sea.epub", "Plan.epub", "Tale.epub" });
        program.drop({ program.download("Atlas.epub", EpubBuilder().fixedLayout(640, 480)) });
    }
    void read(std::size_t index)
    {
        program.doubleClick(index);
        program.reader().webView.finishDocument();
        program.reader().actions.changePage(1);
        program.closeReader();
    }
    // Launches the program again with the stored values.
    void restart()
    {
        program.controller = nullptr;
        program.controller = std::make_unique<MainController>(
            Platform { { program.home.path("Documents"), program.home.path("Caches"), program.home.path(),
                           "org.pagora.Test", test::Program::version },
                program.defaults, program.workspace, program.runLoop, program.window, program.readerWindows },
            [](const std::string&) { return std::string(); });
        program.launch();
    }
    Names lastRead()
    {
        Names titles;
        for (const auto& book : program.window.actions.booksRead())
            titles.push_back(book->title().value_or(""));
        return titles;
    }
    std::string toContinue()
    {
        const auto book = program.window.actions.bookToContinue();
        return book ? book->title().value_or("") : "none";
    }

    test::LaunchedProgram program;
};

}

TEST_F(ReadingHistoryTest, KnowsNoBookBeforeOneWasClosed)
{
    EXPECT_EQ(toContinue(), "none");
    EXPECT_TRUE(lastRead().empty());
    EXPECT_FALSE(program.defaults.hasKey("LastRead"));
}

TEST_F(ReadingHistoryTest, IsWrittenWhenABookIsClosedAndNotBefore)
{
    program.doubleClick(0);
    program.reader().webView.finishDocument();
    EXPECT_FALSE(program.defaults.hasKey("LastRead"));
    program.closeReader();
    EXPECT_EQ(*program.defaults.objectForKey("LastRead"), Value(Value::Array { program.inLibrary("Sea.epub") }));
}

TEST_F(ReadingHistoryTest, HasTheBookThatWasClosedLastInFront)
{
    read(0);
    read(2);
    read(0);
    EXPECT_EQ(toContinue(), "Sea");
    EXPECT_EQ(lastRead(), (Names { "Sea", "Tale" }));
}

TEST_F(ReadingHistoryTest, IsThereAfterTheNextLaunch)
{
    read(1);
    restart();
    EXPECT_EQ(toContinue(), "Plan");
}

TEST_F(ReadingHistoryTest, HasNoBookOfAFixedLayout)
{
    program.doubleClick(3);
    program.readerWindows.fixedWindows.back()->actions.closeEPUB();
    EXPECT_FALSE(program.defaults.hasKey("LastRead"));
    EXPECT_EQ(toContinue(), "none");
}

TEST_F(ReadingHistoryTest, HasNoBookThatIsNotOfTheLibrary)
{
    // A reflowable book must be imported between the fixed-layout book and the guest.
    program.import({ "Song.epub" });
    program.controller->openFiles({ program.download("Guest.epub") });
    program.closeReader();
    EXPECT_FALSE(program.defaults.hasKey("LastRead"));
    EXPECT_EQ(toContinue(), "none");
}

TEST_F(ReadingHistoryTest, SkipsBooksThatHaveLeftTheLibrary)
{
    read(0);
    read(1);
    program.catalogue().removeAt(1);
    EXPECT_EQ(toContinue(), "Sea");
    EXPECT_EQ(lastRead(), Names { "Sea" });
}

TEST_F(ReadingHistoryTest, SkipsABookThatCameUnderTheNameOfAnother)
{
    read(0);
    program.book(0)->setLastPlace(std::nullopt);
    EXPECT_EQ(toContinue(), "none");
}

TEST_F(ReadingHistoryTest, BooksWithAPlaceThatItDoesNotKnowFollow)
{
    program.book(1)->setLastIndex(1);
    read(2);
    EXPECT_EQ(toContinue(), "Tale");
    EXPECT_EQ(lastRead(), (Names { "Tale", "Plan" }));
}

TEST_F(ReadingHistoryTest, IsForgottenByAReset)
{
    read(0);
    program.controller->resetAppSettings();
    program.runLoop.runPosted();
    EXPECT_FALSE(program.defaults.hasKey("LastRead"));
    EXPECT_EQ(toContinue(), "none");
}

TEST_F(ReadingHistoryTest, IsForgottenByAnotherVersion)
{
    read(0);
    program.defaults.setObject("BundleVersion", "0.1");
    restart();
    EXPECT_FALSE(program.defaults.hasKey("LastRead"));
}

TEST_F(ReadingHistoryTest, KeepsTheBooksOfTheLastThousandClosings)
{
    ReadingHistory history(program.defaults);
    for (int i = 0; i < 1'003; ++i)
        history.add("/library/" + std::to_string(i) + ".epub");
    const auto kept = *program.defaults.objectForKey("LastRead")->array();
    EXPECT_EQ(kept.size(), 1'000U);
    EXPECT_EQ(*kept.front().string(), "/library/1002.epub");
}

TEST_F(ReadingHistoryTest, ReadsWhatIsStoredInAnotherForm)
{
    program.defaults.setObject("LastRead", Value::Array { 7, program.inLibrary("Sea.epub"), Value::Dictionary {} });
    program.book(0)->setLastIndex(1);
    EXPECT_EQ(toContinue(), "Sea");
    program.defaults.setObject("LastRead", "Sea");
    EXPECT_EQ(toContinue(), "none");
    read(1);
    EXPECT_EQ(toContinue(), "Plan");
}

TEST_F(ReadingHistoryTest, ContinuesWithTheBookAtItsPlace)
{
    read(0);
    read(1);
    program.window.actions.continueReading();
    program.reader().webView.finishDocument();
    EXPECT_EQ(program.controller->currentBook(), program.book(1));
    EXPECT_EQ(program.reader().webView.page.X, 800);
}

TEST_F(ReadingHistoryTest, ContinuesWithNothingWhereThereIsNoBook)
{
    program.window.actions.continueReading();
    EXPECT_FALSE(program.isReading());
}

}
