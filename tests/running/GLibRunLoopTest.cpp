#include "running/GLibRunLoop.hpp"

#include "running/Task.hpp"
#include "tests/support/ManualRunLoop.hpp"

#include <glib.h>

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace pagora;

namespace {

// Iterates the main context until the condition holds.
template <typename Condition>
void turnUntil(Condition holds)
{
    while (!holds())
        g_main_context_iteration(nullptr, TRUE);
}

Task<void> noteWhenDone(RunLoop& runLoop, std::function<void()> work, bool& done)
{
    co_await runLoop.performInBackground(std::move(work));
    done = runLoop.isMainThread();
}

}

TEST(GLibRunLoop, PostedWorkRunsInOrderOnTheMainThread)
{
    GLibRunLoop runLoop;
    std::vector<int> order;
    bool last = false;
    std::jthread poster([&] {
        for (int i = 0; i < 100; ++i)
            runLoop.postToMainThread([&order, i] { order.push_back(i); });
        runLoop.postToMainThread([&] { last = runLoop.isMainThread(); });
    });
    turnUntil([&] { return last; });
    ASSERT_EQ(order.size(), 100u);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(GLibRunLoop, PostedWorkDoesNotRunAtOnce)
{
    GLibRunLoop runLoop;
    bool ran = false;
    runLoop.postToMainThread([&] { ran = true; });
    EXPECT_FALSE(ran);
    turnUntil([&] { return ran; });
}

TEST(GLibRunLoop, BackgroundWorkRunsElsewhereAndIsAnsweredOnTheMainThread)
{
    GLibRunLoop runLoop;
    bool onMainThread = true;
    bool done = false;
    const auto task = noteWhenDone(
        runLoop, [&] { onMainThread = runLoop.isMainThread(); }, done);
    turnUntil([&] { return task.done(); });
    EXPECT_TRUE(done);
    EXPECT_FALSE(onMainThread);
}

TEST(GLibRunLoop, BackgroundWorkRunsSideBySide)
{
    GLibRunLoop runLoop;
    std::atomic<bool> firstStarted = false, secondStarted = false;
    bool firstDone = false, secondDone = false;
    // Each job ends only after the other has started.
    const auto first = noteWhenDone(
        runLoop,
        [&] {
            firstStarted = true;
            firstStarted.notify_all();
            secondStarted.wait(false);
        },
        firstDone);
    const auto second = noteWhenDone(
        runLoop,
        [&] {
            secondStarted = true;
            secondStarted.notify_all();
            firstStarted.wait(false);
        },
        secondDone);
    turnUntil([&] { return firstDone && secondDone; });
}

TEST(GLibRunLoop, ADroppedReplyResumesNothing)
{
    GLibRunLoop runLoop;
    std::atomic<bool> worked = false;
    bool resumed = false;
    {
        const auto task = noteWhenDone(
            runLoop, [&] { worked = true; }, resumed);
    }
    bool after = false;
    const auto other = noteWhenDone(
        runLoop, [] {}, after);
    turnUntil([&] { return after && worked; });
    EXPECT_FALSE(resumed);
}

TEST(GLibRunLoop, ACallFromTheBackgroundWaitsForTheMainThread)
{
    GLibRunLoop runLoop;
    bool onMainThread = false;
    bool wasSeen = false;
    bool done = false;
    const auto task = noteWhenDone(
        runLoop,
        [&] {
            runLoop.performOnMainThread([&] { onMainThread = runLoop.isMainThread(); });
            wasSeen = onMainThread;
        },
        done);
    turnUntil([&] { return done; });
    EXPECT_TRUE(wasSeen);
}

TEST(GLibRunLoop, ACallOnTheMainThreadRunsAtOnce)
{
    GLibRunLoop runLoop;
    bool ran = false;
    runLoop.performOnMainThread([&] { ran = true; });
    EXPECT_TRUE(ran);
}

TEST(GLibRunLoop, DroppingItFinishesBackgroundWorkAndServesItsCalls)
{
    int calls = 0;
    bool posted = false;
    {
        GLibRunLoop runLoop;
        for (int i = 0; i < 3; ++i) {
            runLoop.performInBackground([&] {
                for (int i = 0; i < 10; ++i)
                    runLoop.performOnMainThread([&] { ++calls; });
            });
        }
        runLoop.postToMainThread([&] { posted = true; });
    }
    EXPECT_EQ(calls, 30);
    EXPECT_FALSE(posted);
}

TEST(GLibRunLoop, ATimerFiresOnce)
{
    GLibRunLoop runLoop;
    int fired = 0;
    const auto timer = runLoop.performAfterDelay(0, [&] { ++fired; });
    turnUntil([&] { return fired > 0; });
    bool later = false;
    const auto other = runLoop.performAfterDelay(0.001, [&] { later = true; });
    turnUntil([&] { return later; });
    EXPECT_EQ(fired, 1);
}

TEST(GLibRunLoop, ADroppedTimerDoesNotFire)
{
    GLibRunLoop runLoop;
    bool fired = false;
    auto timer = runLoop.performAfterDelay(0, [&] { fired = true; });
    timer.reset();
    bool later = false;
    const auto other = runLoop.performAfterDelay(0.001, [&] { later = true; });
    turnUntil([&] { return later; });
    EXPECT_FALSE(fired);
}

TEST(GLibRunLoop, ATimerMayBeDroppedByItsOwnWork)
{
    GLibRunLoop runLoop;
    std::unique_ptr<RunLoop::Timer> timer;
    bool fired = false;
    timer = runLoop.performAfterDelay(0, [&] {
        timer.reset();
        fired = true;
    });
    turnUntil([&] { return fired; });
    EXPECT_EQ(timer, nullptr);
}

TEST(ManualRunLoop, TimersRunWhenTheTestSaysSoUnlessDropped)
{
    test::ManualRunLoop runLoop;
    int fired = 0;
    const auto kept = runLoop.performAfterDelay(2, [&] { ++fired; });
    runLoop.performAfterDelay(3, [&] { fired += 10; }).reset();
    EXPECT_EQ(fired, 0);
    EXPECT_EQ(runLoop.pendingTimers(), 1u);
    runLoop.runTimers();
    runLoop.runTimers();
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(runLoop.delays, (std::vector<double> { 2, 3 }));
}

TEST(ManualRunLoop, HeldBackgroundWorkIsAnsweredWhenTheTestSaysSo)
{
    test::ManualRunLoop runLoop;
    runLoop.holdsBackground = true;
    bool worked = false, done = false;
    const auto task = noteWhenDone(
        runLoop, [&] { worked = true; }, done);
    EXPECT_FALSE(worked);
    runLoop.finishBackground();
    EXPECT_TRUE(worked && done);
}
