#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "tests/app/Program.hpp"

#include <gtest/gtest.h>

namespace pagora {

using test::EpubBuilder;
using test::Journal;
using Names = std::vector<std::string>;

namespace {

// A library with an open reflowable book and a fixed-layout book.
struct Closing : testing::Test {
    Closing()
    {
        program.import({ "Sea.epub" });
        program.drop({ program.download("Plan.epub", EpubBuilder().fixedLayout(640, 480)) });
        program.doubleClick(0);
        program.reader().webView.finishDocument();
    }
    LibraryState& state() { return program.controller->state(); }
    test::FakeWindow& library() { return program.window.mainWindowFake; }
    void enterFullScreen()
    {
        program.reader().window.fullScreen = true;
        program.reader().actions.windowDidEnterFullScreen();
    }
    // Reports full screen as the window manager does. The monitor has been installed by an event.
    void leaveFullScreen()
    {
        program.window.monitor({});
        program.reader().actions.windowDidExitFullScreen();
        program.runLoop.runPosted();
    }
    test::ReaderWindowParts& openFixed()
    {
        program.closeReader();
        program.doubleClick(1);
        return *program.readerWindows.fixedWindows.back();
    }
    std::int64_t storedNumber(const char* key) const { return integerFrom(program.stored(0).find(key)); }

