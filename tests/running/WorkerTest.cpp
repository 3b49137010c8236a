#include "running/Worker.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace pagora {

namespace {

int ownPriority()
{
    return getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
}

}

TEST(Worker, RunsWhatItIsGivenInOrder)
{
    std::vector<int> done;
    Worker worker;
    for (int i = 0; i < 5; ++i)
        worker.perform([&done, i] { done.push_back(i); });
    worker.wait();
    EXPECT_EQ(done, (std::vector<int> { 0, 1, 2, 3, 4 }));
}

TEST(Worker, FinishesWhatItWasGivenWhenItIsDropped)
{
    int done = 0;
    {
        Worker worker;
        for (int i = 0; i < 5; ++i)
            worker.perform([&done] { ++done; });
    }
    EXPECT_EQ(done, 5);
}

TEST(Worker, OfLowUrgencyLetsOthersGoFirst)
{
    int usual = 0, low = 0;
    Worker worker, patient(Worker::Urgency::Low);
    worker.perform([&] { usual = ownPriority(); });
    patient.perform([&] { low = ownPriority(); });
    worker.wait();
    patient.wait();
    EXPECT_EQ(usual, ownPriority());
    EXPECT_EQ(low, std::min(19, ownPriority() + 10));
}

}
