#include "tests/app/Program.hpp"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace pagora {

using test::EpubBuilder;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

namespace {

// A library with one book, "Old", which bad input must not change.
struct BadInput : testing::Test {
    BadInput()
    {
        program.import({ "Old.epub" });
        _stored = program.stored(0);
        _bytes = test::contentsOf(program.inLibrary("Old.epub"));
    }
    void drop(const Names& files)
    {
        program.drop(files);
        program.runLoop.runPosted();
    }
    void moveFiles() { program.defaults.setObject("DragDropMode", "Move"); }
    void expectOldBookUnchanged()
    {
        EXPECT_EQ(program.stored(0), _stored);
        EXPECT_EQ(test::contentsOf(program.inLibrary("Old.epub")), _bytes);
    }
    Names lines()
    {
        Names lines;
        std::istringstream text(program.window.errorListFake.text);
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }
    std::string libraryFolder() { return program.home.path("Documents/ePubLibrary"); }

    test::LaunchedProgram program;

private:
    Value _stored { "" };
    std::string _bytes;
};

}

TEST_F(BadInput, FolderNamedLikeABookEndsInItsLine)
{
    const auto folder = program.inDownloads("Folder.epub");
    fs::create_directories(folder);
    drop({ folder });
    EXPECT_EQ(lines(), (Names { "Folder.epub --> epub is corrupted (mimetype not identified)" }));
    EXPECT_TRUE(fs::is_directory(folder));
    expectOldBookUnchanged();
}

TEST_F(BadInput, LinkToABookBringsInTheBookAndLeavesItsTarget)
{
    const auto target = program.download("Target.epub");
    const auto link = program.inDownloads("Link.epub");
    fs::create_symlink(target, link);
    moveFiles();
    drop({ link });
    EXPECT_TRUE(isPlainFile(program.inLibrary("Link.epub")));
    EXPECT_TRUE(fs::exists(target));
    EXPECT_EQ(program.catalogue().count(), 2U);
    expectOldBookUnchanged();
}

TEST_F(BadInput, LinkToNothingEndsInItsLine)
{
    const auto link = program.inDownloads("Link.epub");
    fs::create_symlink(program.inDownloads("nowhere.epub"), link);
    drop({ link });
    EXPECT_EQ(lines().size(), 1U);
    EXPECT_EQ(program.catalogue().count(), 1U);
    expectOldBookUnchanged();
}

TEST_F(BadInput, FileThatVanishesBeforeItsTurnEndsInItsLine)
{
    const auto first = program.download("First.epub");
    const auto second = program.download("Second.epub");
    program.runLoop.holdsBackground = true;
    drop({ first, second });
    fs::remove(second);
    program.runLoop.finishBackground();
    program.runLoop.runPosted();
    EXPECT_EQ(lines(), (Names { "Second.epub --> epub is corrupted (mimetype not identified)" }));
    EXPECT_EQ(program.titles(), (Names { "Old", "First" }));
    expectOldBookUnchanged();
}

TEST_F(BadInput, FileThatChangesIntoSomethingElseEndsInItsLine)
{
    const auto file = program.download("Sea.epub");
    program.runLoop.holdsBackground = true;
    drop({ file });
    test::makeFile(file, "half a download");
    program.runLoop.finishBackground();
    program.runLoop.runPosted();
    EXPECT_EQ(lines().size(), 1U);
    EXPECT_EQ(program.catalogue().count(), 1U);
    expectOldBookUnchanged();
}

TEST_F(BadInput, LibraryFolderThatTakesNoFilesLosesNoSource)
{
    const auto file = program.download("Sea.epub");
    program.workspace.failing.insert("Sea.epub");
    moveFiles();
    drop({ file });
    EXPECT_TRUE(fileExists(file));
    EXPECT_FALSE(fileExists(program.inLibrary("Sea.epub")));
    EXPECT_TRUE(lines().empty());
    expectOldBookUnchanged();
}

TEST_F(BadInput, LibraryFolderThatIsReadOnlyKeepsWhatItHolds)
{
    const auto file = program.download("Sea.epub");
    fs::permissions(libraryFolder(), fs::perms::owner_read | fs::perms::owner_exec);
    moveFiles();
    drop({ file });
    fs::permissions(libraryFolder(), fs::perms::owner_all);
    // For root the copy succeeds; for other users the source remains.
    EXPECT_NE(fileExists(file), fileExists(program.inLibrary("Sea.epub")));
    expectOldBookUnchanged();
}

TEST_F(BadInput, LibraryFolderThatIsGoneLosesNoSource)
{
    const auto away = program.home.path("Away");
    fs::rename(libraryFolder(), away);
    const auto file = program.download("Sea.epub");
    moveFiles();
    drop({ file });
    EXPECT_TRUE(fileExists(file));
    EXPECT_FALSE(fileExists(libraryFolder()));
    fs::rename(away, libraryFolder());
    expectOldBookUnchanged();
}

TEST_F(BadInput, ThousandFilesOfWhichHalfAreBrokenEndInFiveHundredBooksAndLines)
{
    // The files are imported in place, which saves the time for copies.
    program.defaults.removeObject("DragDropMode");
    Names files;
    for (int i = 0; i < 500; ++i) {
        files.push_back(program.download("Good" + std::to_string(1000 + i) + ".epub", EpubBuilder().chapters(1)));
        files.push_back(program.downloadBroken("Bad" + std::to_string(1000 + i) + ".epub"));
    }
    drop(files);
    EXPECT_EQ(program.catalogue().count(), 501U);
    EXPECT_EQ(program.storedCount(), 501U);
    EXPECT_EQ(lines().size(), 500U);
    EXPECT_EQ(lines().front().substr(0, 12), "Bad1000.epub");
    expectOldBookUnchanged();
}

TEST_F(BadInput, SameFileTenTimesInOneDropHasOneArchive)
{
    drop(Names(10, program.download("Sea.epub")));
    EXPECT_EQ(program.catalogue().count(), 11U);
    EXPECT_EQ(folderEntries(libraryFolder())->size(), 2U);
    for (std::size_t i = 1; i < 11; ++i)
        EXPECT_EQ(program.book(i)->epubPath(), program.inLibrary("Sea.epub"));
    expectOldBookUnchanged();
}

TEST_F(BadInput, SameFileTenTimesOneAfterTheOtherIsOneBook)
{
    const auto file = program.download("Sea.epub");
    for (int i = 0; i < 10; ++i)
        drop({ file });
    EXPECT_EQ(program.titles(), (Names { "Old", "Sea" }));
    EXPECT_TRUE(lines().empty());
    expectOldBookUnchanged();
}

TEST_F(BadInput, NamesThatDifferOnlyInCaseAreDifferentBooks)
{
    drop({ program.download("Sea.epub"), program.download("sea.epub") });
    EXPECT_EQ(program.titles(), (Names { "Old", "Sea", "sea" }));
    EXPECT_TRUE(fileExists(program.inLibrary("Sea.epub")));
    EXPECT_TRUE(fileExists(program.inLibrary("sea.epub")));
    expectOldBookUnchanged();
}

TEST_F(BadInput, NamesThatDifferOnlyInUnicodeFormAreDifferentBooks)
{
    const std::string composed = "Caf\u00e9.epub";
    const std::string decomposed = "Cafe\u0301.epub";
    drop({ program.download(composed), program.download(decomposed) });
    EXPECT_EQ(program.catalogue().count(), 3U);
    EXPECT_TRUE(fileExists(program.inLibrary(composed)));
    EXPECT_TRUE(fileExists(program.inLibrary(decomposed)));
    expectOldBookUnchanged();
}

}
