#include "store/ArrayDifference.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using namespace pagora;

namespace {

std::vector<StoredElement> stored(const Value::Array& array)
{
    std::vector<StoredElement> elements;
    for (const Value& value : array)
        elements.push_back({ value, static_cast<std::int64_t>(elements.size() + 1),
            static_cast<std::int64_t>(elements.size() + 1) * 1000 });
    return elements;
}

Value::Array numbers(int count)
{
    Value::Array array;
    for (int i = 0; i < count; ++i)
        array.push_back(i);
    return array;
}

std::size_t written(const ArrayDifference& difference)
{
    return static_cast<std::size_t>(std::count(difference.isKept.begin(), difference.isKept.end(), false));
}

// Returns the elements after the difference, and expects ascending ranks.
std::vector<StoredElement> applied(std::vector<StoredElement> elements, const ArrayDifference& difference)
{
    const auto start = elements.begin() + static_cast<std::ptrdiff_t>(difference.start);
    const auto next = elements.erase(start, start + static_cast<std::ptrdiff_t>(difference.count));
    elements.insert(next, difference.elements.begin(), difference.elements.end());
    for (std::size_t i = 1; i < elements.size(); ++i)
        EXPECT_LT(elements[i - 1].rank, elements[i].rank);
    return elements;
}

void expectArray(const std::vector<StoredElement>& elements, const Value::Array& array)
{
    ASSERT_EQ(elements.size(), array.size());
    for (std::size_t i = 0; i < array.size(); ++i)
        EXPECT_TRUE(elements[i].value.isSameAs(array[i]));
}

}

TEST(ArrayDifference, OneChangedElementTakesOneRowOver)
{
    auto array = numbers(1000);
    const auto before = stored(array);
    array[500] = "changed";
    const auto difference = arrayDifference(before, array);
    ASSERT_EQ(difference.elements.size(), 1u);
    EXPECT_EQ(difference.elements[0].id, 501);
    EXPECT_EQ(difference.elements[0].rank, before[500].rank);
    expectArray(applied(before, difference), array);
}

TEST(ArrayDifference, ChangesFarApartWriteOnlyThemselves)
{
    auto array = numbers(1000);
    const auto before = stored(array);
    array[10] = "a";
    array[900] = "b";
    array.erase(array.begin() + 500);
    array.insert(array.begin() + 300, "c");
    const auto difference = arrayDifference(before, array);
    EXPECT_EQ(written(difference), 3u);
    expectArray(applied(before, difference), array);
}

TEST(ArrayDifference, AnEmptyArrayGetsFreshRows)
{
    const auto array = numbers(3);
    const auto difference = arrayDifference({}, array);
    EXPECT_EQ(written(difference), 3u);
    EXPECT_EQ(difference.elements[0].id, 0);
    expectArray(applied({}, difference), array);
}

TEST(ArrayDifference, AMovedElementDoesNotMoveTheOthers)
{
    auto array = numbers(100);
    const auto before = stored(array);
    std::rotate(array.begin(), array.end() - 1, array.end());
    const auto difference = arrayDifference(before, array);
    EXPECT_EQ(written(difference), 1u);
    expectArray(applied(before, difference), array);
}

TEST(ArrayDifference, ExhaustedRanksWriteAllRowsAnew)
{
    auto array = numbers(3);
    auto before = stored(array);
    for (std::size_t i = 0; i < before.size(); ++i)
        before[i].rank = static_cast<std::int64_t>(i);
    array.insert(array.begin() + 1, "new");
    const auto difference = arrayDifference(before, array);
    EXPECT_EQ(written(difference), 4u);
    expectArray(applied(before, difference), array);
}

TEST(ArrayDifference, AnyShufflingAddingAndRemovingComesOutRight)
{
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        auto array = numbers(20);
        const auto before = stored(array);
        for (int step = 0; step < 6; ++step) {
            const auto place = array.begin() + static_cast<std::ptrdiff_t>(random() % array.size());
            switch (random() % 4) {
            case 0:
                array.erase(place);
                break;
            case 1:
                array.insert(place, "new");
                break;
            case 2:
                std::iter_swap(place, array.begin());
                break;
            default:
                // The array contains the same element twice.
                array.push_back(*place);
            }
        }
        expectArray(applied(before, arrayDifference(before, array)), array);
    }
}
