#include "base/Value.hpp"

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

namespace {

// Returns a value or nothing, and counts its calls.
struct CountingSource : Value::Source {
    explicit CountingSource(std::optional<Value> value)
        : value(std::move(value))
    {
    }
    std::optional<Value> read() const override
    {
        ++reads;
        return value;
    }
    std::optional<Value> value;
    mutable int reads = 0;
};

}

TEST(Value, KeptContainerIsReadOnceWhenItIsAskedFor)
{
    const auto source = std::make_shared<CountingSource>(Value(Value::Array { 1, 2 }));
    const Value value(Value::Container::Array, source);
    EXPECT_TRUE(value.isArray());
    EXPECT_EQ(value.string(), nullptr);
    EXPECT_EQ(source->reads, 0);
    EXPECT_EQ(*value.array(), (Value::Array { 1, 2 }));
    EXPECT_EQ(value.dictionary(), nullptr);
    EXPECT_EQ(source->reads, 1);
}

TEST(Value, KeptContainerEqualsTheSameInMemory)
{
    const Value::Dictionary entries { { "title", "Sea" } };
    const Value value(Value::Container::Dictionary, std::make_shared<CountingSource>(Value(entries)));
    EXPECT_EQ(value, Value(entries));
    EXPECT_EQ(*value.find("title"), Value("Sea"));
}

TEST(Value, KeptContainerThatCannotBeReadIsEmpty)
{
    using enum Value::Container;
    EXPECT_EQ(Value(Array, std::make_shared<CountingSource>(std::nullopt)), Value(Value::Array {}));
    EXPECT_EQ(Value(Dictionary, std::make_shared<CountingSource>(Value("a text"))), Value(Value::Dictionary {}));
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
