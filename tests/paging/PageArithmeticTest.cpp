#include "paging/PageArithmetic.hpp"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

using namespace pagora;

namespace {

constexpr PageGeometry page { 800, 700, 2, 320 };
constexpr std::int64_t A = 396800;
// 2 × (320 − 120 × 620)
constexpr std::int64_t B = -148160;

}

TEST(PageArithmetic, TakesFortyPointsForEachColumn)
{
    EXPECT_EQ(PageGeometry::pageWidthFor(800, 1), 760);
    EXPECT_EQ(PageGeometry::pageWidthFor(800, 2), 320);
    EXPECT_EQ(PageGeometry::pageWidthFor(800, 3), 146);
}

TEST(PageArithmetic, TruncatesANegativeColumnWidthTowardZero)
{
    EXPECT_EQ(PageGeometry::pageWidthFor(101, 2), -29);
    EXPECT_EQ(PageGeometry::pageWidthFor(0, 3), -120);
}

TEST(PageArithmetic, PageAreaIsHeightTimesColumns)
{
    EXPECT_EQ(page.pageArea(), A);
    EXPECT_EQ((PageGeometry { 800, 700.5, 3, 147 }).pageArea(), 273640);
    EXPECT_EQ((PageGeometry { 800, 80, 2, 320 }).pageArea(), 0);
}

TEST(PageArithmetic, SeekDivisorIsNegativeForARealWindow)
{
    EXPECT_EQ(page.seekDivisor(), B);
    EXPECT_EQ((PageGeometry { 800, 700, 1, 760 }).seekDivisor(), 760 - 80 * 620);
    EXPECT_EQ((PageGeometry { 800, 700.3, 3, 146 }).seekDivisor(), -297306);
}

TEST(PageArithmetic, SeekDivisorIsPositiveInAViewBelowEightyPoints)
{
    EXPECT_EQ((PageGeometry { 800, 60, 2, 320 }).seekDivisor(), 5440);
}

TEST(PageArithmetic, ColumnsAndImagesLeaveThePadding)
{
    EXPECT_EQ(page.columnHeight(), 620);
    EXPECT_EQ(page.imageHeight(), 496);
    EXPECT_EQ((PageGeometry { 800, 701.9, 2, 320 }).columnHeight(), 621);
    EXPECT_EQ((PageGeometry { 800, 701, 2, 320 }).imageHeight(), 496);
}

TEST(PageArithmetic, CapacityCountsPagesBeforeTheOffset)
{
    EXPECT_EQ(page.capacityAt(1600), 793600u);
    EXPECT_EQ(page.capacityAt(400), 198400u);
    EXPECT_EQ(page.capacityAt(0), 0u);
}

TEST(PageArithmetic, CapacityOfANegativeOffsetWraps)
{
    EXPECT_EQ(page.capacityAt(-800), static_cast<std::uint64_t>(-A));
}

TEST(PageArithmetic, ReadAmountIsTheFractionBeforeThePage)
{
    EXPECT_FLOAT_EQ(page.readAmount(793600, 2400, A), 2.0F / 3);
    EXPECT_FLOAT_EQ(page.readAmount(0, 2400, A), 0);
}

TEST(PageArithmetic, ReadAmountTakesTheCapacityAsUnsigned)
{
    EXPECT_FLOAT_EQ(page.readAmount(static_cast<std::uint64_t>(B), 2400, B), static_cast<float>(0x1p64 / (3.0 * B)));
    EXPECT_FLOAT_EQ(page.readAmount(static_cast<std::uint64_t>(B), 2400, A), static_cast<float>(0x1p64 / (3.0 * A)));
}

TEST(PageArithmetic, ReadAmountOfAnEmptyStripIsNotANumber)
{
    EXPECT_TRUE(std::isnan(page.readAmount(0, 0, A)));
}

TEST(PageArithmetic, PageIndexIsAnUnsignedDivision)
{
    EXPECT_EQ(PageGeometry::pageIndex(595200, A), 1u);
    EXPECT_EQ(PageGeometry::pageIndex(static_cast<std::uint64_t>(-1), A), 0xFFFFFFFFFFFFFFFFU / 396800U);
    EXPECT_EQ(PageGeometry::pageIndex(5, 0), 0u);
}

TEST(PageArithmetic, PageIndexForANegativeDivisorIsNeverMoreThanOne)
{
    const auto wrapped = [](std::int64_t number) { return static_cast<std::uint64_t>(number); };
    EXPECT_EQ(PageGeometry::pageIndex(0, B), 0u);
    EXPECT_EQ(PageGeometry::pageIndex(wrapped(-1), B), 1u);
    EXPECT_EQ(PageGeometry::pageIndex(wrapped(B), B), 1u);
    EXPECT_EQ(PageGeometry::pageIndex(wrapped(B - 1), B), 0u);
    EXPECT_EQ(PageGeometry::pageIndex(793600, B), 0u);
}

TEST(PageArithmetic, OffsetsAreWholePages)
{
    EXPECT_EQ(page.offsetOfPage(3), 2400);
    EXPECT_EQ(page.offset32OfPage(3), 2400);
    EXPECT_EQ((PageGeometry { 800.5, 700, 2, 320 }).offsetOfPage(3), 2401);
    EXPECT_EQ(page.offsetOfSignedPage(-2), -1600);
}

