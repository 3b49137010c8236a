#include "base/Log.hpp"
#include "files/Files.hpp"
#include "store/UserDefaults.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

using namespace pagora;
using test::contentsOf;
using test::makeFile;
using test::TemporaryFolder;

namespace {

constexpr std::size_t pageSize = 4096;

Value entry(int number)
{
    return Value::Dictionary { { "Title", std::string(200, 't') }, { "LastInd", number },
        { "CoverImage", Data(std::string(6000, char('a' + number))) } };
}

Value books(int count)
{
    Value::Array array;
    for (int i = 0; i < count; ++i)
        array.push_back(entry(i));
    return array;
}

// A stored library, and copies of its file and backup in separate folders for damaging.
struct DefaultsDamage : testing::Test {
    DefaultsDamage()
    {
        UserDefaults defaults(folder.path("whole"));
        defaults.setObject("DragDropMode", "Copy");
        for (int count = 1; count <= bookCount; ++count) {
            defaults.setObject("BookData", books(count));
            defaults.synchronize();
        }
        defaults.waitForBackup();
    }

    std::string bytesOf(const std::string& name) const { return contentsOf(folder.path("whole/" + name)); }
    // Creates a folder with a file and a backup of these bytes. Returns its path.
    std::string folderWith(const std::string& file, const std::string& backup) const
    {
        static int number = 0;
        const auto path = folder.path("damaged" + std::to_string(++number));
        makeFile(path + "/defaults.sqlite", file);
        makeFile(path + "/defaults-backup.sqlite", backup);
        return path;
    }

    // Expects that the program starts with all books and can store, and that renamed files are unchanged. Returns
    // whether a file was renamed.
    bool expectEverything(const std::string& path, const std::string& damaged) const
    {
        std::string problem;
        bool isSetAside = false;
        {
            UserDefaults defaults(path);
            problem = defaults.openingProblem();
            EXPECT_EQ(defaults.objectForKey("BookData"), books(bookCount));
            EXPECT_EQ(defaults.stringForKey("DragDropMode"), "Copy");
            defaults.setObject("BookData", books(bookCount + 1));
            EXPECT_TRUE(defaults.synchronize());
        }
        EXPECT_EQ(problem.find('\n'), std::string::npos);
        for (const auto& item : std::filesystem::directory_iterator(path)) {
            if (item.path().filename().string().starts_with("defaults-damaged") && contentsOf(item.path()) == damaged)
                isSetAside = true;
        }
        EXPECT_TRUE(problem.empty() || isSetAside) << problem;
        EXPECT_EQ(UserDefaults(path).objectForKey("BookData"), books(bookCount + 1));
        return isSetAside;
    }

    static constexpr int bookCount = 5;
    const LogCapture quiet { [](const std::string&) {} };
    TemporaryFolder folder;
};

std::string truncated(std::string bytes, std::size_t size)
{
    bytes.resize(size);
    return bytes;
}

}

TEST_F(DefaultsDamage, AFileThatEndsAnywhereIsSetAsideForItsBackup)
{
    // If less than a page is missing, it may be unused space.
    constexpr std::size_t page = 4096;
    const auto whole = bytesOf("defaults.sqlite");
    for (std::size_t size = 0; size + page <= whole.size(); size += whole.size() / 12) {
        SCOPED_TRACE("ends at " + std::to_string(size));
        const auto damaged = truncated(whole, size);
        EXPECT_TRUE(expectEverything(folderWith(damaged, bytesOf("defaults-backup.sqlite")), damaged));
    }
}

TEST_F(DefaultsDamage, AnyZeroedPageLosesNothing)
{
    const auto whole = bytesOf("defaults.sqlite");
    ASSERT_GT(whole.size(), 10 * pageSize);
    for (std::size_t page = 0; page < whole.size(); page += pageSize) {
        SCOPED_TRACE("page " + std::to_string(page / pageSize));
        auto damaged = whole;
        std::fill_n(damaged.begin() + static_cast<std::ptrdiff_t>(page), pageSize, '\0');
        expectEverything(folderWith(damaged, bytesOf("defaults-backup.sqlite")), damaged);
    }
}

