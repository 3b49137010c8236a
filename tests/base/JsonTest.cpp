#include "base/Json.hpp"

#include <cmath>
#include <gtest/gtest.h>

using namespace pagora;

TEST(Json, NumbersKeepTheirKindAndDigits)
{
    EXPECT_EQ(jsonText(42), "42");
    EXPECT_EQ(jsonText(18.0), "18.0");
    EXPECT_EQ(jsonText(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(jsonText(1e300), "1e+300");
}

TEST(Json, NumbersThatAreNotFiniteAreNull)
{
    EXPECT_EQ(jsonText(std::nan("")), "null");
    EXPECT_EQ(jsonText(-INFINITY), "null");
}

TEST(Json, TextsAreEscaped)
{
    EXPECT_EQ(jsonText("a\"b\\c\nd\x7F"), "\"a\\\"b\\\\c\\u000Ad\\u007F\"");
    EXPECT_EQ(jsonText("\xC3\xA9"), "\"\xC3\xA9\"");
}

TEST(Json, BytesThatAreNoUtf8AreReplaced)
{
    EXPECT_EQ(jsonText("a\xFF"
                       "b"),
        "\"a\xEF\xBF\xBD"
        "b\"");
}

TEST(Json, TextsWithZeroBytesAreComplete)
{
    EXPECT_EQ(jsonText(std::string("a\0b", 3)), "\"a\\u0000b\"");
}

TEST(Json, DataAndDatesAreMarkedObjects)
{
    EXPECT_EQ(jsonText(Data("abc")), "{\"data\": \"YWJj\"}");
    EXPECT_EQ(jsonText(Date { 2 }), "{\"date\": 2.0}");
}

TEST(Json, ContainersAreIndented)
{
    EXPECT_EQ(jsonText(Value::Dictionary { { "a", Value::Array { true, 2 } }, { "b", Value::Array {} } }),
        "{\n  \"a\": [\n    true,\n    2\n  ],\n  \"b\": []\n}");
}
