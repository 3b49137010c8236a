#include "base/Numbers.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/app/Program.hpp"

#include <glib.h>

#include <algorithm>
#include <gtest/gtest.h>

namespace pagora {

using Names = std::vector<std::string>;

namespace {

using ThreadedProgram = test::ProgramOn<GLibRunLoop>;

// Returns whether the text shows that an import of six books has finished the first one. Numbers may be skipped, so a
// test cannot wait for a certain one.
bool isUnderWay(const std::string& text)
{
    return text.ends_with(" of 6") && text != "1 of 6";
}

template <typename Condition>
void runUntil(Condition condition)
{
    while (!condition())
        g_main_context_iteration(nullptr, TRUE);
}

void launch(ThreadedProgram& program)
{
    program.beginLaunch();
    runUntil([&program] { return !program.controller->state().launch._initProcessing(); });
}

// Ends the program as the desktop does.
void quit(ThreadedProgram& program)
{
    program.controller->cancelProcess();
    program.controller->finishReading();
    program.controller->applicationWillTerminate();
    program.runLoop.finishBackgroundWork();
    program.defaults.synchronize();
}

std::size_t shownBooks(const ThreadedProgram& program)
{
    return program.window.shown->books.content().size();
}

Names downloads(const ThreadedProgram& program, const std::string& prefix, int count)
{
    Names files;
    for (int i = 0; i < count; ++i)
        files.push_back(program.download(
            prefix + std::to_string(i) + ".epub", test::EpubBuilder().identifier(prefix + std::to_string(i))));
    return files;
}

Names sorted(Names names)
{
    std::sort(names.begin(), names.end());
    return names;
}

Names archivesOf(const ThreadedProgram& program)
{
    return sorted(folderEntries(program.inLibrary("")).value_or(Names {}));
}

}

TEST(Threads, AResetDuringAnImportHasEveryBookOfBothAtItsStart)
{
    ThreadedProgram program;
    launch(program);
    program.drop(downloads(program, "Land", 2));
    runUntil([&program] { return shownBooks(program) == 2; });
    bool isReset = false;
    program.window.procTextFake.whenSet = [&](const std::string& text) {
        if (isUnderWay(text) && !std::exchange(isReset, true))
            program.controller->resetAppSettings();
    };
    program.drop(downloads(program, "Sea", 6));
    runUntil([&] { return isReset && !program.controller->state().launch.isResetting(); });
    EXPECT_EQ(sorted(program.titles()), (Names { "Land0", "Land1", "Sea0", "Sea1", "Sea2", "Sea3", "Sea4", "Sea5" }));
    EXPECT_EQ(program.storedCount(), 8u);
    EXPECT_EQ(archivesOf(program).size(), 8u);
    EXPECT_EQ(shownBooks(program), 8u);
    program.window.procTextFake.whenSet = nullptr;
    quit(program);
}

TEST(Threads, ADropDuringAResetComesAfterIt)
{
    ThreadedProgram program;
    launch(program);
    program.drop(downloads(program, "Sea", 3));
    runUntil([&program] { return shownBooks(program) == 3; });
    program.controller->resetAppSettings();
    program.drop(downloads(program, "Land", 2));
    runUntil([&program] { return shownBooks(program) == 5; });
    EXPECT_EQ(sorted(program.titles()), (Names { "Land0", "Land1", "Sea0", "Sea1", "Sea2" }));
    EXPECT_EQ(program.titles().back(), "Land1");
    quit(program);
}

TEST(Threads, ClosingWhileTheBookIsUnpackedLeavesItsPlaceAndItOpensAgain)
{
    ThreadedProgram program;
    launch(program);
    program.drop(downloads(program, "Sea", 1));
    runUntil([&program] { return shownBooks(program) == 1; });
    for (int i = 0; i < 5; ++i) {
        program.controller->sendDoubleClick(program.book(0));
        program.closeReader();
        EXPECT_FALSE(program.isReading());
        EXPECT_TRUE(program.window.mainWindowFake.visible);
    }
    EXPECT_EQ(integerFrom(program.stored(0).find("LastInd")), 0);
    program.controller->sendDoubleClick(program.book(0));
    runUntil([&program] { return !program.reader().webView.loads.empty(); });
    EXPECT_TRUE(fileExists(program.reader().webView.loads.back().path()));
    quit(program);
}

TEST(Threads, QuittingDuringAnImportWhileABookIsReadKeepsBooksAndPlace)
{
    test::TemporaryFolder home;
    Names titles;
    {
        ThreadedProgram program(home.path());
        launch(program);
        program.drop(downloads(program, "Sea", 1));
        runUntil([&program] { return shownBooks(program) == 1; });
        program.controller->sendDoubleClick(program.book(0));
        runUntil([&program] { return !program.reader().webView.loads.empty(); });
        program.reader().webView.finishDocument();
        program.epubReader().setActiveSplitIndex(2);
        bool isTime = false;
        program.window.procTextFake.whenSet
            = [&isTime](const std::string& text) { isTime = isTime || isUnderWay(text); };
        program.drop(downloads(program, "Land", 6));
        runUntil([&isTime] { return isTime; });
        program.window.procTextFake.whenSet = nullptr;
        quit(program);
        titles = program.titles();
    }
    ThreadedProgram program(home.path());
    launch(program);
    EXPECT_EQ(program.titles(), titles);
    EXPECT_GE(titles.size(), 2u);
    EXPECT_EQ(archivesOf(program).size(), titles.size());
    EXPECT_EQ(integerFrom(program.stored(0).find("LastInd")), 2);
    EXPECT_FALSE(program.window.errorWinFake.visible);
    quit(program);
}

TEST(Threads, QuittingDuringAResetIsFinishedByTheNextLaunch)
{
    test::TemporaryFolder home;
    {
        ThreadedProgram program(home.path());
        launch(program);
        program.drop(downloads(program, "Sea", 5));
        runUntil([&program] { return shownBooks(program) == 5; });
        program.controller->resetAppSettings();
        quit(program);
    }
    ThreadedProgram program(home.path());
    launch(program);
    EXPECT_EQ(sorted(program.titles()), (Names { "Sea0", "Sea1", "Sea2", "Sea3", "Sea4" }));
    EXPECT_EQ(program.storedCount(), 5u);
    quit(program);
}

// Without a session bus a second instance can start. The last flush wins, and the other books are found again in the
// folder.
TEST(Threads, TwoProgramsOnOneHomeLoseNoBook)
{
    test::TemporaryFolder home;
    {
        ThreadedProgram first(home.path());
        launch(first);
        ThreadedProgram second(home.path());
        launch(second);
        first.drop(downloads(first, "Sea", 3));
        runUntil([&] { return shownBooks(first) == 3; });
        second.drop(downloads(second, "Land", 3));
        runUntil([&] { return shownBooks(second) == 3; });
        EXPECT_EQ(sorted(first.titles()), (Names { "Sea0", "Sea1", "Sea2" }));
        EXPECT_EQ(sorted(second.titles()), (Names { "Land0", "Land1", "Land2" }));
        quit(first);
        quit(second);
    }
    ThreadedProgram program(home.path());
    EXPECT_EQ(program.defaults.openingProblem(), "");
    launch(program);
    EXPECT_EQ(sorted(program.titles()), (Names { "Land0", "Land1", "Land2", "Sea0", "Sea1", "Sea2" }));
    EXPECT_EQ(archivesOf(program).size(), 6u);
    EXPECT_FALSE(program.window.errorWinFake.visible);
    quit(program);
}

}
