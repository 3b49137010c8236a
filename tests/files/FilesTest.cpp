#include "files/Files.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

namespace pagora {

namespace fs = std::filesystem;
using test::contentsOf;
using test::makeFile;
using test::TemporaryFolder;

TEST(Files, DanglingLinkDoesNotExist)
{
    TemporaryFolder folder;
    fs::create_symlink(folder.path("nothing"), folder.path("link"));
    EXPECT_FALSE(fileExists(folder.path("link")));
    EXPECT_FALSE(isPlainFile(folder.path("link")));
}

TEST(Files, PathWithANulByteNamesNothing)
{
    TemporaryFolder folder;
    const auto path = makeFile(folder.path("a"), "x");
    EXPECT_FALSE(fileExists(path + std::string("\0.txt", 5)));
    EXPECT_FALSE(readFile(path + std::string("\0.txt", 5)));
}

TEST(Files, EntriesOfAFolderAreItsNames)
{
    TemporaryFolder folder;
    makeFile(folder.path("a"), "");
    makeFile(folder.path("b/c"), "");
    auto names = folderEntries(folder.path());
    ASSERT_TRUE(names);
    std::sort(names->begin(), names->end());
    EXPECT_EQ(*names, (std::vector<std::string> { "a", "b" }));
    EXPECT_FALSE(folderEntries(folder.path("a")));
}

TEST(Files, FolderIsMadeWithThoseAboveIt)
{
    TemporaryFolder folder;
    EXPECT_TRUE(createFolder(folder.path("a/b/c")));
    EXPECT_TRUE(createFolder(folder.path("a/b/c")));
    EXPECT_TRUE(isFolder(folder.path("a/b/c")));
}

TEST(Files, FolderThatCannotBeMadeIsExplained)
{
    TemporaryFolder folder;
    makeFile(folder.path("a"), "");
    const auto created = createFolder(folder.path("a/b"));
    ASSERT_FALSE(created);
    EXPECT_FALSE(created.reason().empty());
}

TEST(Files, RemovingALinkLeavesItsTarget)
{
    TemporaryFolder folder;
    makeFile(folder.path("kept/file"), "x");
    fs::create_directory(folder.path("gone"));
    fs::create_directory_symlink(folder.path("kept"), folder.path("gone/link"));
    EXPECT_TRUE(removeItem(folder.path("gone")));
    EXPECT_FALSE(fileExists(folder.path("gone")));
    EXPECT_EQ(contentsOf(folder.path("kept/file")), "x");
}

TEST(Files, RemovingNothingFails)
{
    TemporaryFolder folder;
    EXPECT_FALSE(removeItem(folder.path("nothing")));
}

TEST(Files, ReadingStopsAtTheLimit)
{
    TemporaryFolder folder;
    const auto path = makeFile(folder.path("a"), "12345");
    EXPECT_EQ(readFile(path, 5), "12345");
    EXPECT_EQ(readFile(path, 4), std::nullopt);
}

TEST(Files, FolderAndPipeAreNotRead)
{
    TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(readFile(folder.path("pipe")), std::nullopt);
    EXPECT_EQ(readFile(folder.path()), std::nullopt);
}

TEST(Files, WritingReplacesTheFileAndLeavesNothingElse)
{
    TemporaryFolder folder;
    makeFile(folder.path("a"), "old");
    EXPECT_TRUE(writeFile(folder.path("a"), "new"));
    EXPECT_EQ(contentsOf(folder.path("a")), "new");
    EXPECT_EQ(folderEntries(folder.path())->size(), 1u);
}

TEST(Files, WritingIntoAMissingFolderFails)
{
    TemporaryFolder folder;
    EXPECT_FALSE(writeFile(folder.path("nothing/a"), "x"));
}

TEST(Files, FailedWriteLeavesNoPartBehind)
{
    TemporaryFolder folder;
    makeFile(folder.path("a/b"), "");
    EXPECT_FALSE(writeFile(folder.path("a"), "x"));
    EXPECT_EQ(folderEntries(folder.path())->size(), 1u);
}

TEST(Files, WhatASuddenEndLeftUnfinishedIsRemoved)
{
    TemporaryFolder folder;
    makeFile(folder.path(".Sea.epub.part-123"), "half");
    for (const char* name : { ".Sea.epub.part-", ".Sea.epub.part-1a", "Sea.epub.part-123", ".part", "Sea.epub" })
        makeFile(folder.path(name), "whole");
    removeUnfinishedFiles(folder.path());
    EXPECT_FALSE(fileExists(folder.path(".Sea.epub.part-123")));
    EXPECT_EQ(folderEntries(folder.path())->size(), 5u);
}

TEST(Files, WhatIsBeingWrittenIsNotTakenForUnfinished)
{
    TemporaryFolder folder;
    makeFile(folder.path("source"), std::string(1 << 20, 's'));
    for (int i = 0; i < 20; ++i) {
        std::atomic<bool> done = false;
        std::jthread remover([&] {
            while (!done)
                removeUnfinishedFiles(folder.path());
        });
        EXPECT_TRUE(copyFile(folder.path("source"), folder.path("copy" + std::to_string(i))));
        done = true;
    }
    EXPECT_EQ(folderEntries(folder.path())->size(), 21u);
}

TEST(Files, EmptyFolderIsMadeOfNothingAFileALinkAndAFullFolder)
{
    TemporaryFolder folder;
    makeFile(folder.path("full/in/here"), "x");
    makeFile(folder.path("file"), "x");
    createFolder(folder.path("target"));
    makeFile(folder.path("target/kept"), "x");
    std::filesystem::create_directory_symlink(folder.path("target"), folder.path("link"));
    for (const auto* name : { "new/below", "full", "file", "link" }) {
        makeEmptyFolder(folder.path(name));
        EXPECT_EQ(folderEntries(folder.path(name)), (std::vector<std::string> {})) << name;
    }
    EXPECT_TRUE(fileExists(folder.path("target/kept")));
}

TEST(Files, CopyHasTheBytesAndLeavesNothingElse)
{
    TemporaryFolder folder;
    const std::string bytes(700'000, 'x');
    makeFile(folder.path("from"), bytes);
    EXPECT_TRUE(copyFile(folder.path("from"), folder.path("to")));
    EXPECT_EQ(contentsOf(folder.path("to")), bytes);
    EXPECT_EQ(folderEntries(folder.path())->size(), 2u);
}

TEST(Files, CopyOfAnEmptyFileIsEmpty)
{
    TemporaryFolder folder;
    makeFile(folder.path("from"), "");
    EXPECT_TRUE(copyFile(folder.path("from"), folder.path("to")));
    EXPECT_TRUE(fileExists(folder.path("to")));
}

TEST(Files, CopyUnderTheLongestNameWorks)
{
    TemporaryFolder folder;
    makeFile(folder.path("from"), "x");
    EXPECT_TRUE(copyFile(folder.path("from"), folder.path(std::string(255, 'n'))));
}

TEST(Files, CopyNeverOverwritesAnotherFile)
{
    TemporaryFolder folder;
    makeFile(folder.path("from"), "new");
    makeFile(folder.path("to"), "old");
    EXPECT_FALSE(copyFile(folder.path("from"), folder.path("to")));
    EXPECT_EQ(contentsOf(folder.path("to")), "old");
    EXPECT_EQ(folderEntries(folder.path())->size(), 2u);
}

TEST(Files, CopyOntoItselfSucceedsAndDoesNothing)
{
    TemporaryFolder folder;
    makeFile(folder.path("a"), "x");
    fs::create_symlink(folder.path("a"), folder.path("link"));
    EXPECT_TRUE(copyFile(folder.path("a"), folder.path("a")));
    EXPECT_TRUE(copyFile(folder.path("a"), folder.path("link")));
    EXPECT_EQ(contentsOf(folder.path("a")), "x");
}

TEST(Files, CopyDoesNotWriteThroughADanglingLink)
{
    TemporaryFolder folder;
    makeFile(folder.path("from"), "x");
    fs::create_symlink(folder.path("nothing"), folder.path("to"));
    EXPECT_FALSE(copyFile(folder.path("from"), folder.path("to")));
    EXPECT_FALSE(fileExists(folder.path("nothing")));
}

TEST(Files, MissingSourceIsNotCopied)
{
    TemporaryFolder folder;
    EXPECT_FALSE(copyFile(folder.path("from"), folder.path("to")));
    EXPECT_TRUE(folderEntries(folder.path())->empty());
}

}
