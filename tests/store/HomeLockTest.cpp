#include "store/HomeLock.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace pagora;
using test::TemporaryFolder;

TEST(HomeLock, OneProgramAtATimeHasAFolder)
{
    const TemporaryFolder folder;
    HomeLock second(folder.path("home"));
    {
        HomeLock first(folder.path("home"));
        EXPECT_TRUE(first.take(0));
        EXPECT_FALSE(second.take(0));
    }
    EXPECT_TRUE(second.take(0));
}

TEST(HomeLock, ASuddenEndGivesTheFolderFree)
{
    const TemporaryFolder folder;
    const pid_t child = fork();
    if (child == 0) {
        HomeLock lock(folder.path());
        lock.take(0);
        kill(getpid(), SIGKILL);
    }
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(HomeLock(folder.path()).take(0));
}

TEST(HomeLock, WaitsForAProgramThatIsEnding)
{
    const TemporaryFolder folder;
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        HomeLock lock(folder.path());
        lock.take(0);
        EXPECT_EQ(write(ready[1], "x", 1), 1);
        usleep(200'000);
        _exit(0);
    }
    char byte;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_TRUE(HomeLock(folder.path()).take(30));
    waitpid(child, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
}

TEST(HomeLock, AFolderThatCannotBeLockedIsNobodys)
{
    const TemporaryFolder folder;
    test::makeFile(folder.path("file"), "in the way");
    EXPECT_TRUE(HomeLock(folder.path("file")).take(0));
}