TEST(PageArithmetic, OffsetsOfAbsurdPagesStayInRange)
{
    EXPECT_EQ(page.offsetOfPage(std::numeric_limits<std::uint64_t>::max()), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(page.offset32OfPage(std::numeric_limits<std::uint64_t>::max()), std::numeric_limits<std::int32_t>::max());
}

TEST(PageArithmetic, ElementsLieOnThePageOfTheirDistance)
{
    EXPECT_EQ(page.pageOfElement(1239, A), 0);
    EXPECT_EQ(page.pageOfElement(1240, A), 1);
    EXPECT_EQ(page.pageOfElement(2500, A), 2);
}

TEST(PageArithmetic, ElementsLieOnNegativePagesForTheSeekDivisor)
{
    EXPECT_EQ(page.pageOfElement(462, B), 0);
    EXPECT_EQ(page.pageOfElement(463, B), -1);
    EXPECT_EQ(page.pageOfElement(1000, B), -2);
}

TEST(PageArithmetic, ElementsAtAbsurdDistancesAreDefined)
{
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(page.pageOfElement(1000, 0), 0);
    EXPECT_EQ((PageGeometry { 800, 700, 1, 1 }).pageOfElement(least, -1), 0);
    // The product wraps to −2.
    EXPECT_EQ((PageGeometry { 800, 700, 1, 2 }).pageOfElement(most, 1), -2);
}

TEST(PageArithmetic, SnapsToTheNearestColumn)
{
    EXPECT_EQ(page.adjustOffset(0), 0);
    EXPECT_EQ(page.adjustOffset(390), 400);
    EXPECT_EQ(page.adjustOffset(199), 0);
    EXPECT_EQ(page.adjustOffset(800), 800);
}

TEST(PageArithmetic, HalfAColumnRoundsUp)
{
    EXPECT_EQ(page.adjustOffset(200), 400);
}

TEST(PageArithmetic, SnapsToWholePointsWhereColumnsAreNotWhole)
{
    const PageGeometry odd { 801, 700, 2, 320 };
    EXPECT_EQ(odd.adjustOffset(390), 400);
    EXPECT_EQ(odd.adjustOffset(401), 400);
    EXPECT_EQ(odd.adjustOffset(801), 801);
}

TEST(PageArithmetic, NegativeOffsetsSnapTowardZero)
{
    EXPECT_EQ(page.adjustOffset(-500), -400);
    EXPECT_EQ(page.adjustOffset(-790), -400);
}

TEST(PageArithmetic, ThePlaceInTheMiddleGivesItsOffsetBack)
{
    EXPECT_EQ(page.offsetAround((800 + 400) / 2400.0, 2400), 800);
    EXPECT_EQ(page.offsetAround((400 + 400) / 2400.0, 2400), 400);
}

TEST(PageArithmetic, ThePlaceIsKeptWithinTheStrip)
{
    EXPECT_EQ(page.offsetAround(0, 2400), 0);
    EXPECT_EQ(page.offsetAround(1, 2400), 1600);
    EXPECT_EQ(page.offsetAround(0.5, 700), 0);
}

TEST(PageArithmetic, TheEndOfAStripThatIsNoBoundaryComesBack)
{
    EXPECT_EQ(page.offsetAround((900 + 400) / 1700.0, 1700), 900);
}

TEST(PageArithmetic, ASnappedOffsetComesBack)
{
    const PageGeometry odd { 386, 700, 3, 8 };
    // The fifteenth boundary is at 1930 and is truncated to one point less.
    const auto X = odd.adjustOffset(1925);
    EXPECT_EQ(X, 1929);
    EXPECT_EQ(odd.offsetAround((X + 193) / 3860.0, 3860), X);
}

TEST(PageArithmetic, AnOffsetAPointOffItsBoundaryComesBack)
{
    const PageGeometry odd { 801, 700, 2, 320 };
    EXPECT_EQ(odd.offsetAround((401 + 400.5) / 4005, 4005), 401);
}

TEST(PageArithmetic, ThePlaceMovesToAColumnBoundaryOfAnotherStrip)
{
    // 0.5 × 3000 − 400 is 1100, nearest to the third boundary.
    EXPECT_EQ(page.offsetAround(0.5, 3000), 1200);
    EXPECT_EQ(page.offsetAround(0.5, 2640), 800);
}

// Every possible offset of a page, in strips of any number of columns, is restored exactly.
TEST(PageArithmetic, EveryOffsetComesBackFromItsPlace)
{
    for (const double W : { 800, 801, 803, 1366 }) {
        for (std::int32_t C = 1; C <= 3; ++C) {
            const PageGeometry view { W, 700, C, PageGeometry::pageWidthFor(W, C) };
            for (int columns = C; columns < 200; ++columns) {
                const auto S = static_cast<std::int64_t>(std::ceil(columns * W / C));
                for (int n = 0; n * W / C <= S - W; ++n) {
                    const auto X = static_cast<std::int64_t>(n * W / C);
                    ASSERT_EQ(view.offsetAround((X + W / 2) / S, S), X) << W << " " << C << " " << columns << " " << n;
                }
                const auto end = static_cast<std::int64_t>(S - W);
                ASSERT_EQ(view.offsetAround((end + W / 2) / S, S), end) << W << " " << C << " " << columns;
            }
        }
    }
}
