#include "reader/JumpHistory.hpp"

#include <gtest/gtest.h>

using namespace pagora;

namespace {

SeenPage page(std::int64_t offset)
{
    return { Url::file("/book/a.xhtml"), { offset, 4000, 800 } };
}

}

TEST(JumpHistory, LeadsBackAndOnAgain)
{
    JumpHistory jumps;
    jumps.leave(page(1));
    jumps.leave(page(2));
    EXPECT_EQ(jumps.back(page(3)), page(2));
    EXPECT_EQ(jumps.back(page(2)), page(1));
    EXPECT_FALSE(jumps.canGoBack());
    EXPECT_EQ(jumps.forward(page(1)), page(2));
    EXPECT_EQ(jumps.forward(page(2)), page(3));
    EXPECT_FALSE(jumps.canGoForward());
}

TEST(JumpHistory, EndsAtItsStart)
{
    JumpHistory jumps;
    EXPECT_FALSE(jumps.back(page(1)));
    EXPECT_FALSE(jumps.forward(page(1)));
    EXPECT_FALSE(jumps.canGoForward());
}

TEST(JumpHistory, AJumpEndsTheWayOn)
{
    JumpHistory jumps;
    jumps.leave(page(1));
    jumps.back(page(2));
    jumps.leave(page(1));
    EXPECT_FALSE(jumps.canGoForward());
}

TEST(JumpHistory, PassesOverThePageThatIsSeen)
{
    JumpHistory jumps;
    jumps.leave(page(1));
    jumps.leave(page(2));
    EXPECT_EQ(jumps.back(page(2)), page(1));
}

TEST(JumpHistory, DoesNotLeadOnToWhatIsNoPageOfTheBook)
{
    JumpHistory jumps;
    jumps.leave(page(1));
    EXPECT_EQ(jumps.back(std::nullopt), page(1));
    EXPECT_FALSE(jumps.canGoForward());
}

TEST(JumpHistory, ForgetsTheOldestPages)
{
    JumpHistory jumps;
    for (int i = 0; i < 10'000; ++i)
        jumps.leave(page(i));
    std::size_t count = 0;
    for (auto seen = page(-1); jumps.canGoBack(); ++count)
        seen = *jumps.back(seen);
    EXPECT_EQ(count, 200u);
}
