#include "confinement/MessageBudget.hpp"

#include <gtest/gtest.h>

namespace pagora::test {

namespace {

using Message = MessageBudget::Message;

// Returns the number of accepted messages of `count` at this time.
int taken(MessageBudget& budget, Message message, int count, double now, std::size_t bytes = 0)
{
    int within = 0;
    for (int i = 0; i < count; ++i)
        within += budget.take(message, bytes, now) ? 1 : 0;
    return within;
}

}

TEST(MessageBudgetTest, TakesWhatABooksPagesTell)
{
    MessageBudget budget;
    EXPECT_EQ(taken(budget, Message::Resource, 2000, 5, 200), 2000);
    EXPECT_EQ(taken(budget, Message::Notice, 40, 6, 200), 40);
}

TEST(MessageBudgetTest, NoticesAFloodWithinASecond)
{
    MessageBudget budget;
    EXPECT_NEAR(taken(budget, Message::Notice, 1000, 5), 100, 1);
    MessageBudget other;
    EXPECT_NEAR(taken(other, Message::Navigation, 5000, 5), 200, 1);
}

TEST(MessageBudgetTest, NoticesFewLongMessages)
{
    MessageBudget budget;
    EXPECT_EQ(taken(budget, Message::Notice, 20, 5, 1'900'000), 0);
}

TEST(MessageBudgetTest, KindsCountTogether)
{
    MessageBudget budget;
    taken(budget, Message::Notice, 50, 5);
    EXPECT_NEAR(taken(budget, Message::Navigation, 1000, 5), 100, 1);
}

TEST(MessageBudgetTest, CountsTheResourcesOfADocument)
{
    MessageBudget budget;
    for (int second = 1; second <= 20; ++second)
        EXPECT_EQ(taken(budget, Message::Resource, 1000, second), 1000);
    EXPECT_FALSE(budget.take(Message::Resource, 0, 21));
    budget.startDocument();
    EXPECT_TRUE(budget.take(Message::Resource, 0, 22));
}

TEST(MessageBudgetTest, NoticesASlowFloodToo)
{
    MessageBudget budget;
    for (int second = 1; second <= 100; ++second)
        EXPECT_EQ(taken(budget, Message::Notice, 20, second), 20);
    EXPECT_FALSE(budget.take(Message::Notice, 0, 101));
}

TEST(MessageBudgetTest, StartsAnewEachSecond)
{
    MessageBudget budget;
    taken(budget, Message::Notice, 1000, 5);
    EXPECT_FALSE(budget.take(Message::Notice, 0, 5.9));
    EXPECT_TRUE(budget.take(Message::Notice, 0, 6));
}

}
