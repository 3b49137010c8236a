#include "confinement/HelperConfinement.hpp"

#include "files/Files.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/ForkedTest.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <csignal>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/socket.h>

namespace pagora {

namespace {

class HelperConfinementTest : public testing::Test {
protected:
    HelperConfinementTest()
    {
        createFolder(_folder.path("scratch"));
        test::makeFile(_folder.path("secret"), "secret");
    }

    // Runs the body in a confined process that may use the scratch folder. Passes the active restrictions to it.
    template <typename Body>
    void confined(Body body)
    {
        test::inForkedProcess([&] {
            const auto walls = confineHelper({ { _folder.path("scratch") }, 1u << 30, 1'000 });
            EXPECT_TRUE(walls.limits);
            body(walls);
        });
    }

    test::TemporaryFolder _folder;
};

}

TEST_F(HelperConfinementTest, FilesOutsideTheFolderAreOutOfReachWhereTheKernelCanDoThat)
{
    confined([&](const HelperWalls& walls) {
        EXPECT_EQ(readFile(_folder.path("secret")).has_value(), !walls.files);
        EXPECT_EQ(writeFile(_folder.path("new"), "x"), !walls.files);
    });
}

TEST_F(HelperConfinementTest, FolderCanBeUsed)
{
    confined([&](const HelperWalls&) {
        EXPECT_TRUE(writeFile(_folder.path("scratch/a/b"), "x") || createFolder(_folder.path("scratch/a")));
        EXPECT_TRUE(writeFile(_folder.path("scratch/a/b"), "x"));
        EXPECT_EQ(readFile(_folder.path("scratch/a/b")), "x");
        EXPECT_TRUE(removeItem(_folder.path("scratch/a")));
    });
}

TEST_F(HelperConfinementTest, SystemsDataCanBeRead)
{
    confined([](const HelperWalls&) { EXPECT_TRUE(folderEntries("/usr")); });
}

TEST_F(HelperConfinementTest, NoNetworkAndNoSignals)
{
    confined([](const HelperWalls& walls) {
        ASSERT_TRUE(walls.calls);
        for (const int family : { AF_INET, AF_INET6, AF_UNIX, AF_NETLINK })
            EXPECT_LT(::socket(family, SOCK_STREAM, 0), 0);
        EXPECT_LT(::kill(::getppid(), 0), 0);
    });
}

TEST_F(HelperConfinementTest, WhatItStartsIsConfinedToo)
{
    confined([&](const HelperWalls& walls) {
        const auto command = "cat '" + _folder.path("secret") + "' >/dev/null 2>&1";
        EXPECT_EQ(std::system(command.c_str()) == 0, !walls.files);
    });
}

TEST_F(HelperConfinementTest, NoFileIsLargerThanItMayBe)
{
    confined([&](const HelperWalls&) {
        std::signal(SIGXFSZ, SIG_IGN);
        EXPECT_TRUE(writeFile(_folder.path("scratch/a"), std::string(1'000, 'x')));
        EXPECT_FALSE(writeFile(_folder.path("scratch/b"), std::string(1'001, 'x')));
    });
}

TEST_F(HelperConfinementTest, ProcessorTimeThatIsUsedUpEndsIt)
{
    const pid_t child = fork();
    if (child == 0) {
        allowProcessorTime(0);
        while (getppid() != 0) { }
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU);
}

}
