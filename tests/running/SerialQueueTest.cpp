#include "running/SerialQueue.hpp"

#include "running/Reply.hpp"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace pagora;

namespace {

// Work that records its start and end in `order`, and waits in between for a reply if there is one.
struct Notes {
    std::vector<std::string> order;

    SerialQueue::Work work(std::string name)
    {
        return [this, name]() -> Task<void> {
            order.push_back(name);
            co_return;
        };
    }

    SerialQueue::Work waiting(std::string name, Reply<void>& reply)
    {
        return [this, name, reply = &reply]() -> Task<void> {
            order.push_back(name);
            Reply<void> own = std::move(*reply);
            co_await own;
            order.push_back(name + " ends");
        };
    }
};

using Order = std::vector<std::string>;

}

TEST(SerialQueue, RunsWorkAtOnceWhenNothingRuns)
{
    Notes notes;
    SerialQueue queue;
    queue.enqueueAction(notes.work("a"));
    EXPECT_EQ(notes.order, Order { "a" });
    EXPECT_TRUE(queue.isIdle());
}

TEST(SerialQueue, WorkNeverInterleaves)
{
    Notes notes;
    Reply<void> reply;
    const auto answer = reply.resolver();
    SerialQueue queue;
    queue.enqueueAction(notes.waiting("a", reply));
    queue.enqueueAction(notes.work("b"));
    EXPECT_EQ(notes.order, Order { "a" });
    EXPECT_FALSE(queue.isIdle());
    answer();
    EXPECT_EQ(notes.order, (Order { "a", "a ends", "b" }));
    EXPECT_TRUE(queue.isIdle());
}

TEST(SerialQueue, ReportsGoBeforeActions)
{
    Notes notes;
    Reply<void> reply;
    const auto answer = reply.resolver();
    SerialQueue queue;
    queue.enqueueAction(notes.waiting("a", reply));
    queue.enqueueAction(notes.work("action"));
    queue.enqueueReport(notes.work("report"));
    answer();
    EXPECT_EQ(notes.order, (Order { "a", "a ends", "report", "action" }));
}

TEST(SerialQueue, HeldActionsWaitWhileReportsRun)
{
    Notes notes;
    SerialQueue queue;
    queue.holdActions();
    queue.enqueueAction(notes.work("action"));
    queue.enqueueReport(notes.work("report"));
    EXPECT_TRUE(queue.actionsAreHeld());
    EXPECT_EQ(notes.order, Order { "report" });
    EXPECT_TRUE(queue.isIdle());
    queue.releaseActions();
    EXPECT_EQ(notes.order, (Order { "report", "action" }));
}

TEST(SerialQueue, WorkThatEnqueuesIsFollowedByIt)
{
    Notes notes;
    SerialQueue queue;
    queue.enqueueAction([&]() -> Task<void> {
        queue.enqueueAction(notes.work("inner"));
        notes.order.push_back("outer");
        co_return;
    });
    EXPECT_EQ(notes.order, (Order { "outer", "inner" }));
}

TEST(SerialQueue, DroppingItEndsTheWorkWhereItWaits)
{
    Notes notes;
    Reply<void> reply;
    const auto held = std::make_shared<int>(1);
    {
        SerialQueue queue;
        queue.enqueueAction([held, reply = &reply, &notes]() -> Task<void> {
            const auto alsoHeld = held;
            Reply<void> own = std::move(*reply);
            co_await own;
            notes.order.push_back("never");
        });
        EXPECT_EQ(held.use_count(), 3);
    }
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_TRUE(notes.order.empty());
}

TEST(SerialQueue, AnAnswerAfterItIsDroppedResumesNothing)
{
    Notes notes;
    std::optional<Reply<void>::Resolver> resolver;
    {
        SerialQueue queue;
        queue.enqueueAction([&]() -> Task<void> {
            Reply<void> reply;
            resolver = reply.resolver();
            co_await reply;
            notes.order.push_back("never");
        });
    }
    (*resolver)();
    EXPECT_TRUE(notes.order.empty());
}

TEST(SerialQueue, FinishedWorkIsLetGo)
{
    const auto held = std::make_shared<int>(1);
    SerialQueue queue;
    queue.enqueueAction([held]() -> Task<void> { co_return; });
    EXPECT_EQ(held.use_count(), 1);
}

TEST(SerialQueue, TellsWhenItHasRunDry)
{
    Notes notes;
    Reply<void> reply;
    const auto answer = reply.resolver();
    SerialQueue queue;
    queue.setWhenDrained(notes.work("dry"));
    queue.enqueueAction(notes.waiting("a", reply));
    queue.enqueueAction(notes.work("b"));
    answer();
    EXPECT_EQ(notes.order, (Order { "a", "a ends", "b", "dry" }));
}

TEST(SerialQueue, WorkGivenWhileItTellsRunsAndIsFollowedByAnotherTelling)
{
    Notes notes;
    SerialQueue queue;
    queue.setWhenDrained([&]() -> Task<void> {
        notes.order.push_back("dry");
        if (notes.order.size() == 2)
            queue.enqueueAction(notes.work("late"));
        co_return;
    });
    queue.enqueueAction(notes.work("a"));
    EXPECT_EQ(notes.order, (Order { "a", "dry", "late", "dry" }));
    EXPECT_TRUE(queue.isIdle());
}

TEST(SerialQueue, DroppedWorkDoesNotGoOnAndTheNextOneRuns)
{
    Notes notes;
    Reply<void> reply;
    const auto answer = reply.resolver();
    SerialQueue queue;
    queue.enqueueAction(notes.waiting("a", reply));
    queue.enqueueAction(notes.work("b"));
    queue.dropCurrent();
    answer();
    EXPECT_EQ(notes.order, (Order { "a", "b" }));
    EXPECT_TRUE(queue.isIdle());
}

TEST(SerialQueue, ActionsThatAreHeldWaitWhenWorkIsDropped)
{
    Notes notes;
    Reply<void> reply;
    SerialQueue queue;
    queue.enqueueAction(notes.waiting("a", reply));
    queue.enqueueAction(notes.work("b"));
    queue.holdActions();
    queue.dropCurrent();
    EXPECT_EQ(notes.order, Order { "a" });
    queue.releaseActions();
    EXPECT_EQ(notes.order, (Order { "a", "b" }));
}
