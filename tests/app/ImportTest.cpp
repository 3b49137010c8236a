#include "base/Numbers.hpp"
#include "running/Worker.hpp"
#include "tests/app/Program.hpp"

#include <filesystem>
#include <gtest/gtest.h>

namespace pagora {

using test::EpubBuilder;
using Names = std::vector<std::string>;

namespace {

struct Import : testing::Test {
    // The dialog changes the current folder of the process.
    ~Import() override { std::filesystem::current_path(startFolder); }
    void setMode(const char* mode) { program.defaults.setObject("DragDropMode", mode); }
    std::vector<Names> errorTexts() const
    {
        std::vector<Names> lines;
        for (const auto& text : program.window.errorListFake.texts)
            lines.push_back(split(text, '\n'));
        return lines;
    }
    const std::filesystem::path startFolder = std::filesystem::current_path();
    test::LaunchedProgram program;
};

}

TEST_F(Import, ADroppedBookIsCopiedAndCatalogued)
{
    program.drop({ program.download("Sea.epub") });
    EXPECT_EQ(program.titles(), Names { "Sea" });
    EXPECT_EQ(program.book(0)->epubPath(), program.inLibrary("Sea.epub"));
    EXPECT_EQ(program.catalogue().epubLocations(), Names { "Sea.epub" });
    EXPECT_EQ(stringFrom(program.stored(0).find("ePubPath")), program.inLibrary("Sea.epub"));
    EXPECT_EQ(test::contentsOf(program.inLibrary("Sea.epub")), test::contentsOf(program.inDownloads("Sea.epub")));
    EXPECT_EQ(program.window.shown->books.content().size(), 1u);
}

TEST_F(Import, ABookInTheLibraryAddsAndShowsNothing)
{
    program.import({ "Sea.epub" });
    program.writeBook(program.home.path("Other/Sea.epub"));
    program.drop({ program.home.path("Other/Sea.epub") });
    EXPECT_EQ(program.catalogue().count(), 1u);
    EXPECT_FALSE(program.window.errorWinFake.visible);
    EXPECT_TRUE(program.window.alerts.empty());
}

TEST_F(Import, AFileWhoseNameIsPartOfAKnownOneCountsAsKnown)
{
    program.import({ "data.epub", "a.epub" });
    EXPECT_EQ(program.titles(), Names { "data" });
}

TEST_F(Import, FilesOfOneNameInABatchKeepBothArchives)
{
    const auto first = program.writeBook(program.home.path("One/Sea.epub"), EpubBuilder().author("First"));
    const auto second = program.writeBook(program.home.path("Two/Sea.epub"), EpubBuilder().author("Second"));
    setMode("Move");
    const auto firstBytes = test::contentsOf(first);
    const auto secondBytes = test::contentsOf(second);
    program.drop({ first, second });
    ASSERT_EQ(program.catalogue().count(), 2u);
    EXPECT_NE(program.book(0)->epubPath(), program.book(1)->epubPath());
    EXPECT_EQ(test::contentsOf(*program.book(0)->epubPath()), firstBytes);
    EXPECT_EQ(test::contentsOf(*program.book(1)->epubPath()), secondBytes);
    EXPECT_EQ(program.catalogue().epubLocations()[1], lastPathComponent(*program.book(1)->epubPath()));
}

TEST_F(Import, ABatchIsCataloguedInItsOrder)
{
    Names files;
    Names titles;
    for (int i = 0; i < 40; ++i) {
        titles.push_back("Book " + std::to_string(i * 7 % 40));
        files.push_back(program.download(titles.back() + ".epub"));
    }
    program.drop(files);
    EXPECT_EQ(program.titles(), titles);
    EXPECT_EQ(folderEntries(program.inLibrary(""))->size(), files.size());
}

TEST_F(Import, EachBookOfABatchHasItsOwnCover)
{
    const auto small = program.download("Small.epub", EpubBuilder().cover(20, 80));
    const auto large = program.download("Large.epub", EpubBuilder().cover(900, 1400));
    const auto none = program.download("None.epub", EpubBuilder().without("OEBPS/images/cover.jpg"));
    program.drop({ small, large, none });
    ASSERT_EQ(program.catalogue().count(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        const auto alone = program.controller->import().bookFromOwnFile(*program.book(i)->epubPath());
        EXPECT_TRUE(program.book(i)->imgData()->bytes() == alone->imgData()->bytes()) << i;
    }
    EXPECT_EQ(program.book(0)->cover()->size().width, 39);
}

TEST_F(Import, RejectedFilesOfABatchLeaveNothingInTheLibrary)
{
    setMode("Move");
    const auto bad = program.download("Locked.epub", EpubBuilder().member("META-INF/encryption.xml", "<x/>"));
    program.drop({ program.download("Sea.epub"), bad, program.download("Sky.epub") });
    EXPECT_EQ(folderEntries(program.inLibrary(""))->size(), 2u);
    EXPECT_EQ(folderEntries(program.inDownloads("")), (Names { "Locked.epub" }));
}

TEST_F(Import, CopyingLeavesTheSource)
{
    setMode("Copy");
    program.import({ "Sea.epub" });
    EXPECT_TRUE(fileExists(program.inDownloads("Sea.epub")));
    EXPECT_TRUE(fileExists(program.inLibrary("Sea.epub")));
}

TEST_F(Import, MovingRemovesTheSourceOnceItsBytesAreInTheLibrary)
{
    setMode("Move");
    const auto source = program.download("Sea.epub");
    const auto bytes = test::contentsOf(source);
    program.drop({ source });
    EXPECT_FALSE(fileExists(source));
    EXPECT_EQ(test::contentsOf(program.inLibrary("Sea.epub")), bytes);
}

TEST_F(Import, MovingKeepsTheSourceWhenTheCopyFails)
{
    setMode("Move");
    program.workspace.failing = { "Sea.epub" };
    program.import({ "Sea.epub" });
    EXPECT_TRUE(fileExists(program.inDownloads("Sea.epub")));
    EXPECT_EQ(program.book(0)->epubPath(), program.inLibrary("Sea.epub"));
}

TEST_F(Import, AFailedCopyNeverStandsForAnotherBooksArchive)
{
    test::makeFile(program.inLibrary("Sea.epub"), "another book");
    program.workspace.failing = { "Sea.epub" };
    program.import({ "Sea.epub" });
    EXPECT_EQ(program.book(0)->epubPath(), program.inDownloads("Sea.epub"));
}

TEST_F(Import, MovingAFileOntoItselfKeepsIt)
{
    setMode("Move");
    program.writeBook(program.inLibrary("Sea.epub"));
    createFolder(program.inDownloads(""));
    std::filesystem::create_hard_link(program.inLibrary("Sea.epub"), program.inDownloads("Sea.epub"));
    program.drop({ program.inDownloads("Sea.epub") });
    EXPECT_TRUE(fileExists(program.inLibrary("Sea.epub")));
    EXPECT_EQ(program.book(0)->epubPath(), program.inLibrary("Sea.epub"));
}

TEST_F(Import, MovingFromAMountedVolumeIsCopying)
{
    setMode("Move");
    const auto source = program.download("Sea.epub");
    program.workspace.volume = program.inDownloads("");
    program.drop({ source });
    EXPECT_TRUE(fileExists(source));
    EXPECT_EQ(test::contentsOf(program.inLibrary("Sea.epub")), test::contentsOf(source));
    EXPECT_EQ(program.book(0)->epubPath(), program.inLibrary("Sea.epub"));
}

TEST_F(Import, AFileInsideTheLibraryFolderIsCataloguedWhereItIs)
{
    for (const char* mode : { "Copy", "Move" }) {
        setMode(mode);
        program.drop({ program.writeBook(program.inLibrary(std::string(mode) + ".epub")) });
    }
    EXPECT_EQ(program.titles(), (Names { "Copy", "Move" }));
    EXPECT_EQ(program.book(1)->epubPath(), program.inLibrary("Move.epub"));
    EXPECT_TRUE(program.workspace.copied.empty());
    EXPECT_TRUE(fileExists(program.inLibrary("Move.epub")));
}

TEST_F(Import, WithoutAModeBooksStayWhereTheyWere)
{
    program.defaults.removeObject("DragDropMode");
    program.import({ "Sea.epub" });
    EXPECT_EQ(program.book(0)->epubPath(), program.inDownloads("Sea.epub"));
    EXPECT_FALSE(fileExists(program.inLibrary("Sea.epub")));
}

TEST_F(Import, StoppingDuringTheThirdOfTenFilesLeavesThreeBooksSaved)
{
    Names files;
    for (int i = 0; i < 10; ++i)
        files.push_back(program.download("Book" + std::to_string(i) + ".epub"));
    program.window.procTextFake.whenSet = [this](const std::string& text) {
        if (text == "3 of 10")
            program.window.actions.cancelProcess();
    };
    program.drop(files);
    EXPECT_EQ(program.titles(), (Names { "Book0", "Book1", "Book2" }));
    EXPECT_EQ(program.storedCount(), 3u);
    EXPECT_TRUE(program.window.stopButtonFake.hidden);
}

TEST_F(Import, AStoppedBatchDoesNotStopTheNext)
{
    program.controller->cancelProcess();
    program.import({ "Sea.epub" });
    EXPECT_EQ(program.catalogue().count(), 1u);
}

TEST_F(Import, ThreeRejectedFilesGiveOneErrorWindowWithThreeLines)
{
    program.drop({ program.downloadBroken("One.epub"), program.download("Sea.epub"), program.downloadBroken("Two.epub"),
        program.downloadBroken("Three.epub") });
    EXPECT_EQ(program.titles(), Names { "Sea" });
    ASSERT_EQ(errorTexts().size(), 1u);
    const auto lines = errorTexts()[0];
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_TRUE(lines[0].starts_with("One.epub --> "));
    EXPECT_TRUE(lines[1].starts_with("Two.epub --> "));
    EXPECT_TRUE(lines[2].starts_with("Three.epub --> "));
    EXPECT_TRUE(program.window.errorWinFake.key);
    EXPECT_TRUE(program.controller->faultyBooks().empty());
}

TEST_F(Import, RejectedFilesStayWhereTheyAre)
{
    setMode("Move");
    program.drop({ program.downloadBroken("One.epub") });
    EXPECT_TRUE(fileExists(program.inDownloads("One.epub")));
    EXPECT_EQ(folderEntries(program.inLibrary("")), Names {});
    EXPECT_EQ(program.storedCount(), 0u);
}

TEST_F(Import, ShowsHowFarItIs)
{
    Names texts;
    bool shown = false;
    program.window.procTextFake.whenSet = [&](const std::string& text) {
        texts.push_back(text);
        shown = !program.window.progressBarFake.hidden && !program.window.procTextFake.hidden
            && !program.window.stopButtonFake.hidden;
    };
    program.drop({ program.download("Sea.epub"), program.downloadBroken("Broken.epub") });
    EXPECT_EQ(texts, (Names { "1 of 2", "2 of 2" }));
    EXPECT_TRUE(shown);
    EXPECT_EQ(program.window.progressBarFake.values, (std::vector<double> { 1, 2 }));
    EXPECT_EQ(program.window.processIndicatorFake.values, (std::vector<double> { 1, 2 }));
    EXPECT_EQ(program.window.progressBarFake.most, 2);
    EXPECT_TRUE(program.window.progressBarFake.hidden);
    EXPECT_TRUE(program.window.procTextFake.hidden);
    EXPECT_TRUE(program.window.stopButtonFake.hidden);
}

TEST_F(Import, NumbersThatCouldNotBeShownYetGiveWayToTheNewest)
{
    const Names files { program.download("One.epub"), program.download("Two.epub"), program.download("Three.epub") };
    Worker().perform([&] { program.controller->import().booksFromFilesArray(files); });
    program.runLoop.runPosted();
    EXPECT_EQ(program.window.procTextFake.texts, Names { "3 of 3" });
    EXPECT_EQ(program.window.progressBarFake.values, std::vector<double> { 3 });
    EXPECT_TRUE(program.window.procTextFake.hidden);
}

TEST_F(Import, KnownFilesLeaveTheScratchFolderEmptyToo)
{
    program.import({ "Sea.epub" });
    program.drop({ program.inDownloads("Sea.epub"), program.inDownloads("Sea.epub") });
    EXPECT_EQ(folderEntries(program.inTemporary("_data")), Names {});
}

TEST_F(Import, KnownFilesMakeTheScratchFolderAnew)
{
    program.import({ "Sea.epub" });
    program.drop({ program.inDownloads("Sea.epub") });
    removeItem(program.inTemporary("_data"));
    program.drop({ program.inDownloads("Sea.epub") });
    EXPECT_EQ(folderEntries(program.inTemporary("_data")), Names {});
}

TEST_F(Import, UnderTheProgressWindowTheLibrarysOwnBarStaysHidden)
{
    program.window.indicatorWindowFake.visible = true;
    program.window.progressBarFake.hidden = true;
    bool hidden = false;
    program.window.procTextFake.whenSet = [&](const std::string&) { hidden = program.window.progressBarFake.hidden; };
    program.import({ "Sea.epub" });
    EXPECT_TRUE(hidden);
    EXPECT_EQ(program.window.processIndicatorFake.most, 1);
}

TEST_F(Import, TheScratchFolderIsEmptiedBeforeEachBook)
{
    test::makeFile(program.inTemporary("_data/mimetype"), "application/epub+zip");
    test::makeFile(program.inTemporary("_data/left.txt"), "left");
    std::vector<bool> leftIsThere;
    program.window.procTextFake.whenSet = [&](const std::string&) {
        leftIsThere.push_back(fileExists(program.inTemporary("_data/OEBPS/content.opf")));
    };
    program.drop({ program.download("Sea.epub"), program.downloadBroken("Broken.epub") });
    EXPECT_EQ(leftIsThere, (std::vector<bool> { false, true }));
    EXPECT_EQ(folderEntries(program.inTemporary("_data")), Names {});
    EXPECT_TRUE(program.window.errorListFake.text.find("mimetype") != std::string::npos);
}

TEST_F(Import, AnEmptyDropDoesNothing)
{
    program.drop({});
    EXPECT_EQ(program.controller->import().booksFromFilesArray({}), Names {});
    EXPECT_TRUE(program.window.procTextFake.texts.empty());
}

TEST_F(Import, TheResultNamesTheArchivesInTheLibrary)
{
    EXPECT_EQ(program.controller->import().booksFromFilesArray(
                  { program.download("Sea.epub"), program.downloadBroken("Broken.epub") }),
        Names { program.inLibrary("Sea.epub") });
}

TEST_F(Import, NothingIsSavedWhenNoBookCameIn)
{
    program.drop({ program.downloadBroken("Broken.epub") });
    EXPECT_FALSE(program.defaults.hasKey("BookData"));
}

TEST_F(Import, AFixedLayoutBookIsStoredWithItsPageSize)
{
    program.drop({ program.download("Sea.epub", EpubBuilder().fixedLayout(640, 480)) });
    EXPECT_EQ(stringFrom(program.stored(0).find("Type")), "fixed");
    EXPECT_EQ(integerFrom(program.stored(0).find("fixedWidth")), 640);
    EXPECT_EQ(integerFrom(program.stored(0).find("fixedHeight")), 480);
}

TEST_F(Import, TheDialogAsksForSeveralBooks)
{
    program.window.actions.importDialog();
    ASSERT_EQ(program.window.panels.size(), 1u);
    EXPECT_EQ(program.window.panels[0].message, "Choose epub file(s) for import to Pagora Library");
    EXPECT_TRUE(program.window.panels[0].multiple);
    program.window.panels[0].chosen(Names { program.download("Sea.epub"), program.download("Land.epub") });
    EXPECT_EQ(program.titles(), (Names { "Sea", "Land" }));
}

TEST_F(Import, TheFirstDialogStartsInTheHomeFolder)
{
    program.window.actions.importDialog();
    const auto first = std::filesystem::current_path();
    EXPECT_FALSE(program.defaults.boolForKey("Default"));
    std::filesystem::current_path("/");
    program.window.actions.importDialog();
    const auto second = std::filesystem::current_path();
    EXPECT_TRUE(std::filesystem::equivalent(first, program.home.path()));
    EXPECT_EQ(second, "/");
}

TEST_F(Import, TheFirstDialogAfterAResetStartsInTheHomeFolderAgain)
{
    program.window.actions.importDialog();
    program.controller->resetAppSettings();
    program.runLoop.runPosted();
    std::filesystem::current_path("/");
    program.window.actions.importDialog();
    EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), program.home.path()));
}

TEST_F(Import, ACancelledOrEmptyDialogImportsNothing)
{
    program.window.actions.importDialog();
    program.window.panels[0].chosen(std::nullopt);
    program.window.panels[0].chosen(Names {});
    EXPECT_EQ(program.catalogue().count(), 0u);
}

TEST_F(Import, ADialogForOneFileImportsNothing)
{
    program.controller->filesLoadingWithMessage("Choose a book");
    EXPECT_FALSE(program.window.panels[0].multiple);
    program.window.panels[0].chosen(Names { program.download("Sea.epub") });
    EXPECT_EQ(program.catalogue().count(), 0u);
}

TEST_F(Import, AnAlertShowsBothTexts)
{
    program.controller->showAlert("Title", "More on it");
    EXPECT_EQ(program.window.alerts, (std::vector<test::FakeLibraryWindow::Alert> { { "Title", "More on it", "OK" } }));
}

}
