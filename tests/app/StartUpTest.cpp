#include "base/Log.hpp"
#include "tests/app/Program.hpp"

#include <algorithm>
#include <gtest/gtest.h>

namespace pagora {

using test::Journal;
using test::Program;
using Names = std::vector<std::string>;

TEST(StartUp, HappensShortlyAfterTheDesktopsCall)
{
    Program program;
    program.beginLaunch();
    EXPECT_EQ(program.runLoop.delays, std::vector<double> { 0.05 });
    EXPECT_FALSE(fileExists(program.inLibrary("")));
    EXPECT_TRUE(program.controller->state().launch._PagoraLaunched());
    EXPECT_TRUE(program.controller->state().launch._initProcessing());
}

TEST(StartUp, GoesThroughItsStepsInOrder)
{
    Program program;
    program.writeBook(program.inLibrary("Sea.epub"));
    test::makeFile(program.inLibrary("Broken.epub"), "no archive");
    program.window.menu.emplace(Names { "0", "1", "2", "3", "4" });
    Journal journal;
    program.window.keepJournal(journal);
    program.defaults.setWhenChanged([&journal] { journal.push_back("defaults"); });
    program.launch();
    EXPECT_EQ(journal,
        (Journal { "activate", "indicatorWindow.center", "indicatorWindow.orderFront", "contentView.set ImageView",
            "bListControl.show", "defaults", "toolBarMenu", "defaults", "indicatorWindow.orderOut",
            "errorWin.orderFront", "defaults" }));
    program.defaults.setWhenChanged(nullptr);
}

TEST(StartUp, LoadsTheCatalogueBeforeItEmptiesTheTemporaryFolder)
{
    Program program;
    program.keepStoredValues();
    program.defaults.setObject("BookData", Value::Array { Value::Dictionary { { "Title", "Sea" } } });
    test::makeFile(program.inTemporary("left.txt"), "left");
    program.runLoop.holdsBackground = true;
    program.launch();
    EXPECT_EQ(program.titles(), Names { "Sea" });
    EXPECT_TRUE(fileExists(program.inTemporary("left.txt")));
    EXPECT_FALSE(program.defaults.hasKey("DragDropMode"));
    program.runLoop.finishBackground();
    EXPECT_FALSE(fileExists(program.inTemporary("left.txt")));
    EXPECT_TRUE(program.defaults.hasKey("DragDropMode"));
}

TEST(StartUp, ClearsTheLibraryFolderOfUnfinishedCopies)
{
    Program program;
    test::makeFile(program.inLibrary(".Sea.epub.part-123"), "half");
    program.writeBook(program.inLibrary("Land.epub"));
    program.launch();
    EXPECT_EQ(folderEntries(program.inLibrary("")), Names { "Land.epub" });
}

TEST(StartUp, LaysOutTheFolders)
{
    Program program;
    program.launch();
    const auto& folders = program.controller->folders();
    EXPECT_EQ(folders.libPath, program.home.path("Documents/ePubLibrary"));
    EXPECT_EQ(folders.tempPath, program.home.path("Caches/org.pagora.Test"));
    EXPECT_EQ(folders._booksPath, folders.tempPath + "/_books");
    EXPECT_EQ(folders._dataPath, folders.tempPath + "/_data");
    EXPECT_TRUE(isFolder(folders.libPath));
    EXPECT_EQ(folderEntries(folders.tempPath), Names {});
}

TEST(StartUp, WithoutBooksShowsNoProgress)
{
    Program program;
    Journal journal;
    program.window.indicatorWindowFake.keepJournal(journal, "indicatorWindow");
    program.launch();
    EXPECT_EQ(journal, Journal { "indicatorWindow.orderOut" });
}

TEST(StartUp, TheFirstLaunchRemovesEveryKeyAndImportsTheFolder)
{
    Program program;
    program.defaults.setObject("Stray", 1);
    program.defaults.setObject("DragDropMode", "Move");
    program.writeBook(program.inLibrary("Sea.epub"));
    program.writeBook(program.inLibrary("Land.epub"));
    program.launch();
    EXPECT_FALSE(program.defaults.hasKey("Stray"));
    EXPECT_TRUE(program.defaults.boolForKey("Default"));
    EXPECT_EQ(program.defaults.stringForKey("DragDropMode"), "Copy");
    EXPECT_EQ(program.defaults.stringForKey("BundleVersion"), Program::version);
    EXPECT_TRUE(program.defaults.boolForKey("PreviousSuccessfulLaunch"));
    EXPECT_EQ(program.catalogue().count(), 2u);
    EXPECT_EQ(program.storedCount(), 2u);
    EXPECT_EQ(program.window.shown->books.content().size(), 2u);
}

TEST(StartUp, AnImportThatIsStoppedShowsWhatCameInAndTheNextLaunchTakesTheRest)
{
    Program program;
    for (const char* name : { "Sea.epub", "Land.epub", "Plan.epub" })
        program.writeBook(program.inLibrary(name));
    program.window.procTextFake.whenSet = [&program](const std::string& text) {
        if (text == "2 of 3")
            program.window.actions.cancelProcess();
    };
    program.launch();
    EXPECT_EQ(program.catalogue().count(), 2u);
    EXPECT_EQ(program.storedCount(), 2u);
    EXPECT_EQ(program.window.shown->books.content().size(), 2u);
    EXPECT_FALSE(program.window.indicatorWindowFake.visible);
    program.window.procTextFake.whenSet = nullptr;
    program.launch();
    auto titles = program.titles();
    std::sort(titles.begin(), titles.end());
    EXPECT_EQ(titles, (Names { "Land", "Plan", "Sea" }));
}

TEST(StartUp, AfterALaunchThatFailedEverythingIsRebuilt)
{
    Program program;
    program.keepStoredValues();
    program.defaults.setObject("PreviousSuccessfulLaunch", false);
    program.defaults.setObject("FontName", "Palatino");
    program.defaults.setObject("BookData", Value::Array { Value::Dictionary { { "Title", "Old" } } });
    program.writeBook(program.inLibrary("Sea.epub"));
    program.launch();
    EXPECT_EQ(program.titles(), Names { "Sea" });
    EXPECT_FALSE(program.defaults.hasKey("FontName"));
    EXPECT_TRUE(program.defaults.boolForKey("PreviousSuccessfulLaunch"));
}

TEST(StartUp, AnotherVersionRebuildsTheCatalogueFromTheFolder)
{
    Program program;
    program.defaults.setObject("BundleVersion", "8");
    program.defaults.setObject("PreviousSuccessfulLaunch", true);
    program.defaults.setObject("BookData",
        Value::Array { Value::Dictionary { { "ePubPath", program.inLibrary("Sea.epub") }, { "LastInd", 3 } } });
    program.writeBook(program.inLibrary("Sea.epub"));
    program.launch();
    EXPECT_EQ(program.titles(), Names { "Sea" });
    EXPECT_EQ(program.book(0)->lastIndex(), 0u);
}

TEST(StartUp, WithoutALaunchFlagTheSameVersionKeepsEverything)
{
    Program program;
    program.keepStoredValues();
    program.defaults.setObject("Stray", 1);
    program.launch();
    EXPECT_TRUE(program.defaults.hasKey("Stray"));
}

TEST(StartUp, CapitalExtensionsAndSubfoldersAreNotPickedUp)
{
    Program program;
    program.writeBook(program.inLibrary("Sea.EPUB"));
    program.writeBook(program.inLibrary("deeper/Land.epub"));
    program.launch();
    EXPECT_EQ(program.catalogue().count(), 0u);
    EXPECT_FALSE(program.window.errorWinFake.visible);
}

TEST(StartUp, ABookWhoseArchiveHasGoneStays)
{
    Program program;
    program.keepStoredValues();
    program.defaults.setObject("BookData",
        Value::Array { Value::Dictionary { { "Title", "Gone" }, { "ePubPath", program.inLibrary("Gone.epub") } } });
    program.launch();
    EXPECT_EQ(program.titles(), Names { "Gone" });
}

TEST(StartUp, BooksThatTheCatalogueKnowsAreNotImportedAgain)
{
    Program program;
    program.keepStoredValues();
    program.defaults.setObject("BookData",
        Value::Array { Value::Dictionary { { "Title", "Known" }, { "ePubPath", program.inLibrary("Sea.epub") } } });
    program.writeBook(program.inLibrary("Sea.epub"));
    program.launch();
    EXPECT_EQ(program.titles(), Names { "Known" });
}

TEST(StartUp, RejectedFilesAreShownTogetherAndForgotten)
{
    Program program;
    test::makeFile(program.inLibrary("One.epub"), "no archive");
    test::makeFile(program.inLibrary("Two.epub"), "no archive");
    program.launch();
    auto lines = split(program.window.errorListFake.text, '\n');
    std::sort(lines.begin(), lines.end());
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(lines[0].starts_with("One.epub --> "));
    EXPECT_TRUE(lines[1].starts_with("Two.epub --> "));
    EXPECT_TRUE(program.window.errorWinFake.visible);
    EXPECT_TRUE(program.controller->faultyBooks().empty());
}

TEST(StartUp, ALineFromBeforeTheLaunchIsShownAfterIt)
{
    Program program;
    program.controller->addFaultyBook("The stored values were damaged.");
    program.launch();
    EXPECT_EQ(program.window.errorListFake.text, "The stored values were damaged.");
    EXPECT_TRUE(program.window.errorWinFake.visible);
}

TEST(StartUp, ALibraryFolderThatCannotBeMadeIsLogged)
{
    Program program;
    test::makeFile(program.home.path("Documents"), "a file in the way");
    Names lines;
    {
        const LogCapture capture([&lines](const std::string& line) { lines.push_back(line); });
        program.launch();
    }
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].starts_with("ERROR: "));
    EXPECT_FALSE(program.controller->state().launch._initProcessing());
}

