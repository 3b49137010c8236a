#include "confinement/gtk/PageMemoryWatch.hpp"

#include "tests/support/ForkedTest.hpp"

#include <csignal>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <vector>

namespace pagora::test {

namespace {

constexpr std::size_t limit = 32 << 20;

// Starts a process with the name of a page process that uses twice the memory limit. Returns once it is allocated.
pid_t startPageProcess()
{
    int ready[2];
    if (pipe(ready) != 0)
        return -1;
    const pid_t process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        prctl(PR_SET_NAME, "WebKitWebProcess");
        const std::vector<char> memory(2 * limit, 'x');
        if (write(ready[1], memory.data(), 1) == 1)
            pause();
        _exit(0);
    }
    char byte = 0;
    const bool isReady = read(ready[0], &byte, 1) == 1;
    close(ready[0]);
    close(ready[1]);
    return isReady ? process : -1;
}

}

TEST(PageMemoryWatch, InAFlatpakEndsProcessesThatAreNotBelowTheProgram)
{
    inForkedProcess([] {
        // A process namespace without other processes, as in a Flatpak.
        ASSERT_TRUE(
            unshare(CLONE_NEWPID | CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNS) == 0);
        inForkedProcess([] {
            ASSERT_EQ(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
            ASSERT_EQ(mount("proc", "/proc", "proc", 0, nullptr), 0);
            const pid_t process = startPageProcess();
            ASSERT_GT(process, 0);
            inForkedProcess([] { PageMemoryWatch({ limit, limit }, Surroundings::Flatpak).look(); });
            // Kills the process if the watch did not.
            kill(process, SIGTERM);
            int status = 0;
            ASSERT_EQ(waitpid(process, &status, 0), process);
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
        });
    });
}

}
