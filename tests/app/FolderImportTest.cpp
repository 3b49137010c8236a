#include "app/LibraryFiles.hpp"
#include "tests/app/Program.hpp"

#include <filesystem>
#include <gtest/gtest.h>

namespace pagora {

using Names = std::vector<std::string>;

namespace {

struct FolderImport : testing::Test {
    std::string inShelf(const std::string& name) { return program.home.path("Shelf/" + name); }
    void choose(std::optional<std::string> folder)
    {
        program.window.actions.importFolder();
        program.window.folderPanels.back().chosen(std::move(folder));
        program.runLoop.runPosted();
    }

    test::LaunchedProgram program;
};

}

TEST_F(FolderImport, TakesTheBooksInTheFolderAndBelowIt)
{
    program.writeBook(inShelf("Sea.epub"));
    program.writeBook(inShelf("old/Plan.epub"));
    program.writeBook(inShelf("old/older/Tale.EPUB"));
    test::makeFile(inShelf("notes.txt"), "no book");
    choose(inShelf(""));
    EXPECT_EQ(program.titles(), (Names { "Sea", "Plan", "Tale" }));
}

TEST_F(FolderImport, AsksForAFolderAndDoesNothingWithoutOne)
{
    choose(std::nullopt);
    EXPECT_EQ(program.window.folderPanels.back().message, "Choose a folder with books for Pagora Library");
    EXPECT_TRUE(program.titles().empty());
    EXPECT_TRUE(program.window.alerts.empty());
}

TEST_F(FolderImport, TellsOfAFolderWithoutBooks)
{
    test::makeFile(inShelf("notes.txt"), "no book");
    choose(inShelf(""));
    ASSERT_EQ(program.window.alerts.size(), 1U);
    EXPECT_EQ(program.window.alerts.front().title, "No books found");
}

TEST_F(FolderImport, TellsOfAFolderThatIsGone)
{
    choose("/nowhere/at all");
    EXPECT_EQ(program.window.alerts.size(), 1U);
}

TEST_F(FolderImport, BooksThatAreThereAlreadyAreSkipped)
{
    program.writeBook(inShelf("Sea.epub"));
    choose(inShelf(""));
    choose(inShelf(""));
    EXPECT_EQ(program.titles(), Names { "Sea" });
}

TEST_F(FolderImport, BooksThatComeInEndASearch)
{
    program.writeBook(inShelf("Sea.epub"));
    choose(inShelf(""));
    EXPECT_EQ(program.window.timesSearchEnded, 1);
    choose(inShelf(""));
    EXPECT_EQ(program.window.timesSearchEnded, 1);
}

TEST(BooksBelow, LeavesOutHiddenFilesAndLinksToFolders)
{
    const test::TemporaryFolder folder;
    for (const char* name : { "a.epub", ".b.epub", ".Trash/c.epub", "d/e.epub" }) {
        createFolder(deletingLastPathComponent(folder.path(name)));
        writeFile(folder.path(name), "a book");
    }
    std::filesystem::create_directory_symlink(folder.path(), folder.path("d/loop"));
    std::filesystem::create_directory(folder.path("folder.epub"));
    EXPECT_EQ(booksBelow(folder.path()), (Names { folder.path("a.epub"), folder.path("d/e.epub") }));
}

}
