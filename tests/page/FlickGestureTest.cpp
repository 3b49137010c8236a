#include "page/FlickGesture.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>
#include <numbers>
#include <utility>

namespace pagora::test {

namespace {

constexpr double degree = std::numbers::pi / 180;

// A gesture of `steps` equal steps at an angle from the horizontal, and its speed at the end.
double turned(double length, double angle, double speed, int steps = 10)
{
    FlickGesture gesture;
    for (int i = 0; i < steps; ++i)
        gesture.moveBy(length / steps * std::cos(angle), length / steps * std::sin(angle));
    return gesture.turnAtSpeed(speed * std::cos(angle), speed * std::sin(angle));
}

// Moves a finger along these points.
FlickGesture dragged(std::initializer_list<std::pair<double, double>> points)
{
    FlickGesture gesture;
    for (const auto& [x, y] : points)
        gesture.moveTo(x, y);
    return gesture;
}

}

TEST(FlickGestureTest, ToEitherSideTurnsThatWay)
{
    EXPECT_DOUBLE_EQ(turned(120, 0, 900), 900);
    EXPECT_DOUBLE_EQ(turned(120, 180 * degree, 900), -900);
}

TEST(FlickGestureTest, MayLeanALittle)
{
    for (const double angle : { 10.0, 20.0, 30.0, -10.0, -20.0, -30.0 })
        EXPECT_GT(turned(120, angle * degree, 900), 0) << angle;
}

TEST(FlickGestureTest, VerticalScrollThatDriftsTurnsNothing)
{
    for (const double drift : { 0.5, 5.0, 15.0, 30.0, 50.0 })
        EXPECT_EQ(turned(600, (90 - drift) * degree, 3000), 0) << drift;
}

TEST(FlickGestureTest, ABrushTurnsNothing)
{
    EXPECT_EQ(turned(0.8, 0, 100, 1), 0);
    EXPECT_EQ(turned(0.8, 0, 2000, 1), 0);
    EXPECT_EQ(turned(10, 0, 2000, 3), 0);
}

TEST(FlickGestureTest, ASlowWayTurnsNothing)
{
    EXPECT_EQ(turned(300, 0, 100), 0);
    EXPECT_EQ(turned(300, 0, 0), 0);
}

TEST(FlickGestureTest, AScrollDownThatEndsSidewaysTurnsNothing)
{
    FlickGesture gesture;
    gesture.moveBy(0, 400);
    gesture.moveBy(100, 0);
    EXPECT_EQ(gesture.turnAtSpeed(900, 0), 0);
}

TEST(FlickGestureTest, AScrollThereAndBackBeforeItTurnsNothing)
{
    FlickGesture gesture;
    gesture.moveBy(0, 400);
    gesture.moveBy(0, -400);
    gesture.moveBy(100, 0);
    EXPECT_EQ(gesture.turnAtSpeed(900, 0), 0);
}

TEST(FlickGestureTest, AFlickThatEndsDownwardsTurnsNothing)
{
    FlickGesture gesture;
    gesture.moveBy(200, 20);
    EXPECT_EQ(gesture.turnAtSpeed(300, 900), 0);
}

TEST(FlickGestureTest, ADragOfOneFingerTurnsThatWay)
{
    EXPECT_DOUBLE_EQ(dragged({ { 20, 1 }, { 60, 4 }, { 90, 5 } }).turnAtRest(), 90);
    EXPECT_DOUBLE_EQ(dragged({ { -20, 1 }, { -60, 4 } }).turnAtRest(), -60);
}

TEST(FlickGestureTest, ATapADragDownAndADragThereAndBackTurnNothing)
{
    EXPECT_EQ(dragged({ { 3, 2 }, { 4, 2 } }).turnAtRest(), 0);
    EXPECT_EQ(dragged({ { 30, 200 } }).turnAtRest(), 0);
    EXPECT_EQ(dragged({ { 90, 0 }, { 5, 0 } }).turnAtRest(), 0);
}

TEST(FlickGestureTest, IsHorizontalOnceTheFingerHasMovedFarEnough)
{
    EXPECT_FALSE(dragged({ { 12, 2 } }).isHorizontal());
    EXPECT_TRUE(dragged({ { 18, 2 } }).isHorizontal());
}

}
