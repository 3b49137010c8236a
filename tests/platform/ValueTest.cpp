#include "platform/Value.hpp"

#include <gtest/gtest.h>

using namespace pagora;

TEST(Value, GivesItsContentInItsOwnKindOnly)
{
    const Value value(3);
    ASSERT_NE(value.integer(), nullptr);
    EXPECT_EQ(*value.integer(), 3);
    EXPECT_EQ(value.real(), nullptr);
    EXPECT_EQ(value.string(), nullptr);
    EXPECT_EQ(value.boolean(), nullptr);
}

TEST(Value, KeepsATextLiteralAsAString)
{
    const Value value("text");
    ASSERT_NE(value.string(), nullptr);
    EXPECT_EQ(*value.string(), "text");
}

TEST(Value, FindsEntriesOfADictionary)
{
    const Value value(Value::Dictionary { { "Title", "A book" } });
    ASSERT_NE(value.find("Title"), nullptr);
    EXPECT_EQ(*value.find("Title"), Value("A book"));
    EXPECT_EQ(value.find("Author"), nullptr);
    EXPECT_EQ(Value(1).find("Title"), nullptr);
}

TEST(Value, CopiesAreTheSameAndEqualOnesAreNot)
{
    const Value value(Value::Array { 1, 2 });
    const Value copy = value;
    EXPECT_TRUE(copy.isSameAs(value));
    EXPECT_EQ(copy.identity(), value.identity());
    const Value equal(Value::Array { 1, 2 });
    EXPECT_FALSE(equal.isSameAs(value));
    EXPECT_EQ(equal, value);
}

TEST(Value, ValuesOfDifferentKindsDiffer)
{
    EXPECT_FALSE(Value(1) == Value(true));
    EXPECT_FALSE(Value(1) == Value(1.0));
}

TEST(Data, ReadsStoredBytesAtEachCall)
{
    int reads = 0;
    const Data data(3, [&] {
        ++reads;
        return std::optional<std::string>("abc");
    });
    EXPECT_EQ(data.size(), 3u);
    EXPECT_EQ(data.bytes(), "abc");
    EXPECT_EQ(data.bytes(), "abc");
    EXPECT_EQ(reads, 2);
}

TEST(Data, UnreadableBytesAreEmpty)
{
    EXPECT_EQ(Data(3, [] { return std::optional<std::string>(); }).bytes(), "");
}

TEST(Data, AllCopiesReadFromWhereOneIsKept)
{
    const Data data("abc");
    const Data copy = data;
    data.keepIn([] { return std::optional<std::string>("xyz"); });
    EXPECT_EQ(copy.bytes(), "xyz");
}

TEST(Data, EqualBytesAreEqualWhereverTheyAre)
{
    EXPECT_EQ(Data("abc"), Data(3, [] { return std::optional<std::string>("abc"); }));
    EXPECT_FALSE(Data("abc") == Data("abd"));
}