TEST_F(DefaultsDamage, RandomBytesAnywhereLoseNothing)
{
    const auto whole = bytesOf("defaults.sqlite");
    std::mt19937 random(7);
    for (int round = 0; round < 15; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        auto damaged = whole;
        const auto start = random() % damaged.size();
        const auto size = std::min<std::size_t>(damaged.size() - start, 1 + random() % (2 * pageSize));
        std::generate_n(damaged.begin() + static_cast<std::ptrdiff_t>(start), size,
            [&random] { return static_cast<char>(random()); });
        expectEverything(folderWith(damaged, bytesOf("defaults-backup.sqlite")), damaged);
    }
}

TEST_F(DefaultsDamage, ADamagedBackupIsMadeAnew)
{
    const auto whole = bytesOf("defaults.sqlite");
    const auto backup = bytesOf("defaults-backup.sqlite");
    for (const auto& damaged : { truncated(backup, 0), truncated(backup, backup.size() / 3),
             std::string(backup.size(), '?'), std::string(pageSize, '\0') + backup.substr(pageSize) }) {
        const auto path = folderWith(whole, damaged);
        {
            UserDefaults defaults(path);
            const auto& problem = defaults.openingProblem();
            EXPECT_EQ(problem, "");
            defaults.waitForBackup();
        }
        std::filesystem::remove(path + "/defaults.sqlite");
        EXPECT_EQ(UserDefaults(path).objectForKey("BookData"), books(bookCount));
    }
}

TEST_F(DefaultsDamage, WithFileAndBackupDamagedAnywhereTheProgramStartsAndStores)
{
    const auto whole = bytesOf("defaults.sqlite");
    for (const std::size_t size : { std::size_t(0), std::size_t(100), whole.size() / 4, whole.size() / 2 }) {
        SCOPED_TRACE("end at " + std::to_string(size));
        const auto path = folderWith(truncated(whole, size), truncated(bytesOf("defaults-backup.sqlite"), size));
        {
            UserDefaults defaults(path);
            const auto& problem = defaults.openingProblem();
            EXPECT_NE(problem.find("the library is read from its folder again"), std::string::npos) << problem;
            EXPECT_TRUE(defaults.allKeys().empty());
            defaults.setObject("BookData", books(1));
            EXPECT_TRUE(defaults.synchronize());
        }
        EXPECT_EQ(UserDefaults(path).objectForKey("BookData"), books(1));
    }
}

// A store after a kill, with the last flush only in the log.
TEST_F(DefaultsDamage, ADamagedLogLeavesTheStateOfAnEarlierFlush)
{
    const auto path = folder.path("killed");
    const pid_t child = fork();
    if (child == 0) {
        UserDefaults defaults(path);
        for (int count = 1; count <= bookCount; ++count) {
            defaults.setObject("BookData", books(count));
            defaults.synchronize();
        }
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    const auto file = contentsOf(path + "/defaults.sqlite");
    const auto log = contentsOf(path + "/defaults.sqlite-wal");
    ASSERT_FALSE(log.empty());
    std::mt19937 random(3);
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        auto damaged = truncated(log, round % 2 ? log.size() : random() % log.size());
        if (round % 2)
            damaged[random() % damaged.size()] ^= 0x40;
        const auto copy = folderWith(file, contentsOf(path + "/defaults-backup.sqlite"));
        if (!fileExists(path + "/defaults-backup.sqlite"))
            std::filesystem::remove(copy + "/defaults-backup.sqlite");
        makeFile(copy + "/defaults.sqlite-wal", damaged);
        UserDefaults defaults(copy);
        const auto stored = defaults.objectForKey("BookData");
        const int count = stored ? static_cast<int>(stored->array()->size()) : 0;
        EXPECT_EQ(stored.value_or(books(0)), books(count));
        defaults.setObject("BookData", books(count + 1));
        EXPECT_TRUE(defaults.synchronize());
    }
}

TEST_F(DefaultsDamage, ThatAppearsWhileTheStoreIsOpenIsToldAndRepaired)
{
    const auto path = folderWith(bytesOf("defaults.sqlite"), bytesOf("defaults-backup.sqlite"));
    std::vector<std::string> lines;
    {
        UserDefaults defaults(path);
        defaults.setWhenInTrouble([&lines](const std::string& line) { lines.push_back(line); });
        auto shown = *defaults.objectForKey("BookData");
        SQLite::Database(path + "/defaults.sqlite", SQLite::OPEN_READWRITE).exec("DROP TABLE data");
        defaults.setObject("BookData", books(bookCount + 1));
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(shown, books(bookCount));
    }
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].find("damaged and is kept as defaults-damaged-"), std::string::npos);
    EXPECT_EQ(UserDefaults(path).objectForKey("BookData"), books(bookCount + 1));
}
