#include "marks/JsonScanner.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

std::string again(std::string_view json)
{
    const auto node = jsonNodeFrom(json);
    return node ? jsonText(*node) : "none";
}

}

TEST(JsonScanner, KeepsTheOrderOfMembersAndTheDigitsOfNumbers)
{
    EXPECT_EQ(again(R"({"b": 1.50, "a": [-0, 1e400, true, null], "c": {}})"),
        "{\n  \"b\": 1.50,\n  \"a\": [\n    -0,\n    1e400,\n    true,\n    null\n  ],\n  \"c\": {}\n}");
}

TEST(JsonScanner, ReadsEscapesAndWritesOnlyThoseThatAreNeeded)
{
    const auto node = jsonNodeFrom(R"(["\u00e4\ud83d\ude00\n\/\"\\", "\ud83d", "\u0007"])");
    ASSERT_TRUE(node);
    EXPECT_EQ(node->elements[0].text, "ä😀\n/\"\\");
    EXPECT_EQ(node->elements[1].text, "\xEF\xBF\xBD");
    EXPECT_EQ(jsonText(node->elements[0]), R"("ä😀\n/\"\\")");
    EXPECT_EQ(jsonText(node->elements[2]), R"("\u0007")");
}

TEST(JsonScanner, ReplacesBytesThatAreNoUtf8)
{
    const auto node = jsonNodeFrom("[\"a\xFF\"]");
    ASSERT_TRUE(node);
    EXPECT_EQ(node->elements[0].text, "a\xEF\xBF\xBD");
}

TEST(JsonScanner, RefusesWhatIsNoJson)
{
    for (const char* text : { "", "{", "[1,]", "{\"a\"}", "{\"a\":}", "[1] 2", "[01]", "[1.]", "[.5]", "[+1]", "[nul]",
             "\"a", "[\"\\x\"]", "[\"\\u12\"]", "[\"\n\"]", "{a: 1}", "['a']", "[NaN]", "[-]", "//" })
        EXPECT_FALSE(jsonNodeFrom(text)) << text;
}

TEST(JsonScanner, RefusesValuesThatAreNestedTooDeep)
{
    EXPECT_TRUE(jsonNodeFrom(std::string(60, '[') + std::string(60, ']')));
    EXPECT_FALSE(jsonNodeFrom(std::string(1'000'000, '[') + std::string(1'000'000, ']')));
    EXPECT_FALSE(jsonElements(std::string(1'000'000, '[') + std::string(1'000'000, ']')));
}

TEST(JsonScanner, RefusesMoreValuesThanItsBound)
{
    std::string text = "[0";
    for (std::size_t i = 0; i < maxJsonNodes; ++i)
        text += ",0";
    EXPECT_FALSE(jsonNodeFrom(text + "]"));
    EXPECT_EQ(jsonElements(text + "]")->size(), maxJsonNodes + 1);
}

TEST(JsonScanner, GivesTheMembersOfAnObjectAsTheyAreWritten)
{
    const auto members = jsonMembers("\xEF\xBB\xBF { \"a\" : [1,  2] , \"b\":\"\\u0041\" } ");
    ASSERT_TRUE(members);
    EXPECT_EQ((*members)[0].first, "a");
    EXPECT_EQ((*members)[0].second, "[1,  2]");
    EXPECT_EQ((*members)[1].second, "\"\\u0041\"");
    EXPECT_FALSE(jsonMembers("[1]"));
    EXPECT_FALSE(jsonMembers("{\"a\": 1"));
}

TEST(JsonScanner, TakesTheLastOfSeveralMembersOfOneName)
{
    auto node = *jsonNodeFrom(R"({"a": "1", "a": "2"})");
    EXPECT_EQ(node.textOf("a"), "2");
    node.set("a", JsonNode::ofText("3"));
    EXPECT_EQ(node.textOf("a"), "3");
    node.remove("a");
    EXPECT_FALSE(node.find("a"));
}

}
