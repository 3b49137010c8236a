#include "base/Numbers.hpp"
#include "tests/app/Program.hpp"

#include <gtest/gtest.h>

namespace pagora {

using test::EpubBuilder;
using Names = std::vector<std::string>;

namespace {

// Files opened by the desktop while the program runs.
struct OpenFiles : testing::Test {
    void open(const std::string& path) { program.controller->openFiles({ path }); }
    bool isInLibrary(const std::string& name) const { return fileExists(program.inLibrary(name)); }
    test::LaunchedProgram program;
};

}

TEST_F(OpenFiles, OneFileIsCopiedAndReadWithoutANewCover)
{
    open(program.download("Sea.epub"));
    EXPECT_TRUE(isInLibrary("Sea.epub"));
    EXPECT_EQ(program.reader().window.title, "Pagora - Sea");
    EXPECT_EQ(program.controller->currentBook()->epubPath(), program.inLibrary("Sea.epub"));
    EXPECT_EQ(program.catalogue().count(), 0u);
    EXPECT_TRUE(program.window.shown->books.content().empty());
    EXPECT_TRUE(program.controller->state().reading._singleEpub());
    EXPECT_FALSE(program.controller->state().launch._filesToOpenByApp);
}

TEST_F(OpenFiles, ClosingItDeletesTheCopyAndSavesTheReaderSettings)
{
    open(program.download("Sea.epub"));
    program.epubReader().setNumberOfColumns(3);
    program.closeReader();
    EXPECT_FALSE(isInLibrary("Sea.epub"));
    EXPECT_TRUE(fileExists(program.inDownloads("Sea.epub")));
    EXPECT_EQ(program.defaults.integerForKey("Columns"), 3);
    EXPECT_FALSE(program.defaults.hasKey("BookData"));
    EXPECT_FALSE(program.controller->state().reading._singleEpub());
}

TEST_F(OpenFiles, ARejectedFileShowsWhyAndOpensNothing)
{
    open(program.downloadBroken("Broken.epub"));
    EXPECT_TRUE(program.window.errorWinFake.key);
    EXPECT_TRUE(program.window.errorListFake.text.starts_with("Broken.epub --> "));
    EXPECT_FALSE(program.isReading());
    EXPECT_FALSE(isInLibrary("Broken.epub"));
}

TEST_F(OpenFiles, ARejectedFileLeavesTheBookThatIsRead)
{
    program.import({ "Sea.epub" });
    program.doubleClick(0);
    open(program.downloadBroken("Broken.epub"));
    EXPECT_TRUE(program.isReading());
    EXPECT_TRUE(program.reader().open);
}

TEST_F(OpenFiles, AFileThatCannotBeReadLeavesTheReadingAsItIs)
{
    program.import({ "Land.epub" });
    program.doubleClick(0);
    program.workspace.failing = { "Sea.epub" };
    open(program.download("Sea.epub"));
    program.workspace.failing = { "Gone.epub" };
    // The file is missing, so the inspection finds the extracted files of the previous book.
    open(program.inDownloads("Gone.epub"));
    EXPECT_EQ(program.window.alerts,
        (std::vector<test::FakeLibraryWindow::Alert>(2, { "ERROR", "ePub does not exists!", "OK" })));
    open(program.download("Locked.epub", EpubBuilder().member("META-INF/encryption.xml", "<encryption/>")));
    EXPECT_EQ(program.window.errorListFake.text, "Locked.epub --> epub is crypted by DRM");

    EXPECT_TRUE(program.reader().open);
    EXPECT_EQ(program.readerWindows.epubWindows.size(), 1u);
    EXPECT_EQ(program.controller->currentBook(), program.book(0));
    EXPECT_FALSE(program.controller->state().reading._singleEpub());
    program.epubReader().setActiveSplitIndex(1);
    program.closeReader();
    EXPECT_TRUE(isInLibrary("Land.epub"));
    EXPECT_EQ(integerFrom(program.stored(0).find("LastInd")), 1);
}

TEST_F(OpenFiles, AFileThatCannotBeReadLeavesTheSingleFileThatIsRead)
{
    open(program.download("Land.epub"));
    program.workspace.failing = { "Sea.epub" };
    open(program.download("Sea.epub"));
    EXPECT_TRUE(program.reader().open);
    EXPECT_TRUE(isInLibrary("Land.epub"));
    program.closeReader();
    EXPECT_FALSE(isInLibrary("Land.epub"));
    EXPECT_TRUE(fileExists(program.inDownloads("Land.epub")));
}

// Extracted files are kept until the next import.

TEST_F(OpenFiles, EveryFileAfterAProtectedOneCountsAsProtected)
{
    open(program.download("Locked.epub", EpubBuilder().member("META-INF/encryption.xml", "<encryption/>")));
    open(program.download("Sea.epub"));
    EXPECT_EQ(program.window.errorListFake.text, "Sea.epub --> epub is crypted by DRM");
    EXPECT_FALSE(program.isReading());
    program.import({ "Land.epub" });
    open(program.inDownloads("Sea.epub"));
    EXPECT_EQ(program.reader().window.title, "Pagora - Sea");
}

TEST_F(OpenFiles, EveryFileAfterAFixedLayoutBookCountsAsFixed)
{
    open(program.download("Plan.epub", EpubBuilder().fixedLayout(640, 480)));
    program.controller->_closeEPUB();
    open(program.download("Sea.epub"));
    EXPECT_EQ(program.controller->currentBook()->type(), "fixed");
    EXPECT_EQ(program.readerWindows.fixedWindows.size(), 2u);
    EXPECT_TRUE(program.readerWindows.epubWindows.empty());
}

TEST_F(OpenFiles, AFileWithoutContentsTakesThoseOfTheFileBefore)
{
    open(program.download("Sea.epub", EpubBuilder().chapters(2)));
    program.closeReader();
    open(program.download("Land.epub", EpubBuilder().without("OEBPS/toc.ncx")));
    const auto content = program.controller->currentBook()->content();
    ASSERT_TRUE(content);
    EXPECT_EQ(content->size(), 2u);
}

TEST_F(OpenFiles, ABrokenFileAfterARealOnePassesInspection)
{
    open(program.download("Sea.epub"));
    program.closeReader();
    open(program.downloadBroken("Broken.epub"));
    EXPECT_FALSE(program.window.errorWinFake.visible);
    EXPECT_EQ(program.controller->currentBook()->title(), "Sea");
    EXPECT_EQ(program.controller->currentBook()->epubPath(), program.inLibrary("Broken.epub"));
}

TEST_F(OpenFiles, SeveralFilesAreCopiedIntoTheLibraryWhateverTheMode)
{
    program.defaults.setObject("DragDropMode", "Move");
    program.controller->openFiles({ program.download("Sea.epub"), program.download("Land.epub") });
    EXPECT_EQ(program.titles(), (Names { "Sea", "Land" }));
    EXPECT_TRUE(fileExists(program.inDownloads("Sea.epub")));
    EXPECT_EQ(program.window.shown->books.content().size(), 2u);
    EXPECT_FALSE(program.isReading());
    EXPECT_FALSE(program.controller->state().launch._filesToOpenByApp);
}

TEST_F(OpenFiles, RejectedOnesOfSeveralAreShownTheNextTime)
{
    program.controller->openFiles({ program.downloadBroken("One.epub"), program.downloadBroken("Two.epub") });
    EXPECT_FALSE(program.window.errorWinFake.visible);
    program.drop({ program.downloadBroken("Three.epub") });
    EXPECT_EQ(split(program.window.errorListFake.text, '\n').size(), 3u);
}

TEST_F(OpenFiles, AFileOfALibraryBooksNameNeverDeletesThatBook)
{
    program.import({ "Sea.epub" });
    const auto bytes = test::contentsOf(program.inLibrary("Sea.epub"));
    open(program.writeBook(program.home.path("Other/Sea.epub"), EpubBuilder().author("Another")));
    ASSERT_NE(program.controller->currentBook()->epubPath(), program.inLibrary("Sea.epub"));
    program.closeReader();
    EXPECT_EQ(test::contentsOf(program.inLibrary("Sea.epub")), bytes);
    EXPECT_EQ(folderEntries(program.inLibrary("")), Names { "Sea.epub" });
}

TEST_F(OpenFiles, AnExactCopyOfALibraryBookNeverDeletesThatBook)
{
    program.import({ "Sea.epub" });
    open(program.inDownloads("Sea.epub"));
    program.closeReader();
    EXPECT_TRUE(isInLibrary("Sea.epub"));
}

TEST_F(OpenFiles, AnArchiveOpenedFromTheLibraryFolderStays)
{
    program.import({ "Sea.epub" });
    open(program.inLibrary("Sea.epub"));
    EXPECT_TRUE(program.isReading());
    program.closeReader();
    EXPECT_TRUE(isInLibrary("Sea.epub"));
}

TEST_F(OpenFiles, TheNextLibraryBookIsNotDeletedAndKeepsItsPlace)
{
    program.import({ "Land.epub" });
    open(program.download("Sea.epub"));
    program.closeReader();
    program.doubleClick(0);
    program.epubReader().setActiveSplitIndex(2);
    program.closeReader();
    EXPECT_TRUE(isInLibrary("Land.epub"));
    EXPECT_EQ(integerFrom(program.stored(0).find("LastInd")), 2);
}

TEST_F(OpenFiles, ABookImportedWhileItsSingleCopyIsReadStays)
{
    program.defaults.setObject("DragDropMode", "Move");
    open(program.download("Sea.epub"));
    program.drop({ program.inDownloads("Sea.epub") });
    EXPECT_EQ(program.book(0)->epubPath(), program.inLibrary("Sea.epub"));
    program.closeReader();
    EXPECT_TRUE(isInLibrary("Sea.epub"));
}

TEST_F(OpenFiles, TheSameFileOnceMoreReadsOnFromItsCopy)
{
    open(program.download("Sea.epub"));
    open(program.inDownloads("Sea.epub"));
    EXPECT_TRUE(program.window.alerts.empty());
    EXPECT_EQ(program.readerWindows.epubWindows.size(), 2u);
    EXPECT_FALSE(program.readerWindows.epubWindows[0]->open);
    EXPECT_TRUE(isInLibrary("Sea.epub"));
    program.closeReader();
    EXPECT_FALSE(isInLibrary("Sea.epub"));
}

TEST_F(OpenFiles, ASecondFileEndsTheReadingOfTheFirst)
{
    open(program.download("Sea.epub"));
    open(program.download("Land.epub"));
    EXPECT_FALSE(isInLibrary("Sea.epub"));
    EXPECT_TRUE(isInLibrary("Land.epub"));
    EXPECT_FALSE(program.readerWindows.epubWindows[0]->open);
    EXPECT_EQ(program.reader().window.title, "Pagora - Land");
}

TEST_F(OpenFiles, AFileThatCouldNotBeCopiedDoesNotSpoilTheNextReading)
{
    program.import({ "Land.epub" });
    program.workspace.failing = { "Sea.epub" };
    open(program.download("Sea.epub"));
    EXPECT_EQ(program.window.alerts.size(), 1u);
    program.doubleClick(0);
    program.epubReader().setActiveSplitIndex(1);
    program.closeReader();
    EXPECT_EQ(integerFrom(program.stored(0).find("LastInd")), 1);
    EXPECT_TRUE(isInLibrary("Land.epub"));
}

TEST_F(OpenFiles, ANewCopyIsNotTakenForOneThatIsStillToBeRemoved)
{
    open(program.download("Sea.epub"));
    program.runLoop.holdsBackground = true;
    program.closeReader();
    open(program.inDownloads("Sea.epub"));
    program.runLoop.holdsBackground = false;
    program.runLoop.finishBackground();
    EXPECT_TRUE(program.window.alerts.empty());
    EXPECT_TRUE(isInLibrary("Sea.epub"));
    program.closeReader();
    EXPECT_FALSE(isInLibrary("Sea.epub"));
}

}