TEST(StartUp, LoadsTheReaderSettings)
{
    Program program;
    program.keepStoredValues();
    program.defaults.setObject("FontName", "Palatino");
    program.defaults.setObject("Columns", 3);
    program.launch();
    const auto& settings = program.controller->state().settings;
    EXPECT_EQ(settings.curFontName, "Palatino");
    EXPECT_EQ(settings.curFontSize, -1);
    EXPECT_EQ(settings.curNumOfColumns, 3);
    EXPECT_EQ(settings.curColorOption, -1);
}

TEST(StartUp, AlwaysBeginsWithTheGrid)
{
    Program program;
    program.launch();
    EXPECT_EQ(program.window.shown->layout, "ImageView");
    EXPECT_TRUE(program.controller->views().imageMode());
    EXPECT_FALSE(program.controller->fullScreenMode());
}

TEST(StartUp, TheToolbarMenuKeepsThreeItemsInTwoGroups)
{
    Program program;
    program.window.menu.emplace(Names { "0", "1", "2", "3", "4", "5" });
    program.launch();
    EXPECT_EQ(program.window.menu->shownTitles(), (Names { "0", "1", test::FakeMenu::separator, "3" }));
    EXPECT_EQ(program.window.menu->numberOfItems(), 7);
}

TEST(Termination, ClosingTheLibraryWindowEndsTheProgram)
{
    Program program;
    EXPECT_TRUE(program.window.actions.windowShouldClose());
    EXPECT_EQ(program.window.timesTerminated, 1);
    EXPECT_TRUE(program.controller->applicationShouldTerminateAfterLastWindowClosed());
}

TEST(Termination, RemovesTheEventMonitor)
{
    Program program;
    program.launch();
    EXPECT_TRUE(program.window.monitor);
    program.controller->applicationWillTerminate();
    EXPECT_FALSE(program.window.monitor);
}

TEST(Termination, NoFurtherBookIsImported)
{
    Program program;
    program.launch();
    program.controller->applicationWillTerminate();
    program.drop({ program.download("Sea.epub") });
    EXPECT_EQ(program.catalogue().count(), 0u);
}

TEST(MainController, AnswersThatItOpensAFileAndDoesNothing)
{
    Program program;
    program.launch();
    EXPECT_TRUE(program.controller->openFile(program.download("Sea.epub")));
    EXPECT_EQ(program.catalogue().count(), 0u);
    EXPECT_FALSE(program.isReading());
}

TEST(MainController, TheEndOfAProgressHidesItsWindow)
{
    Program program;
    program.window.indicatorWindowFake.visible = true;
    program.controller->timerFinish();
    EXPECT_FALSE(program.window.indicatorWindowFake.visible);
}

}
