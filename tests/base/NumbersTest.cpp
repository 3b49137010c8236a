#include "base/Numbers.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace pagora;

namespace {

constexpr auto minimum = std::numeric_limits<std::int64_t>::min();
constexpr auto maximum = std::numeric_limits<std::int64_t>::max();

}

TEST(Numbers, ReadsDigitsUpToTheFirstOtherCharacter)
{
    EXPECT_EQ(integerValue(" \t42px"), 42);
    EXPECT_EQ(integerValue("+7"), 7);
    EXPECT_EQ(integerValue("-12.9"), -12);
    EXPECT_EQ(intValue("768;"), 768);
}

TEST(Numbers, ATextWithoutDigitsIsZero)
{
    EXPECT_EQ(integerValue(""), 0);
    EXPECT_EQ(integerValue("-"), 0);
    EXPECT_EQ(integerValue("px42"), 0);
    EXPECT_EQ(doubleValue("."), 0);
    EXPECT_EQ(doubleValue("e5"), 0);
    EXPECT_EQ(doubleValue("inf"), 0);
}

TEST(Numbers, NumbersOutOfRangeAreTheNearestOnes)
{
    EXPECT_EQ(integerValue("9223372036854775807"), maximum);
    EXPECT_EQ(integerValue("9223372036854775808"), maximum);
    EXPECT_EQ(integerValue("-9223372036854775808"), minimum);
    EXPECT_EQ(integerValue("-99999999999999999999"), minimum);
    EXPECT_EQ(intValue("4294967296"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(intValue("-4294967296"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(doubleValue("-1e999"), -std::numeric_limits<double>::max());
}

TEST(Numbers, ReadsDecimalFractionsWithExponents)
{
    EXPECT_EQ(doubleValue(" -1.5e2x"), -150);
    EXPECT_EQ(doubleValue(".5"), 0.5);
    EXPECT_EQ(doubleValue("2."), 2);
    EXPECT_EQ(doubleValue("3e"), 3);
    EXPECT_EQ(doubleValue("3e+"), 3);
    EXPECT_EQ(doubleValue("0x10"), 0);
}

TEST(Numbers, StoredKindsConvertIntoIntegers)
{
    const Value text("12 books"), real(-2.7), flag(true), array(Value::Array {});
    EXPECT_EQ(integerFrom(&text), 12);
    EXPECT_EQ(integerFrom(&real), -2);
    EXPECT_EQ(integerFrom(&flag), 1);
    EXPECT_EQ(integerFrom(&array), 0);
    EXPECT_EQ(integerFrom(nullptr), 0);
}

TEST(Numbers, StoredKindsConvertIntoReals)
{
    const Value text("1.25"), integer(3), flag(true);
    EXPECT_EQ(realFrom(&text), 1.25);
    EXPECT_EQ(realFrom(&integer), 3);
    EXPECT_EQ(realFrom(&flag), 1);
    EXPECT_EQ(realFrom(nullptr), 0);
}

TEST(Numbers, StoredKindsConvertIntoBooleans)
{
    for (const char* text : { "YES", "true", "1", "-07", " 9" })
        EXPECT_TRUE(booleanFrom(std::make_unique<Value>(text).get())) << text;
    for (const char* text : { "", "NO", "false", "0", "00", "-" })
        EXPECT_FALSE(booleanFrom(std::make_unique<Value>(text).get())) << text;
    const Value real(0.5), zero(0);
    EXPECT_TRUE(booleanFrom(&real));
    EXPECT_FALSE(booleanFrom(&zero));
    EXPECT_FALSE(booleanFrom(nullptr));
}

TEST(Numbers, StoredKindsConvertIntoTexts)
{
    const Value text("a"), integer(-3), real(0.1), whole(18.0), flag(true), array(Value::Array {});
    EXPECT_EQ(stringFrom(&text), "a");
    EXPECT_EQ(stringFrom(&integer), "-3");
    EXPECT_EQ(stringFrom(&real), "0.1");
    EXPECT_EQ(stringFrom(&whole), "18");
    EXPECT_EQ(stringFrom(&flag), "1");
    EXPECT_EQ(stringFrom(&array), std::nullopt);
    EXPECT_EQ(stringFrom(nullptr), std::nullopt);
}

TEST(Numbers, TruncationIsDefinedForEveryNumber)
{
    EXPECT_EQ(truncated(-1.9), -1);
    EXPECT_EQ(truncated(std::nan("")), 0);
    EXPECT_EQ(truncated(1e300), maximum);
    EXPECT_EQ(truncated(-1e300), minimum);
    EXPECT_EQ(truncated(-9223372036854775808.0), minimum);
    EXPECT_EQ(truncated32(3e9), std::numeric_limits<std::int32_t>::max());
}

TEST(Numbers, WrappingKeepsTheBitsAndClampingStopsAtZero)
{
    EXPECT_EQ(wrapped(-1.5), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(clampedUnsigned(-1.5), 0u);
    EXPECT_EQ(clampedUnsigned(2.9), 2u);
    EXPECT_EQ(clampedUnsigned(1e30), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(clampedUnsigned(std::nan("")), 0u);
    EXPECT_EQ(low32(0x1'FFFF'FFFFull), -1);
}
