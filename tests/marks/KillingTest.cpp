#include "files/Files.hpp"
#include "marks/MarksFile.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

namespace pagora {

namespace {

constexpr int kills = 200;
// A worker rarely makes more changes.
constexpr unsigned maxMoments = 250;

bool workerIsKilled(const std::string& archive, const std::string& diary, unsigned killAt)
{
    const auto text = std::to_string(killAt);
    const pid_t worker = fork();
    if (worker == 0) {
        execl(MARKS_WORKER, MARKS_WORKER, archive.c_str(), diary.c_str(), text.c_str(), nullptr);
        _exit(4);
    }
    int status = 0;
    waitpid(worker, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) ? WTERMSIG(status) == SIGKILL : WEXITSTATUS(status) == 0);
    return WIFSIGNALED(status);
}

}

TEST(MarksKilling, LosesNoMarkThatWasSaidToBeSaved)
{
    const test::TemporaryFolder folder;
    const auto archive = folder.path("Book.epub");
    std::mt19937 random(22);
    std::set<std::string> saved;
    int done = 0;
    for (int run = 0; done < kills && !HasFailure(); ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        const auto diaryPath = folder.path("diary");
        std::filesystem::remove(diaryPath);
        done += workerIsKilled(archive, diaryPath, 1 + random() % maxMoments);
        std::string removing;
        std::ifstream diary(diaryPath);
        for (std::string word, id; diary >> word >> id;) {
            removing = word == "removing" ? id : "";
            if (word == "saved")
                saved.insert(id);
            else if (word == "removed")
                saved.erase(id);
        }
        const auto disk = MarksFile(archive, {}).read();
        EXPECT_EQ(disk.problem, "");
        std::set<std::string> found;
        for (const auto& mark : disk.marks)
            found.insert(mark.id);
        for (const auto& id : saved)
            EXPECT_TRUE(found.contains(id) || id == removing) << id << " was lost";
        // One mark may be saved that was not reported as saved yet.
        EXPECT_LE(found.size(), saved.size() + 1);
        saved = found;
        // The next worker starts with an empty file.
        if (saved.size() > 40) {
            removeItem(folder.path("Book.annotation"));
            saved.clear();
        }
    }
    removeUnfinishedFiles(folder.path());
    const auto names = folderEntries(folder.path()).value();
    for (const auto& name : names)
        EXPECT_TRUE(name == "Book.annotation" || name == "diary") << name;
    std::printf("%d kills, %zu marks\n", done, saved.size());
}

}
