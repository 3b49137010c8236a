#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "tests/app/Program.hpp"
#include "tests/support/ForkedTest.hpp"
#include "tests/support/ReadOnlyFolder.hpp"
#include "tests/support/SmallDisk.hpp"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace pagora {

using test::EpubBuilder;
using test::Program;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

namespace {

// A home folder used by several consecutive runs of the program.
struct BrokenDisk : testing::Test {
    // Deletes the log of the store, which loses changes that are only in it.
    void removeLog() const
    {
        for (const char* name : { "defaults.sqlite-wal", "defaults.sqlite-shm" })
            removeItem(home.path(std::string("defaults/") + name));
    }

    const LogCapture quiet { [](const std::string&) {} };
    TemporaryFolder home;
};

// Returns incompressible bytes.
std::string noise(std::size_t size)
{
    std::string bytes(size, '\0');
    unsigned state = 1;
    for (auto& byte : bytes)
        byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

}

TEST_F(BrokenDisk, ACopyThatFailsMidwayLeavesNoHalfArchiveAndItsSource)
{
    test::inForkedProcess([this] {
        Program program(home.path());
        const auto large = program.download("Large.epub", EpubBuilder().member("OEBPS/noise", noise(400'000)));
        const auto bytes = test::contentsOf(large);
        const auto small = program.download("Small.epub");
        createFolder(home.path("Documents"));
        test::SmallDisk disk(home.path("Documents"), 200'000);
        program.launch();
        program.defaults.setObject("DragDropMode", "Move");
        program.drop({ large, small });
        EXPECT_EQ(folderEntries(program.inLibrary("")), Names { "Small.epub" });
        EXPECT_EQ(test::contentsOf(large), bytes);
        EXPECT_FALSE(fileExists(small));
        EXPECT_EQ(program.titles(), (Names { "Large", "Small" }));

        // With free space again, the book is removed and added again.
        disk.makeRoom();
        program.controller->deleteItemsFromLibrary({ program.book(0) });
        program.drop({ large });
        EXPECT_EQ(test::contentsOf(program.inLibrary("Large.epub")), bytes);
        EXPECT_FALSE(fileExists(large));
    });
}

TEST_F(BrokenDisk, APlaceThatCannotBeSavedIsSavedLater)
{
    {
        Program program(home.path());
        program.launch();
        program.import({ "Sea.epub" });
    }
    test::inForkedProcess([this] {
        Names told;
        std::filesystem::rename(home.path("defaults"), home.path("stored"));
        createFolder(home.path("defaults"));
        test::SmallDisk disk(home.path("defaults"), 600'000);
        std::filesystem::copy(home.path("stored"), home.path("defaults"), std::filesystem::copy_options::recursive);
        Program program(home.path());
        program.launch();
        program.defaults.setWhenInTrouble([&told](const std::string& line) { told.push_back(line); });
        // Fills the disk.
        program.defaults.setObject("Large", noise(2'000'000));
        for (const int place : { 1, 2 }) {
            program.doubleClick(0);
            program.reader().webView.finishDocument();
            program.epubReader().setActiveSplitIndex(static_cast<std::uint64_t>(place));
            program.closeReader();
        }
        EXPECT_EQ(told.size(), 1u);
        EXPECT_NE(told.at(0).find("The library cannot be saved in "), std::string::npos);
        disk.makeRoom();
        EXPECT_TRUE(program.defaults.synchronize());
        const UserDefaults stored(home.path("defaults"));
        const auto& problem = stored.openingProblem();
        EXPECT_EQ(problem, "");
        EXPECT_EQ(integerFrom(stored.objectForKey("BookData")->array()->at(0).find("LastInd")), 2);
    });
}

TEST_F(BrokenDisk, InAReadOnlyHomeTheProgramStartsAndSaysSo)
{
    test::inForkedProcess([this] {
        test::makeReadOnly(home.path());
        Program program(home.path());
        program.launch();
        EXPECT_EQ(program.defaults.openingProblem(),
            "The library cannot be saved in " + home.path("defaults") + "; what changes is lost when Pagora ends.");
        EXPECT_FALSE(program.controller->state().launch._initProcessing());
        EXPECT_EQ(program.catalogue().count(), 0u);
        EXPECT_FALSE(program.defaults.synchronize());
    });
    test::makeWritable(home.path());
}

TEST_F(BrokenDisk, AStoredLibraryIsShownFromAReadOnlyHome)
{
    Names titles { "Sea", "Land" };
    {
        Program program(home.path());
        program.launch();
        program.import({ "Sea.epub", "Land.epub" });
    }
    test::inForkedProcess([&] {
        test::makeReadOnly(home.path());
        Program program(home.path());
        program.launch();
        EXPECT_EQ(program.titles(), titles);
        EXPECT_NE(program.defaults.openingProblem(), "");
        EXPECT_FALSE(program.window.errorWinFake.visible);
    });
    test::makeWritable(home.path());
    for (const char* name : { "Sea.epub", "Land.epub" })
        EXPECT_TRUE(fileExists(home.path(std::string("Documents/ePubLibrary/") + name)));
}

TEST_F(BrokenDisk, ALibraryOnARemovedDriveComesBackWhole)
{
    createFolder(home.path("Drive/ePubLibrary"));
    createFolder(home.path("Documents"));
    std::filesystem::create_symlink(home.path("Drive/ePubLibrary"), home.path("Documents/ePubLibrary"));
    Value stored = 0;
    {
        Program program(home.path());
        program.launch();
        program.import({ "Sea.epub", "Land.epub" });
        stored = *program.defaults.objectForKey("BookData");
    }
    std::filesystem::rename(home.path("Drive"), home.path("Away"));
    {
        Program program(home.path());
        program.launch();
        EXPECT_EQ(program.titles(), (Names { "Sea", "Land" }));
        program.doubleClick(0);
        EXPECT_EQ(program.window.alerts.back().message, "ePub does not exists!");
        program.controller->resetAppSettings();
        EXPECT_EQ(program.titles(), (Names { "Sea", "Land" }));
    }
    std::filesystem::rename(home.path("Away"), home.path("Drive"));
    Program program(home.path());
    program.launch();
    EXPECT_EQ(program.defaults.objectForKey("BookData"), stored);
    EXPECT_FALSE(program.window.errorWinFake.visible);
    program.doubleClick(0);
    EXPECT_TRUE(program.isReading());
}

TEST_F(BrokenDisk, AMoveToARemovedDriveKeepsItsSource)
{
    createFolder(home.path("Documents"));
    std::filesystem::create_symlink(home.path("Drive/ePubLibrary"), home.path("Documents/ePubLibrary"));
    Program program(home.path());
    program.launch();
    program.defaults.setObject("DragDropMode", "Move");
    program.import({ "Sea.epub" });
    EXPECT_TRUE(fileExists(program.inDownloads("Sea.epub")));
}

TEST_F(BrokenDisk, ALostStoreIsBuiltAnewFromTheLibraryFolder)
{
    {
        Program program(home.path());
        program.launch();
        program.import({ "Sea.epub", "Land.epub" });
    }
    removeLog();
    for (const char* name : { "defaults.sqlite", "defaults-backup.sqlite" })
        test::makeFile(home.path(std::string("defaults/") + name), "no store");
    Program program(home.path());
    program.launch();
    EXPECT_NE(program.defaults.openingProblem().find("the library is read from its folder again"), std::string::npos);
    auto titles = program.titles();
    std::sort(titles.begin(), titles.end());
    EXPECT_EQ(titles, (Names { "Land", "Sea" }));
    EXPECT_EQ(program.storedCount(), 2u);
}

TEST_F(BrokenDisk, AStoreOfALaterVersionIsKeptAsideAndTheLibraryBuiltAnew)
{
    {
        Program program(home.path());
        program.launch();
        program.import({ "Sea.epub" });
    }
    removeLog();
    const auto file = home.path("defaults/defaults.sqlite");
    // The version in the file's header.
    auto later = test::contentsOf(file);
    later.replace(60, 4, std::string("\0\0\0\x63", 4));
    test::makeFile(file, later);
    Program program(home.path());
    program.launch();
    EXPECT_NE(
        program.defaults.openingProblem().find("by a later version of the program and is kept as defaults-newer-"),
        std::string::npos);
    EXPECT_EQ(program.titles(), Names { "Sea" });
    bool isKept = false;
    for (const auto& name : folderEntries(home.path("defaults")).value_or(Names {}))
        isKept = isKept
            || (name.starts_with("defaults-newer-") && test::contentsOf(home.path("defaults/" + name)) == later);
    EXPECT_TRUE(isKept);
}

}
