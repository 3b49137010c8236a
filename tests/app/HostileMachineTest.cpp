// Imports on a faulty machine, with the inspection process.

#include "base/Log.hpp"
#include "tests/app/Program.hpp"
#include "tests/support/ForkedTest.hpp"
#include "tests/support/ReadOnlyFolder.hpp"
#include "tests/support/SmallDisk.hpp"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

namespace pagora {

using test::EpubBuilder;
using test::Program;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

namespace {

struct HostileMachine : testing::Test {
    static Names errorLines(Program& program)
    {
        Names lines;
        for (const auto& text : program.window.errorListFake.texts) {
            const auto more = split(text, '\n');
            lines.insert(lines.end(), more.begin(), more.end());
        }
        return lines;
    }

    const LogCapture quiet { [](const std::string&) {} };
    test::TemporaryFolder home;
};

// Dates all files in the future, as if the clock had been set back.
void dateInTheFuture(const std::string& folder)
{
    const auto future = fs::file_time_type::clock::now() + std::chrono::hours(24 * 365);
    for (const auto& item : fs::recursive_directory_iterator(folder))
        fs::last_write_time(item.path(), future);
}

}

TEST_F(HostileMachine, BooksThatFindNoRoomToBeInspectedEndInTheirLinesAndComeInLater)
{
    test::inForkedProcess([this] {
        createFolder(home.path("Caches"));
        test::SmallDisk disk(home.path("Caches"), 20'000);
        Program program(home.path());
        program.defaults.setObject("DragDropMode", "Move");
        program.keepStoredValues();
        program.launch();
        const auto large = EpubBuilder().member("mimetype", "application/epub+zip" + std::string(100'000, ' '));
        const auto first = program.download("First.epub", large);
        const auto second = program.download("Second.epub", large);
        program.drop({ first, second });
        EXPECT_EQ(errorLines(program),
            (Names { "First.epub --> epub can not be read (the disk is full or can not be written)",
                "Second.epub --> epub can not be read (the disk is full or can not be written)" }));
        EXPECT_TRUE(fileExists(first));
        EXPECT_TRUE(fileExists(second));

        disk.makeRoom();
        program.drop({ first, second });
        EXPECT_EQ(program.titles(), (Names { "First", "Second" }));
        EXPECT_TRUE(fileExists(program.inLibrary("First.epub")));
        EXPECT_TRUE(fileExists(program.inLibrary("Second.epub")));
    });
}

TEST_F(HostileMachine, ContentsThatFindNoRoomAreNotTakenForNone)
{
    test::inForkedProcess([this] {
        createFolder(home.path("Caches"));
        test::SmallDisk disk(home.path("Caches"), 100'000);
        Program program(home.path());
        program.keepStoredValues();
        program.launch();
        const auto book
            = program.download("Sea.epub", EpubBuilder().member("OEBPS/toc.ncx", std::string(900'000, ' ')));
        program.drop({ book });
        EXPECT_EQ(errorLines(program),
            Names { "Sea.epub --> epub can not be read (the disk is full or can not be written)" });
        EXPECT_EQ(program.catalogue().count(), 0u);
    });
}

TEST_F(HostileMachine, ImportsIntoAReadOnlyHomeEndInTheirLines)
{
    const auto book = EpubBuilder().write(home.path("Sea.epub"));
    createFolder(home.path("home"));
    test::inForkedProcess([&] {
        test::makeReadOnly(home.path("home"));
        Program program(home.path("home"));
        program.launch();
        program.defaults.setObject("DragDropMode", "Move");
        program.drop({ book });
        EXPECT_EQ(errorLines(program).size(), 1u);
        EXPECT_EQ(program.catalogue().count(), 0u);
    });
    test::makeWritable(home.path("home"));
    EXPECT_TRUE(fileExists(book));
}

TEST_F(HostileMachine, BooksThatAreReplacedWhileTheyAreReadAreWholeInTheLibrary)
{
    Program program(home.path());
    program.launch();
    const auto one = program.writeBook(home.path("One/Sea.epub"), EpubBuilder().author("One"));
    const auto other = program.writeBook(home.path("Other/Sea.epub"), EpubBuilder().author("Other").chapters(9));
    Names versions { test::contentsOf(one), test::contentsOf(other), "half a download" };
    Names files;
    for (int i = 0; i < 12; ++i)
        files.push_back(program.download("Book" + std::to_string(i) + ".epub"));
    const auto replacements = versions;
    for (const auto& file : files)
        versions.push_back(test::contentsOf(file));
    std::atomic<bool> isOver = false;
    std::thread replacing([&] {
        for (std::size_t round = 0; !isOver; ++round) {
            for (const auto& file : files) {
                const auto beside = home.path("beside");
                test::makeFile(beside, replacements[round % replacements.size()]);
                fs::rename(beside, file);
            }
        }
    });
    program.drop(files);
    isOver = true;
    replacing.join();
    EXPECT_EQ(program.catalogue().count() + errorLines(program).size(), files.size());
    for (std::size_t i = 0; i < program.catalogue().count(); ++i) {
        const auto& archive = *program.book(i)->epubPath();
        EXPECT_NE(std::find(versions.begin(), versions.end(), test::contentsOf(archive)), versions.end()) << archive;
    }
    EXPECT_EQ(program.storedCount(), program.catalogue().count());
}

// PAGORA_BROKEN_FILES sets their number.
TEST_F(HostileMachine, ManyBrokenFilesEndInALineEachAndTheBookAmongThemComesIn)
{
    const char* const asked = std::getenv("PAGORA_BROKEN_FILES");
    const int count = asked ? std::atoi(asked) : 300;
    Program program(home.path());
    program.launch();
    Names files;
    for (int i = 0; i < count; ++i)
        files.push_back(program.downloadBroken(std::to_string(i) + ".epub"));
    files.insert(files.begin() + count / 2, program.download("Sea.epub"));
    program.drop(files);
    EXPECT_EQ(program.titles(), Names { "Sea" });
    const auto lines = errorLines(program);
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(lines.back(), std::to_string(count - 1) + ".epub --> epub is corrupted (mimetype not identified)");
    EXPECT_EQ(folderEntries(program.inLibrary("")), Names { "Sea.epub" });
}

TEST_F(HostileMachine, AClockThatIsSetBackLosesNothing)
{
    {
        Program program(home.path());
        program.launch();
        program.import({ "Sea.epub" });
        program.doubleClick(0);
        program.reader().webView.finishDocument();
        program.epubReader().setActiveSplitIndex(1);
        program.closeReader();
    }
    dateInTheFuture(home.path());
    for (const char* name : { "Plan.epub", "Tale.epub" }) {
        Program program(home.path());
        program.launch();
        EXPECT_EQ(program.defaults.openingProblem(), "");
        EXPECT_EQ(program.titles().front(), "Sea");
        EXPECT_EQ(program.book(0)->lastIndex(), 1u);
        program.import({ name });
        program.doubleClick(0);
        EXPECT_TRUE(program.isReading());
        program.closeReader();
    }
    Program program(home.path());
    program.launch();
    EXPECT_EQ(program.titles(), (Names { "Sea", "Plan", "Tale" }));
    EXPECT_EQ(program.storedCount(), 3u);
}

}
