#include "store/DefaultsRecovery.hpp"

#include "base/Log.hpp"
#include "store/UserDefaults.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <SQLiteCpp/SQLiteCpp.h>

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace pagora;
using test::TemporaryFolder;

namespace {

// A folder with a flushed store of `count` entries.
class StoredFolder {
public:
    explicit StoredFolder(int count = 200)
    {
        UserDefaults defaults(folder.path());
        Value::Array array;
        for (int i = 0; i < count; ++i)
            array.push_back(Value::Dictionary { { "Title", std::string(300, 't') }, { "LastInd", i } });
        stored = array;
        defaults.setObject("BookData", stored);
        defaults.synchronize();
    }

    std::string file() const { return folder.path("defaults.sqlite"); }
    std::string backup() const { return folder.path("defaults-backup.sqlite"); }

    // Returns the names of files that were renamed as `kind`.
    std::vector<std::string> setAside(const std::string& kind) const
    {
        std::vector<std::string> names;
        for (const auto& item : std::filesystem::directory_iterator(folder.path())) {
            const std::string name = item.path().filename();
            if (name.starts_with("defaults-" + kind) && name.ends_with(".sqlite"))
                names.push_back(name);
        }
        return names;
    }

    TemporaryFolder folder;
    Value stored = 0;
};

std::string contents(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

void overwrite(const std::string& path, std::size_t offset, const std::string& bytes)
{
    std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(static_cast<std::streamoff>(offset));
    file << bytes;
}

// Expects that the store opens with the stored values, reports the problem in one line and keeps the damaged file
// unchanged.
void expectRestored(const StoredFolder& folder)
{
    const std::string damaged = contents(folder.file());
    const UserDefaults defaults(folder.folder.path());
    const auto& problem = defaults.openingProblem();
    EXPECT_TRUE(defaults.objectForKey("BookData") == folder.stored);
    EXPECT_NE(problem, "");
    EXPECT_EQ(problem.find('\n'), std::string::npos);
    const auto kept = folder.setAside("damaged");
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_NE(problem.find(kept[0]), std::string::npos);
    EXPECT_EQ(contents(folder.folder.path(kept[0])), damaged);
}

}

TEST(DefaultsRecovery, ATruncatedFileIsRestored)
{
    const StoredFolder folder;
    std::filesystem::resize_file(folder.file(), 0);
    expectRestored(folder);
}

TEST(DefaultsRecovery, AHalfFileIsRestored)
{
    const StoredFolder folder;
    std::filesystem::resize_file(folder.file(), std::filesystem::file_size(folder.file()) / 2);
    expectRestored(folder);
}

TEST(DefaultsRecovery, AGarbageHeaderIsRestored)
{
    const StoredFolder folder;
    overwrite(folder.file(), 0, std::string(100, '?'));
    expectRestored(folder);
}

TEST(DefaultsRecovery, FlippedBytesInTheMiddleAreRestored)
{
    const StoredFolder folder;
    const std::string bytes = contents(folder.file());
    overwrite(folder.file(), bytes.find("tttttttt", bytes.size() / 2), "u");
    expectRestored(folder);
}

TEST(DefaultsRecovery, LostRowsAreRestored)
{
    const StoredFolder folder;
    SQLite::Database(folder.file(), SQLite::OPEN_READWRITE).exec("DELETE FROM element WHERE id = 7");
    expectRestored(folder);
}

TEST(DefaultsRecovery, AMissingFileIsRestored)
{
    const StoredFolder folder;
    std::filesystem::remove(folder.file());
    const UserDefaults defaults(folder.folder.path());
    const auto& problem = defaults.openingProblem();
    EXPECT_TRUE(defaults.objectForKey("BookData") == folder.stored);
    EXPECT_NE(problem, "");
}

TEST(DefaultsRecovery, ARestoredStoreStoresAndIsBackedUpAgain)
{
    const StoredFolder folder;
    overwrite(folder.file(), 0, std::string(100, '?'));
    {
        UserDefaults defaults(folder.folder.path());
        defaults.setObject("a", 1);
        EXPECT_TRUE(defaults.synchronize());
    }
    overwrite(folder.file(), 0, std::string(100, '?'));
    const UserDefaults defaults(folder.folder.path());
    EXPECT_EQ(defaults.integerForKey("a"), 1);
    EXPECT_EQ(folder.setAside("damaged").size(), 2u);
}

TEST(DefaultsRecovery, WithBothDamagedTheStoreStartsEmptyAndKeepsBoth)
{
    const StoredFolder folder;
    overwrite(folder.file(), 0, std::string(100, '?'));
    overwrite(folder.backup(), 0, std::string(100, '!'));
    std::string problem;
    {
        UserDefaults defaults(folder.folder.path());
        problem = defaults.openingProblem();
        EXPECT_TRUE(defaults.allKeys().empty());
        defaults.setObject("a", 1);
        EXPECT_TRUE(defaults.synchronize());
    }
    EXPECT_EQ(folder.setAside("damaged").size(), 2u);
    EXPECT_NE(problem.find("read from its folder again"), std::string::npos);
    EXPECT_EQ(UserDefaults(folder.folder.path()).integerForKey("a"), 1);
}

TEST(DefaultsRecovery, ADamagedBackupIsSetAsideAndMadeAnew)
{
    const StoredFolder folder;
    overwrite(folder.backup(), 0, std::string(100, '!'));
    const LogCapture quiet([](const std::string&) {});
    std::string problem;
    {
        const UserDefaults defaults(folder.folder.path());
        problem = defaults.openingProblem();
    }
    EXPECT_EQ(problem, "");
    EXPECT_EQ(folder.setAside("damaged").size(), 1u);
    std::filesystem::remove(folder.file());
    EXPECT_TRUE(UserDefaults(folder.folder.path()).objectForKey("BookData") == folder.stored);
}

TEST(DefaultsRecovery, ANewerFileIsKept)
{
    const StoredFolder folder;
    SQLite::Database(folder.file(), SQLite::OPEN_READWRITE).exec("PRAGMA user_version = 1000");
    const std::string newer = contents(folder.file());
    std::string problem;
    {
        UserDefaults defaults(folder.folder.path());
        problem = defaults.openingProblem();
        defaults.setObject("a", 1);
        EXPECT_TRUE(defaults.synchronize());
    }
    const auto kept = folder.setAside("newer");
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_NE(problem.find(kept[0]), std::string::npos);
    EXPECT_EQ(contents(folder.folder.path(kept[0])), newer);
    EXPECT_EQ(UserDefaults(folder.folder.path()).allKeys(), std::vector<std::string> { "a" });
}

TEST(DefaultsRecovery, AFirstStartIsNoProblem)
{
    const TemporaryFolder folder;
    const UserDefaults defaults(folder.path("new/folder"));
    const auto& problem = defaults.openingProblem();
    EXPECT_EQ(problem, "");
    EXPECT_TRUE(defaults.allKeys().empty());
}

TEST(DefaultsRecovery, AFullDiskLosesNothing)
{
    const StoredFolder folder;
    const pid_t child = fork();
    if (child == 0) {
        const LogCapture quiet([](const std::string&) {});
        UserDefaults defaults(folder.folder.path());
        signal(SIGXFSZ, SIG_IGN);
        rlimit limit;
        getrlimit(RLIMIT_FSIZE, &limit);
        const auto unlimited = limit.rlim_cur;
        limit.rlim_cur = 50'000;
        setrlimit(RLIMIT_FSIZE, &limit);
        defaults.setObject("large", std::string(1'000'000, 'x'));
        const bool failed = !defaults.synchronize();
        const bool kept = defaults.stringForKey("large")->size() == 1'000'000 && defaults.hasKey("BookData");
        limit.rlim_cur = unlimited;
        setrlimit(RLIMIT_FSIZE, &limit);
        const bool retried = defaults.synchronize();
        _exit((failed ? 0 : 1) + (kept ? 0 : 2) + (retried ? 0 : 4));
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    const UserDefaults defaults(folder.folder.path());
    const auto& problem = defaults.openingProblem();
    EXPECT_EQ(problem, "");
    EXPECT_EQ(defaults.stringForKey("large")->size(), 1'000'000u);
    EXPECT_TRUE(defaults.objectForKey("BookData") == folder.stored);
}
