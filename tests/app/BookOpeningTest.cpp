#include "base/Numbers.hpp"
#include "tests/app/Program.hpp"

#include <cmath>
#include <gtest/gtest.h>

namespace pagora {

using test::EpubBuilder;
using test::Journal;
using Names = std::vector<std::string>;

namespace {

// A library of two books.
struct Opening : testing::Test {
    Opening() { program.import({ "Sea.epub", "Land.epub" }); }
    LibraryState& state() { return program.controller->state(); }
    std::string unpacked(const std::string& name) const { return program.inTemporary("_books/" + name); }

    test::LaunchedProgram program;
};

}

TEST_F(Opening, ADoubleClickOpensTheSelectedBook)
{
    program.doubleClick(1);
    EXPECT_EQ(program.controller->currentBook(), program.book(1));
    EXPECT_EQ(program.reader().window.title, "Pagora - Land");
}

TEST_F(Opening, TheFirstOfSeveralSelectedBooksIsOpened)
{
    program.window.shown->select({ 0, 1 });
    program.window.actions.readBook();
    EXPECT_EQ(program.reader().window.title, "Pagora - Sea");
}

TEST_F(Opening, TheListOpensItsSelectionToo)
{
    program.window.bListControlFake.selected = 1;
    program.window.actions.bookListMode();
    program.doubleClick(1);
    EXPECT_EQ(program.reader().window.title, "Pagora - Land");
}

TEST_F(Opening, ARecordIsOpenedWhateverIsSelected)
{
    program.window.shown->select({ 1 });
    program.controller->sendDoubleClick(program.book(0));
    EXPECT_EQ(program.controller->currentBook(), program.book(0));
    EXPECT_EQ(program.reader().window.title, "Pagora - Sea");
}

TEST(OpeningBeforeTheLaunch, WithoutAViewNothingHappens)
{
    test::Program program;
    // There are books and a folder to unpack them into, but no view with a selection.
    auto& state = program.controller->state();
    state.folders._booksPath = program.inTemporary("_books");
    const auto book = std::make_shared<BookInfo>();
    book->setEpubPath(program.download("Sea.epub"));
    book->setBookPath(program.inTemporary("_books/Sea"));
    state.catalogue.append(book, Value(Value::Dictionary {}), "Sea.epub");
    program.controller->sendDoubleClick();
    EXPECT_TRUE(program.readerWindows.epubWindows.empty());
    EXPECT_EQ(program.controller->currentBook(), nullptr);
    program.controller->sendDoubleClick(book);
    EXPECT_EQ(program.readerWindows.epubWindows.size(), 1u);
}

TEST_F(Opening, NoSelectionOpensNothingAndEndsNoReading)
{
    program.doubleClick(0);
    program.window.shown->select({});
    program.window.actions.readBook();
    EXPECT_TRUE(program.reader().open);
    EXPECT_EQ(program.readerWindows.epubWindows.size(), 1u);
}

TEST_F(Opening, GoesThroughItsStepsInOrder)
{
    Journal journal;
    program.window.mainWindowFake.keepJournal(journal, "mainWindow");
    program.readerWindows.journal = &journal;
    state().windows.epubWinInFullScreen = true;
    program.doubleClick(0);
    EXPECT_EQ(journal,
        (Journal { "epubWin.make", "epubWin.setFrame", "epubWin.makeKeyAndOrderFront", "mainWindow.orderOut",
            "webView.loadRequest", "epubWin.toggleFullScreen" }));
}

TEST_F(Opening, TheReaderTakesTheLibraryWindowsFrame)
{
    program.window.mainWindowFake.rect = { 10, 20, 900, 700 };
    program.doubleClick(0);
    EXPECT_EQ(program.reader().window.rect, (Rect { 10, 20, 900, 700 }));
}

TEST_F(Opening, ABookWithoutTitleSaysSo)
{
    program.book(0)->setTitle(std::nullopt);
    program.doubleClick(0);
    EXPECT_EQ(program.reader().window.title, "Pagora - (null)");
}

TEST_F(Opening, AMissingArchiveShowsAnAlertAndChangesNothingElse)
{
    program.window.mainWindowFake.visible = true;
    removeItem(program.inLibrary("Sea.epub"));
    program.doubleClick(0);
    EXPECT_EQ(program.window.alerts,
        (std::vector<test::FakeLibraryWindow::Alert> { { "ERROR", "ePub does not exists!", "OK" } }));
    EXPECT_EQ(program.controller->currentBook(), program.book(0));
    EXPECT_FALSE(program.isReading());
    EXPECT_TRUE(program.window.mainWindowFake.visible);
    EXPECT_EQ(program.catalogue().count(), 2u);
    EXPECT_TRUE(program.workspace.recent.empty());
}

TEST_F(Opening, UnpacksTheArchiveAndNotesTheDocument)
{
    test::makeFile(unpacked("Sea/left.txt"), "left");
    program.doubleClick(0);
    EXPECT_TRUE(fileExists(unpacked("Sea/OEBPS/chapter1.xhtml")));
    EXPECT_FALSE(fileExists(unpacked("Sea/left.txt")));
    EXPECT_TRUE(program.book(0)->unPacked());
    EXPECT_EQ(program.workspace.recent, std::vector<Url> { Url::file(program.inLibrary("Sea.epub")) });
}

TEST_F(Opening, ABookThatIsUnpackedKeepsItsFolder)
{
    program.doubleClick(0);
    program.closeReader();
    test::makeFile(unpacked("Sea/mark.txt"), "mark");
    program.doubleClick(0);
    EXPECT_TRUE(fileExists(unpacked("Sea/mark.txt")));
    EXPECT_EQ(program.reader().webView.loads.size(), 1u);
}

TEST_F(Opening, BooksThatShareAFolderAreUnpackedInTurn)
{
    const auto other
        = program.writeBook(program.home.path("Other/Sea.epub"), EpubBuilder().member("OEBPS/other.txt", "other"));
    program.doubleClick(0);
    program.closeReader();
    program.controller->openFiles({ other });
    EXPECT_TRUE(fileExists(unpacked("Sea/OEBPS/other.txt")));
    program.closeReader();
    program.doubleClick(0);
    EXPECT_FALSE(fileExists(unpacked("Sea/OEBPS/other.txt")));
}

TEST_F(Opening, TheReaderLoadsItsChapterOnceTheBookIsUnpacked)
{
    program.runLoop.holdsBackground = true;
    program.doubleClick(0);
    EXPECT_TRUE(program.reader().window.visible);
    EXPECT_TRUE(program.reader().webView.loads.empty());
    program.runLoop.finishBackground();
    EXPECT_EQ(program.reader().webView.loads, std::vector<Url> { Url::file(unpacked("Sea/OEBPS/chapter1.xhtml")) });
}

TEST_F(Opening, TheReaderShowsThatTheBookIsOnItsWay)
{
    program.runLoop.holdsBackground = true;
    program.doubleClick(0);
    EXPECT_TRUE(program.reader().isLoading);
    program.runLoop.finishBackground();
    EXPECT_TRUE(program.reader().isLoading);
    program.reader().webView.finishDocument();
    EXPECT_FALSE(program.reader().isLoading);
}

TEST_F(Opening, TheReaderLoadsItsChapterOnceItsWindowHasItsSize)
{
    program.readerWindows.holdsLayout = true;
    program.doubleClick(0);
    EXPECT_TRUE(program.reader().webView.loads.empty());
    program.reader().window.finishLayout();
    EXPECT_EQ(program.reader().webView.loads.size(), 1u);
}

TEST_F(Opening, ClosingDuringTheUnpackingGivesTheOpeningUp)
{
    program.runLoop.holdsBackground = true;
    program.doubleClick(0);
    program.closeReader();
    program.runLoop.holdsBackground = false;
    program.runLoop.finishBackground();
    EXPECT_TRUE(program.reader().webView.loads.empty());
    EXPECT_FALSE(program.book(0)->unPacked());
    program.doubleClick(0);
    EXPECT_TRUE(fileExists(unpacked("Sea/OEBPS/chapter1.xhtml")));
}

TEST_F(Opening, ThePageMayReadTheBooksFolderOnly)
{
    program.doubleClick(0);
    EXPECT_EQ(program.reader().webView.bookFolder, unpacked("Sea"));
}

TEST_F(Opening, SettingsThatAreSetAreHandedOver)
{
    program.readerWindows.holdsLayout = true;
    state().settings = { "Palatino", 1.75f, 3, 2 };
    program.doubleClick(0);
    auto& reader = program.epubReader();
    EXPECT_EQ(reader.currentFont(), "Palatino");
    EXPECT_EQ(reader.currentFontSize(), 1.75f);
    EXPECT_EQ(reader.numberOfColumns(), 3);
    EXPECT_EQ(reader.currentColorOption(), 2);
    EXPECT_EQ(program.reader().bgView.fills, std::vector<Color> { reader.getBackgroundColorFor(2) });
}

TEST_F(Opening, SettingsThatAreUnsetAreNotHandedOver)
{
    program.readerWindows.holdsLayout = true;
    program.doubleClick(0);
    auto& reader = program.epubReader();
    EXPECT_EQ(reader.currentFont(), std::nullopt);
    EXPECT_NE(reader.currentFontSize(), -1.0f);
    EXPECT_NE(reader.numberOfColumns(), -1);
    EXPECT_NE(reader.currentColorOption(), -1);
    EXPECT_EQ(program.reader().bgView.fills, std::vector<Color> { reader.getBackgroundColorFor(-1) });
}

TEST_F(Opening, AFontSizeOfZeroIsASetOne)
{
    program.readerWindows.holdsLayout = true;
    // The sign distinguishes the value from the initial zero of a new reader.
    state().settings.curFontSize = -0.0f;
    program.doubleClick(0);
    EXPECT_TRUE(std::signbit(program.epubReader().currentFontSize()));
}

TEST_F(Opening, ThePositionIsHandedOver)
{
    program.readerWindows.holdsLayout = true;
    program.book(0)->setLastIndex(2);
    program.book(0)->setLastCap(3);
    program.doubleClick(0);
    EXPECT_EQ(program.epubReader().activeSplitIndex(), 2u);
    EXPECT_EQ(program.epubReader().readAmount(), 3.0f);
    program.reader().window.finishLayout();
    EXPECT_EQ(program.reader().webView.loads, std::vector<Url> { Url::file(unpacked("Sea/OEBPS/chapter3.xhtml")) });
}

TEST_F(Opening, APlaceWithinTheChapterIsHandedOverWhenTheCapIsZero)
{
    program.readerWindows.holdsLayout = true;
    program.book(0)->setLastPlace(0.375);
    program.doubleClick(0);
    EXPECT_EQ(program.epubReader().readAmount(), 0.375f);
}

TEST_F(Opening, APlaceIsHandedOverWhenTheCapIsNoFraction)
{
    program.readerWindows.holdsLayout = true;
    program.book(0)->setLastPlace(0.375);
    for (const std::uint64_t cap : { std::uint64_t { 2 }, std::uint64_t { 30'000'000'000'000 } }) {
        program.book(0)->setLastCap(cap);
        program.controller->sendDoubleClick(program.book(0));
        EXPECT_EQ(program.epubReader().readAmount(), 0.375f) << cap;
    }
}

TEST_F(Opening, APlaceIsNotHandedOverBesideACapOfOne)
{
    program.readerWindows.holdsLayout = true;
    program.book(0)->setLastPlace(0.375);
    program.book(0)->setLastCap(1);
    program.doubleClick(0);
    EXPECT_EQ(program.epubReader().readAmount(), 1.0f);
}

TEST_F(Opening, APlaceOutsideTheChapterIsNotHandedOver)
{
    program.readerWindows.holdsLayout = true;
    for (const double place : { 0.0, 1.0, -0.5, 1.5 }) {
        program.book(0)->setLastPlace(place);
        program.controller->sendDoubleClick(program.book(0));
        EXPECT_EQ(program.epubReader().readAmount(), 0.0f) << place;
    }
}

TEST_F(Opening, AFixedLayoutBookOpensInItsOwnReader)
{
    program.drop({ program.download("Plan.epub", EpubBuilder().fixedLayout(640, 480)) });
    state().windows.fullScreenMode = true;
    state().settings.curNumOfColumns = 3;
    program.doubleClick(2);
    ASSERT_EQ(program.readerWindows.fixedWindows.size(), 1u);
    auto& parts = *program.readerWindows.fixedWindows[0];
    EXPECT_EQ(parts.window.title, "Pagora - Plan");
    EXPECT_TRUE(parts.window.key);
    EXPECT_EQ(parts.webView.loads.size(), 1u);
    EXPECT_EQ(parts.window.timesToggled, 1);
    EXPECT_TRUE(program.readerWindows.epubWindows.empty());
    EXPECT_FALSE(program.window.mainWindowFake.visible);
}

TEST_F(Opening, ABookOfAnotherTypeHidesTheLibraryAndOpensNothing)
{
    program.window.mainWindowFake.visible = true;
    program.book(0)->setType("x-ibook");
    program.doubleClick(0);
    EXPECT_FALSE(program.window.mainWindowFake.visible);
    EXPECT_FALSE(program.isReading());
    EXPECT_EQ(program.workspace.recent.size(), 1u);
}

TEST_F(Opening, FullScreenFollowsTheLastReading)
{
    program.doubleClick(0);
    EXPECT_EQ(program.reader().window.timesToggled, 0);
    program.closeReader();
    state().windows.epubWinInFullScreen = true;
    program.doubleClick(0);
    EXPECT_TRUE(program.controller->fullScreenMode());
    EXPECT_EQ(program.reader().window.timesToggled, 1);
}

TEST_F(Opening, AWindowThatIsInFullScreenAlreadyStaysThere)
{
    program.readerWindows.areFullScreen = true;
    state().windows.epubWinInFullScreen = true;
    program.doubleClick(0);
    EXPECT_EQ(program.reader().window.timesToggled, 0);
    EXPECT_TRUE(program.controller->fullScreenMode());
}

TEST_F(Opening, ALibraryInFullScreenDoesNotPutTheBookIntoFullScreenMode)
{
    program.readerWindows.areFullScreen = true;
    program.doubleClick(0);
    EXPECT_EQ(program.reader().window.timesToggled, 0);
    EXPECT_FALSE(program.controller->fullScreenMode());
}

TEST_F(Opening, AnotherBookSavesThePlaceInTheFirst)
{
    program.doubleClick(0);
    program.epubReader().setActiveSplitIndex(2);
    program.controller->sendDoubleClick(program.book(1));
    EXPECT_EQ(integerFrom(program.stored(0).find("LastInd")), 2);
    EXPECT_FALSE(program.readerWindows.epubWindows[0]->open);
    EXPECT_EQ(program.reader().window.title, "Pagora - Land");
    EXPECT_TRUE(program.reader().window.visible);
}

TEST_F(Opening, AFileFromOutsideSavesThePlaceInTheOpenBook)
{
    program.doubleClick(0);
    program.epubReader().setActiveSplitIndex(2);
    program.controller->openFiles({ program.download("Sky.epub") });
    EXPECT_EQ(integerFrom(program.stored(0).find("LastInd")), 2);
    EXPECT_EQ(program.reader().window.title, "Pagora - Sky");
}

TEST_F(Opening, AnotherBookInFullScreenKeepsTheLibraryAway)
{
    program.doubleClick(0);
    program.controller->setFullScreenMode(true);
    program.controller->sendDoubleClick(program.book(1));
    program.runLoop.runPosted();
    EXPECT_FALSE(program.readerWindows.epubWindows[0]->open);
    program.runLoop.runTimers();
    EXPECT_FALSE(program.window.mainWindowFake.visible);
    EXPECT_EQ(program.reader().window.timesToggled, 1);
    EXPECT_TRUE(program.controller->fullScreenMode());
}

TEST_F(Opening, AMissingArchiveLeavesTheReadingAsItIs)
{
    program.doubleClick(0);
    removeItem(program.inLibrary("Land.epub"));
    program.controller->sendDoubleClick(program.book(1));
    EXPECT_EQ(program.window.alerts.size(), 1u);
    EXPECT_TRUE(program.reader().open);
    EXPECT_EQ(program.controller->currentBook(), program.book(0));
}

TEST_F(Opening, StartingTheProgramAgainShowsTheReader)
{
    program.doubleClick(0);
    program.reader().window.key = false;
    program.controller->applicationWasReopened();
    EXPECT_TRUE(program.reader().window.key);
    EXPECT_FALSE(program.window.mainWindowFake.visible);
    program.closeReader();
    program.window.mainWindowFake.key = false;
    program.controller->applicationWasReopened();
    EXPECT_TRUE(program.window.mainWindowFake.key);
}

}
