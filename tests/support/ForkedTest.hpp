#pragma once

#include <cstdio>
#include <exception>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pagora::test {

// Runs a part of a test in a child process, which may change its own rights and limits. Failures of that part fail the
// test. Call it before the test starts threads.
template <typename Body>
void inForkedProcess(Body body)
{
    const pid_t child = fork();
    if (child == 0) {
        try {
            body();
        } catch (const std::exception& exception) {
            ADD_FAILURE() << exception.what();
        }
        std::fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "in the forked process";
}

}
