#include "tests/app/ThreeBooks.hpp"

#include <algorithm>

namespace pagora {

namespace {

struct Maintenance : ThreeBooks {
    void reset()
    {
        program.controller->resetAppSettings();
        program.runLoop.runPosted();
    }
    Names sortedTitles()
    {
        auto titles = program.titles();
        std::sort(titles.begin(), titles.end());
        return titles;
    }
    std::string elsewhere(const std::string& name) { return program.home.path("Elsewhere/" + name); }
};

}

TEST_F(Maintenance, ResetBuildsTheCatalogueAnewWithEveryBookAtItsStart)
{
    program.book(1)->setLastIndex(3);
    const auto before = program.book(0);
    reset();
    EXPECT_EQ(sortedTitles(), (Names { "Plan", "Sea", "Tale" }));
    EXPECT_NE(program.book(0), before);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(program.book(i)->lastIndex(), 0U);
        EXPECT_EQ(program.book(i)->lastCap(), 0U);
    }
    EXPECT_EQ(program.storedCount(), 3U);
}

TEST_F(Maintenance, ResetShowsAnEmptyLibraryAndItsProgressMeanwhile)
{
    program.runLoop.holdsBackground = true;
    program.controller->resetAppSettings();
    EXPECT_TRUE(program.window.shown->books.content().empty());
    EXPECT_EQ(program.window.processLabelFake.text, "Resetting ePub data!");
    EXPECT_TRUE(program.window.indicatorWindowFake.visible);
    program.runLoop.finishBackground();
    EXPECT_FALSE(program.window.indicatorWindowFake.visible);
    EXPECT_TRUE(program.window.mainWindowFake.key);
    EXPECT_EQ(program.window.shown->books.content().size(), 3U);
}

TEST_F(Maintenance, AResetThatIsStoppedKeepsWhatCameInAndTheNextLaunchTakesTheRest)
{
    program.window.procTextFake.whenSet = [this](const std::string& text) {
        if (text == "1 of 3")
            program.window.actions.cancelProcess();
    };
    reset();
    EXPECT_EQ(program.catalogue().count(), 1U);
    EXPECT_EQ(program.window.shown->books.content().size(), 1U);
    EXPECT_EQ(program.storedCount(), 1U);
    EXPECT_FALSE(program.window.indicatorWindowFake.visible);
    program.window.procTextFake.whenSet = nullptr;
    program.controller->applicationDidFinishLaunching();
    program.runLoop.runTimers();
    EXPECT_EQ(sortedTitles(), (Names { "Plan", "Sea", "Tale" }));
}

TEST_F(Maintenance, ResetRestoresTheSettings)
{
    program.defaults.setObject("DragDropMode", "Move");
    program.defaults.setObject("Default", false);
    program.defaults.setObject("FontName", "Serif");
    reset();
    EXPECT_EQ(program.defaults.stringForKey("DragDropMode"), "Copy");
    EXPECT_TRUE(program.defaults.boolForKey("Default"));
    EXPECT_EQ(program.defaults.stringForKey("BundleVersion"), test::Program::version);
    EXPECT_FALSE(program.defaults.hasKey("FontName"));
    EXPECT_FALSE(program.defaults.hasKey("PreviousSuccessfulLaunch"));
}

TEST_F(Maintenance, ResetWithAnEmptyLibraryFolderKeepsTheBooksAndResetsTheSettings)
{
    for (const char* name : { "Sea.epub", "Plan.epub", "Tale.epub" })
        removeItem(program.inLibrary(name));
    program.defaults.setObject("DragDropMode", "Move");
    const auto stored = program.defaults.objectForKey("BookData");
    const auto list = program.catalogue().bookList();
    reset();
    EXPECT_EQ(*program.catalogue().bookList(), *list);
    EXPECT_EQ(program.defaults.objectForKey("BookData"), stored);
    EXPECT_EQ(program.defaults.stringForKey("DragDropMode"), "Copy");
    EXPECT_FALSE(program.window.indicatorWindowFake.visible);
}

TEST_F(Maintenance, ResetKeepsTheReaderSettingsOfThisRun)
{
    program.controller->state().settings.curFontName = "Serif";
    reset();
    EXPECT_EQ(program.controller->state().settings.curFontName, "Serif");
}

TEST_F(Maintenance, ResetFromTheMenuAsksFirst)
{
    program.defaults.setObject("DragDropMode", "Move");
    program.window.actions.resetAppSettings();
    EXPECT_EQ(program.window.questions.back().firstButton, "Cancel");
    EXPECT_EQ(program.window.questions.back().secondButton, "Reset");
    program.window.questions.back().answered(cancel);
    EXPECT_EQ(program.defaults.stringForKey("DragDropMode"), "Move");
    program.window.questions.back().answered(goForward);
    EXPECT_EQ(program.defaults.stringForKey("DragDropMode"), "Copy");
}

