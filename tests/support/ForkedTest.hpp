#pragma once

#include <cstdio>
#include <exception>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pagora::test {

// Runs a part of a test in a process of its own, whose rights and limits it may change; that part's failures fail the
// test. Before the test has threads.
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
