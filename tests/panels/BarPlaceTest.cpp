#include "panels/BarPlace.hpp"

#include <gtest/gtest.h>

namespace pagora::test {

namespace {

constexpr Size view { 800, 600 };
constexpr Size bar { 200, 36 };

Rect placeBeside(std::vector<Rect> boxes, const Rect& first, const Rect& last)
{
    return placeOfBar({ std::move(boxes), first, last }, bar, view);
}

Rect placeBeside(const Rect& line)
{
    return placeBeside({ line }, line, line);
}

void expectOutside(const Rect& place, const std::vector<Rect>& boxes)
{
    for (const auto& box : boxes)
        EXPECT_FALSE(place.x < box.x + box.width && box.x < place.x + place.width && place.y < box.y + box.height
            && box.y < place.y + place.height);
}

}

TEST(BarPlace, IsAboveTheMiddleOfTheFirstLine)
{
    EXPECT_EQ(placeBeside({ 300, 200, 100, 20 }), (Rect { 250, 158, 200, 36 }));
}

TEST(BarPlace, StaysWithinTheSidesOfTheView)
{
    EXPECT_EQ(placeBeside({ 0, 200, 50, 20 }).x, 0);
    EXPECT_EQ(placeBeside({ 750, 200, 50, 20 }).x, 600);
}

TEST(BarPlace, IsInTheMarginAboveTextAtThePagesTop)
{
    EXPECT_EQ(placeBeside({ 300, 40, 100, 20 }).y, 0);
}

TEST(BarPlace, IsBelowTextWithoutRoomAboveIt)
{
    EXPECT_EQ(placeBeside({ 300, 10, 100, 20 }).y, 36);
}

TEST(BarPlace, IsBelowTheLastLineWhereTheFirstIsAtTheTop)
{
    const auto place = placeBeside({ { 100, 10, 600, 300 } }, { 400, 10, 300, 20 }, { 100, 290, 80, 20 });
    EXPECT_EQ(place, (Rect { 40, 316, 200, 36 }));
}

// The text continues at the top of the next column, beside the usual place of the bar.
TEST(BarPlace, DoesNotReachIntoTheNextColumn)
{
    const Rect first { 40, 400, 340, 160 };
    const Rect second { 400, 40, 340, 520 };
    const auto place = placeBeside({ first, second }, { 260, 400, 120, 20 }, { 400, 540, 50, 20 });
    expectOutside(place, { first, second });
    EXPECT_EQ(place, (Rect { 200, 358, 200, 36 }));
}

TEST(BarPlace, IsInTheMarginOfAPageThatIsSelectedWhole)
{
    const Rect first { 40, 40, 340, 520 };
    const Rect second { 420, 40, 340, 520 };
    const auto place = placeBeside({ first, second }, { 40, 40, 340, 20 }, { 420, 540, 340, 20 });
    expectOutside(place, { first, second });
}

TEST(BarPlace, IsInTheViewEvenWhereThereIsNoRoom)
{
    const auto place = placeBeside({ { 0, 0, 800, 600 } }, { 0, 0, 800, 20 }, { 0, 580, 800, 20 });
    EXPECT_EQ(place, (Rect { 0, 0, 200, 36 }));
}

}
