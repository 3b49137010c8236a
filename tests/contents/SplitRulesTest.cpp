#include "contents/SplitRules.hpp"

#include "tests/support/FakeEpubWindow.hpp"

#include <gtest/gtest.h>

using namespace pagora;
using namespace pagora::test;

namespace {

class SplitRulesTest : public testing::Test {
protected:
    // Resizes the split view to `width` points with a contents pane of `left`.
    void resize(double left, double oldWidth, double width)
    {
        view.rect = { 0, 0, width, 500 };
        view.frames = { { 0, 0, left, 600 }, { left + 1, 0, oldWidth - left - 1, 600 } };
        rules.resizeSubviewsWithOldSize({ oldWidth, 600 });
    }

    FakeSplitView view;
    int layouts = 0;
    SplitRules rules { view, SplitRules::FollowDivider::Yes, [this] { ++layouts; } };
};

}

TEST_F(SplitRulesTest, TheDividerStaysBetween200PointsAndHalfTheWindow)
{
    view.rect.width = 1000;
    EXPECT_EQ(rules.constrainMinCoordinate(150, 0), 200);
    EXPECT_EQ(rules.constrainMaxCoordinate(700, 0), 499.5);
}

TEST_F(SplitRulesTest, NoPaneCollapsesAndTheDividerIsHidden)
{
    EXPECT_FALSE(rules.canCollapseSubview(0));
    EXPECT_FALSE(rules.canCollapseSubview(1));
    EXPECT_TRUE(rules.shouldHideDividerAtIndex(0));
}

TEST_F(SplitRulesTest, AContentsPaneOfMoreThanHalfIsScaledWithTheWindow)
{
    resize(600, 1400, 1000);
    EXPECT_NEAR(view.frames[0].width, 428.57, 0.01);
    EXPECT_EQ(view.frames[0].height, 500);
    EXPECT_NEAR(view.frames[1].x, 429.57, 0.01);
    EXPECT_NEAR(view.frames[1].width, 1000 - 429.57, 0.01);
    EXPECT_EQ(view.frames[1].height, 500);
    EXPECT_EQ(layouts, 1);
}

TEST_F(SplitRulesTest, AContentsPaneOfLessThan201PointsBecomes200)
{
    resize(200.5, 1000, 900);
    EXPECT_EQ(view.frames[0].width, 200);
    EXPECT_EQ(view.frames[1].x, 201);
}

TEST_F(SplitRulesTest, AContentsPaneThatFitsKeepsItsWidth)
{
    resize(201, 1000, 900);
    EXPECT_EQ(view.frames[0].width, 201);
}

TEST_F(SplitRulesTest, WithoutContentsThePageTakesTheWholeWindow)
{
    view.hidden = { true, false };
    resize(300, 1000, 900);
    EXPECT_EQ(view.frames[1], (Rect { 0, 0, 900, 500 }));
}

TEST_F(SplitRulesTest, TheDividerIsFollowedAtEachStep)
{
    EXPECT_EQ(rules.constrainSplitPosition(312.5, 0), 312.5);
    EXPECT_EQ(rules.constrainSplitPosition(313, 0), 313);
    EXPECT_EQ(layouts, 2);
}

TEST_F(SplitRulesTest, TheDividerIsNotFollowedWhereTheReaderDoesNotAsk)
{
    SplitRules other(view, SplitRules::FollowDivider::No, [this] { ++layouts; });
    EXPECT_EQ(other.constrainSplitPosition(312.5, 0), 312.5);
    EXPECT_EQ(layouts, 0);
}

TEST_F(SplitRulesTest, TheContentsPaneGoesAndComesBack)
{
    view.rect = { 0, 0, 1000, 600 };
    view.frames = { { 0, 0, 250, 600 }, { 251, 0, 749, 590 } };
    rules.toggleLeftView();
    EXPECT_TRUE(view.hidden[0]);
    EXPECT_EQ(view.frames[1].width, 1000);
    EXPECT_EQ(view.frames[1].height, 590);
    rules.toggleLeftView();
    EXPECT_FALSE(view.hidden[0]);
    EXPECT_EQ(view.frames[0].width, 250);
    EXPECT_EQ(view.frames[1], (Rect { 251, 0, 749, 590 }));
}