    test::LaunchedProgram program;
};

}

TEST_F(Closing, ThePositionIsTruncatedAndStored)
{
    program.epubReader().setActiveSplitIndex(2);
    program.epubReader().setReadAmount(3.9f);
    program.closeReader();
    EXPECT_EQ(storedNumber("LastInd"), 2);
    EXPECT_EQ(storedNumber("LastCap"), 3);
    EXPECT_EQ(program.book(0)->lastIndex(), 2u);
    EXPECT_EQ(program.book(0)->lastCap(), 3u);
}

TEST_F(Closing, ThePlaceIsTheFractionAtTheMiddleOfThePage)
{
    program.reader().webView.page.S = 3200;
    program.reader().actions.changePage(1);
    ASSERT_EQ(program.reader().webView.page.X, 800);
    program.closeReader();
    EXPECT_EQ(realFrom(program.stored(0).find("LastPlace")), 0.375);
    EXPECT_NE(program.stored(0).find("LastPlace")->real(), nullptr);
    EXPECT_EQ(program.book(0)->lastPlace(), 0.375);
}

TEST_F(Closing, TheNextReadingBeginsAtThatPlace)
{
    program.reader().actions.changePage(1);
    program.closeReader();
    ASSERT_EQ(storedNumber("LastCap"), 0);
    program.doubleClick(0);
    program.reader().webView.finishDocument();
    EXPECT_EQ(program.reader().webView.page.X, 800);
}

TEST_F(Closing, AReadingThatShowedNoPageKeepsTheStoredPlace)
{
    program.reader().actions.changePage(1);
    program.closeReader();
    program.readerWindows.holdsLayout = true;
    program.doubleClick(0);
    program.closeReader();
    EXPECT_EQ(realFrom(program.stored(0).find("LastPlace")), 0.375);
    EXPECT_EQ(storedNumber("LastCap"), 0);
}

TEST_F(Closing, TheRestOfTheEntryStays)
{
    const Value before = program.stored(0);
    program.closeReader();
    const Value after = program.stored(0);
    for (const char* key :
        { "Type", "ePubPath", "Title", "Author", "ISBN", "CoverImage", "Files", "Content", "BookLoc" })
        EXPECT_EQ(*after.find(key), *before.find(key)) << key;
    EXPECT_EQ(program.storedCount(), 2u);
}

TEST_F(Closing, TheReaderSettingsAreStoredAndKept)
{
    auto& reader = program.epubReader();
    reader.setCurrentFont("Palatino");
    reader.setCurrentFontSize(1.25f);
    reader.setNumberOfColumns(3);
    reader.setCurrentColorOption(2);
    program.closeReader();
    EXPECT_EQ(program.defaults.stringForKey("FontName"), "Palatino");
    EXPECT_EQ(program.defaults.realForKey("FontSize"), 1.25);
    EXPECT_EQ(program.defaults.integerForKey("Columns"), 3);
    EXPECT_EQ(program.defaults.integerForKey("Background"), 2);
    EXPECT_EQ(state().settings.curFontName, "Palatino");
    EXPECT_EQ(state().settings.curColorOption, 2);
}

TEST_F(Closing, WhatIsStoredIsOnTheDisk)
{
    program.epubReader().setActiveSplitIndex(1);
    program.closeReader();
    program.defaults.waitForBackup();
    const UserDefaults again(program.home.path("defaults"));
    EXPECT_EQ(integerFrom(again.objectForKey("BookData")->array()->at(0).find("LastInd")), 1);
    EXPECT_TRUE(again.hasKey("Columns"));
}

TEST_F(Closing, ABookThatLeftTheLibraryStoresItsSettingsOnly)
{
    program.catalogue().removeAt(0);
    program.epubReader().setNumberOfColumns(3);
    program.epubReader().setActiveSplitIndex(2);
    const Value before = *program.defaults.objectForKey("BookData");
    program.closeReader();
    EXPECT_EQ(program.defaults.objectForKey("BookData"), before);
    EXPECT_EQ(program.defaults.integerForKey("Columns"), 3);
}

TEST_F(Closing, ABookThatWasRemovedWhileItIsReadStillCloses)
{
    program.catalogue().removeAt(0);
    state().reading.currentBook = nullptr;
    program.closeReader();
    EXPECT_FALSE(program.isReading());
    EXPECT_TRUE(library().visible);
}

TEST_F(Closing, TheLibraryTakesTheReadersPlace)
{
    Journal journal;
    library().keepJournal(journal, "mainWindow");
    program.reader().window.keepJournal(journal, "epubWin");
    program.reader().window.rect = { 5, 6, 700, 500 };
    program.closeReader();
    EXPECT_EQ(journal, (Journal { "mainWindow.setFrame", "mainWindow.makeKeyAndOrderFront", "epubWin.orderOut" }));
    EXPECT_EQ(library().rect, (Rect { 5, 6, 700, 500 }));
    EXPECT_FALSE(program.reader().open);
    EXPECT_FALSE(program.isReading());
    EXPECT_TRUE(program.controller->inCloseEpubMethod());
}

TEST_F(Closing, ThePanelOfDisplayOptionsGoesToo)
{
    program.reader().displayOptions.visible = true;
    program.closeReader();
    EXPECT_FALSE(program.reader().displayOptions.visible);
}

TEST_F(Closing, IsLogged)
{
    Names lines;
    const LogCapture capture([&lines](const std::string& line) { lines.push_back(line); });
    program.closeReader();
    EXPECT_EQ(lines, Names { "close epub!" });
}

TEST_F(Closing, TheUnpackedFolderStays)
{
    program.closeReader();
    EXPECT_TRUE(fileExists(program.inTemporary("_books/Sea/OEBPS/chapter1.xhtml")));
}

TEST_F(Closing, OptionsThatWereChosenWhileAChapterIsOnItsWayAreKept)
{
    program.closeReader();
    program.doubleClick(0);
    auto& reader = program.reader();
    reader.colorControl.choose(1);
    reader.fontMenu.choose("Palatino");
    program.epubReader().changeFontSize(1.25F);
    const auto columns = program.epubReader().numberOfColumns();
    reader.actions.changeWidth();
    program.closeReader();
    EXPECT_EQ(program.defaults.integerForKey("Background"), 2);
    EXPECT_EQ(program.defaults.stringForKey("FontName"), "Palatino");
    EXPECT_EQ(program.defaults.realForKey("FontSize"), 1.25);
    EXPECT_EQ(program.defaults.integerForKey("Columns"), columns + 1);
}

TEST_F(Closing, AFixedLayoutBookStoresNothing)
{
    auto& fixed = openFixed();
    const auto entries = *program.defaults.objectForKey("BookData");
    for (const char* key : { "FontName", "FontSize", "Columns", "Background" })
        program.defaults.removeObject(key);
    fixed.actions.changePage(1);
    fixed.actions.closeEPUB();
    EXPECT_EQ(program.defaults.objectForKey("BookData"), entries);
    for (const char* key : { "FontName", "FontSize", "Columns", "Background" })
        EXPECT_FALSE(program.defaults.hasKey(key)) << key;
}

TEST_F(Closing, AfterAFixedLayoutBookTheLibraryKeepsItsOwnFrame)
{
    auto& fixed = openFixed();
    library().rect = { 1, 2, 800, 600 };
    fixed.window.rect = { 9, 9, 300, 300 };
    fixed.actions.closeEPUB();
    EXPECT_EQ(library().rect, (Rect { 1, 2, 800, 600 }));
    EXPECT_EQ(fixed.window.animatedTo, (std::vector<Rect> { { 1, 2, 800, 600 } }));
    EXPECT_TRUE(library().visible);
    EXPECT_FALSE(fixed.window.visible);
    EXPECT_FALSE(fixed.open);
    EXPECT_FALSE(program.isReading());
}

TEST_F(Closing, TheNextBookIsPreparedOnceTheLibraryIsBack)
{
    program.runLoop.runTimers();
    const auto before = program.readerWindows.timesPrepared;
    program.closeReader();
    EXPECT_EQ(program.readerWindows.timesPrepared, before);
    program.runLoop.runTimers();
    EXPECT_EQ(program.readerWindows.timesPrepared, before + 1);
}

TEST_F(Closing, NothingIsPreparedWhileTheNextBookIsReadAlready)
{
    program.runLoop.runTimers();
    const auto before = program.readerWindows.timesPrepared;
    program.closeReader();
    program.doubleClick(0);
    program.runLoop.runTimers();
    EXPECT_EQ(program.readerWindows.timesPrepared, before);
}

TEST_F(Closing, InFullScreenTheWindowsAreSwappedOnceItIsLeft)
{
    enterFullScreen();
    program.reader().window.rect = { 0, 0, 1000, 800 };
    program.closeReader();
    EXPECT_EQ(program.reader().window.timesToggled, 1);
    EXPECT_TRUE(program.reader().open);
    EXPECT_FALSE(library().visible);
    EXPECT_FALSE(program.isReading());
    leaveFullScreen();
    EXPECT_TRUE(library().key);
    EXPECT_EQ(library().rect, (Rect { 0, 0, 1000, 800 }));
    EXPECT_FALSE(program.reader().window.visible);
    EXPECT_FALSE(program.reader().open);
    EXPECT_FALSE(program.controller->fullScreenMode());
    EXPECT_FALSE(program.controller->inCloseEpubMethod());
}

TEST_F(Closing, InFullScreenThePositionIsStoredAtOnce)
{
    enterFullScreen();
    program.epubReader().setActiveSplitIndex(2);
    program.closeReader();
    EXPECT_EQ(storedNumber("LastInd"), 2);
}

TEST_F(Closing, InFullScreenIsRememberedForTheNextBook)
{
    enterFullScreen();
    program.closeReader();
    leaveFullScreen();
    program.doubleClick(0);
    EXPECT_EQ(program.reader().window.timesToggled, 1);
    EXPECT_TRUE(program.controller->fullScreenMode());
}

TEST_F(Closing, FullScreenLeftByHandIsForgotten)
{
    enterFullScreen();
    state().windows.epubWinInFullScreen = true;
    leaveFullScreen();
    EXPECT_FALSE(state().windows.epubWinInFullScreen);
    program.closeReader();
    program.doubleClick(0);
    EXPECT_EQ(program.reader().window.timesToggled, 0);
}

TEST_F(Closing, TheExitFromFullScreenIsLogged)
{
    enterFullScreen();
    program.closeReader();
    Names lines;
    const LogCapture capture([&lines](const std::string& line) { lines.push_back(line); });
    leaveFullScreen();
    EXPECT_EQ(lines, (Names { "reset to mainWindow", "exited by code - 1" }));
}

TEST_F(Closing, AnExitThatIsNeverReportedStillBringsTheLibraryBack)
{
    enterFullScreen();
    program.closeReader();
    program.runLoop.runTimers();
    EXPECT_TRUE(library().key);
    EXPECT_FALSE(program.controller->fullScreenMode());
    program.runLoop.runPosted();
    EXPECT_FALSE(program.reader().open);
}

TEST_F(Closing, AnExitThatIsReportedCallsTheWaitOff)
{
    enterFullScreen();
    program.closeReader();
    leaveFullScreen();
    program.doubleClick(0);
    program.runLoop.runTimers();
    EXPECT_FALSE(library().visible);
}

TEST_F(Closing, AWindowThatIsLeavingFullScreenIsNotSentBackThere)
{
    enterFullScreen();
    program.reader().window.fullScreen = false;
    program.closeReader();
    EXPECT_EQ(program.reader().window.timesToggled, 0);
    EXPECT_TRUE(library().key);
    EXPECT_FALSE(program.controller->fullScreenMode());
}

TEST_F(Closing, AFixedLayoutWindowThatIsLeavingFullScreenIsNotSentBackThere)
{
    auto& fixed = openFixed();
    fixed.actions.windowDidEnterFullScreen();
    fixed.actions.closeEPUB();
    EXPECT_EQ(fixed.window.timesToggled, 0);
    EXPECT_TRUE(library().key);
    EXPECT_FALSE(program.controller->fullScreenMode());
}

TEST_F(Closing, AFixedLayoutBookInFullScreenLeavesItFirst)
{
    auto& fixed = openFixed();
    fixed.window.fullScreen = true;
    fixed.actions.windowDidEnterFullScreen();
    fixed.actions.closeEPUB();
    EXPECT_EQ(fixed.window.timesToggled, 1);
    EXPECT_FALSE(library().visible);
    EXPECT_TRUE(state().windows.epubWinInFullScreen);
    program.window.monitor({});
    fixed.actions.windowDidExitFullScreen();
    program.runLoop.runPosted();
    EXPECT_TRUE(library().key);
    EXPECT_FALSE(fixed.open);
}

TEST_F(Closing, TheEndOfTheProgramStoresThePosition)
{
    program.epubReader().setActiveSplitIndex(1);
    program.controller->finishReading();
    EXPECT_EQ(storedNumber("LastInd"), 1);
    EXPECT_FALSE(program.isReading());
}

}