TEST_F(Maintenance, FilesDroppedDuringAResetAreImportedAfterIt)
{
    program.runLoop.holdsBackground = true;
    program.controller->resetAppSettings();
    program.drop({ program.download("Song.epub") });
    program.runLoop.holdsBackground = false;
    program.runLoop.finishBackground();
    EXPECT_EQ(program.catalogue().count(), 4U);
    EXPECT_TRUE(fileExists(program.inLibrary("Song.epub")));
}

TEST_F(Maintenance, ResetSaysWhichArchivesAreRejected)
{
    test::makeFile(program.inLibrary("Sea.epub"), "no archive");
    reset();
    EXPECT_EQ(sortedTitles(), (Names { "Plan", "Tale" }));
    EXPECT_NE(program.window.errorListFake.text.find("Sea.epub --> "), std::string::npos);
}

TEST_F(Maintenance, EmptyModeOnlyImportsWhatIsInTheLibraryFolder)
{
    program.writeBook(program.inLibrary("Song.epub"));
    program.writeBook(elsewhere("Tune.epub"));
    program.controller->resetEpubLibrary(program.home.path("Elsewhere"), "empty");
    EXPECT_EQ(program.titles().back(), "Song");
    EXPECT_EQ(program.catalogue().count(), 4U);
    EXPECT_TRUE(fileExists(elsewhere("Tune.epub")));
    EXPECT_FALSE(fileExists(program.inLibrary("Tune.epub")));
    EXPECT_EQ(program.window.shown->books.content().size(), 4U);
}

TEST_F(Maintenance, MoveModeLeavesNoBookInTheSourceFolder)
{
    program.writeBook(elsewhere("Tune.epub"));
    test::makeFile(elsewhere("notes.txt"), "notes");
    program.controller->resetEpubLibrary(program.home.path("Elsewhere"), "move");
    EXPECT_FALSE(fileExists(elsewhere("Tune.epub")));
    EXPECT_TRUE(fileExists(elsewhere("notes.txt")));
    EXPECT_TRUE(fileExists(program.inLibrary("Tune.epub")));
    EXPECT_EQ(program.titles().back(), "Tune");
}

TEST_F(Maintenance, MoveModeKeepsABookThatCouldNotBeCopied)
{
    program.writeBook(elsewhere("Tune.epub"));
    program.workspace.failing.insert("Tune.epub");
    program.controller->resetEpubLibrary(program.home.path("Elsewhere"), "move");
    EXPECT_TRUE(fileExists(elsewhere("Tune.epub")));
    EXPECT_EQ(program.catalogue().count(), 3U);
}

TEST_F(Maintenance, AnyOtherModeLeavesTheBooksInTheSourceFolder)
{
    program.writeBook(elsewhere("Tune.epub"));
    program.controller->resetEpubLibrary(program.home.path("Elsewhere"), "copy");
    EXPECT_TRUE(fileExists(elsewhere("Tune.epub")));
    EXPECT_TRUE(fileExists(program.inLibrary("Tune.epub")));
    EXPECT_EQ(program.titles().back(), "Tune");
}

TEST_F(Maintenance, KillingTemporaryItemsLeavesNoTemporaryFolderAndStoresTheCatalogue)
{
    program.defaults.removeObject("BookData");
    program.controller->killTempItems();
    EXPECT_FALSE(fileExists(program.inTemporary("")));
    EXPECT_EQ(program.storedCount(), 3U);
}

TEST_F(Maintenance, ABookIsUnpackedAgainAfterItsTemporaryFolderWasRemoved)
{
    program.doubleClick(0);
    program.closeReader();
    program.controller->killTempItems();
    const auto folder = *program.book(0)->bookPath();
    ASSERT_FALSE(fileExists(folder));
    program.doubleClick(0);
    EXPECT_TRUE(isFolder(folder));
}

TEST_F(Maintenance, ShowLibraryFolderRevealsIt)
{
    program.window.actions.showLibFolderInFinder();
    EXPECT_EQ(program.workspace.revealed, (Names { program.home.path("Documents/ePubLibrary") }));
}

TEST_F(Maintenance, TestActionChangesNothing)
{
    const auto stored = program.defaults.objectForKey("BookData");
    testing::internal::CaptureStderr();
    program.window.actions.testAction();
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Tester Action ******************"), std::string::npos);
    EXPECT_EQ(program.defaults.objectForKey("BookData"), stored);
}

}
