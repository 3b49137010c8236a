#include "store/UserDefaults.hpp"

#include "base/Json.hpp"
#include "base/Log.hpp"
#include "store/DefaultsRecovery.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace pagora;
using test::TemporaryFolder;

namespace {

Value everyKind()
{
    return Value::Dictionary {
        { "text", "Grüße" },
        { "integer", std::int64_t { 1 } << 62 },
        { "real", 0.1 },
        { "flag", true },
        { "date", Date { 1.5 } },
        { "data", Data(std::string("a\0b", 3)) },
        { "array", Value::Array { 1, "two" } },
    };
}

Value entry(int number)
{
    return Value::Dictionary { { "Number", number },
        { "CoverImage", Data(std::string(8000, char('a' + number % 26))) } };
}

}

TEST(UserDefaults, EveryKindComesBack)
{
    const TemporaryFolder folder;
    const Value all = everyKind();
    {
        UserDefaults defaults(folder.path());
        for (const auto& [key, value] : *all.dictionary())
            defaults.setObject(key, value);
        defaults.setObject("all", all);
        defaults.setObject("elements", Value::Array { all, all, Value::Array {} });
        EXPECT_TRUE(defaults.synchronize());
    }
    const UserDefaults defaults(folder.path());
    for (const auto& [key, value] : *all.dictionary())
        EXPECT_EQ(defaults.objectForKey(key), value) << key;
    EXPECT_EQ(defaults.objectForKey("all"), all);
    EXPECT_EQ(defaults.objectForKey("elements"), Value(Value::Array { all, all, Value::Array {} }));
}

TEST(UserDefaults, AnEmptyArrayIsNotAMissingOne)
{
    const TemporaryFolder folder;
    {
        UserDefaults defaults(folder.path());
        defaults.setObject("BookData", Value::Array {});
        defaults.synchronize();
    }
    EXPECT_EQ(UserDefaults(folder.path()).objectForKey("BookData"), Value(Value::Array {}));
}

TEST(UserDefaults, KeysAreListedSorted)
{
    const TemporaryFolder folder;
    UserDefaults defaults(folder.path());
    defaults.setObject("b", 1);
    defaults.setObject("a", 2);
    EXPECT_EQ(defaults.allKeys(), (std::vector<std::string> { "a", "b" }));
    EXPECT_TRUE(defaults.hasKey("a"));
    EXPECT_FALSE(defaults.hasKey("c"));
}

TEST(UserDefaults, RemovedKeysStayRemoved)
{
    const TemporaryFolder folder;
    {
        UserDefaults defaults(folder.path());
        defaults.setObject("array", Value::Array { entry(1) });
        defaults.setObject("text", "a");
        defaults.setObject("kept", "b");
        defaults.synchronize();
        for (const auto& key : { "array", "text" })
            defaults.removeObject(key);
        EXPECT_TRUE(defaults.synchronize());
    }
    EXPECT_EQ(UserDefaults(folder.path()).allKeys(), std::vector<std::string> { "kept" });
}

TEST(UserDefaults, AKeyMayChangeItsKind)
{
    const TemporaryFolder folder;
    {
        UserDefaults defaults(folder.path());
        defaults.setObject("toText", Value::Array { entry(1) });
        defaults.setObject("toArray", "text");
        defaults.synchronize();
        defaults.setObject("toText", "text");
        defaults.setObject("toArray", Value::Array { entry(1) });
        EXPECT_TRUE(defaults.synchronize());
    }
    const UserDefaults defaults(folder.path());
    EXPECT_EQ(defaults.objectForKey("toText"), Value("text"));
    EXPECT_EQ(defaults.objectForKey("toArray"), Value(Value::Array { entry(1) }));
}

TEST(UserDefaults, ValuesReadInTheKindAskedFor)
{
    const TemporaryFolder folder;
    UserDefaults defaults(folder.path());
    defaults.setObject("FontSize", 18.5);
    EXPECT_EQ(defaults.realForKey("FontSize"), 18.5);
    EXPECT_EQ(defaults.integerForKey("FontSize"), 18);
    EXPECT_EQ(defaults.stringForKey("FontSize"), "18.5");
    EXPECT_TRUE(defaults.boolForKey("FontSize"));
    EXPECT_EQ(defaults.realForKey("missing"), 0);
    EXPECT_EQ(defaults.stringForKey("missing"), std::nullopt);
}

TEST(UserDefaults, WhatIsNotFlushedIsNotStored)
{
    const TemporaryFolder folder;
    {
        UserDefaults defaults(folder.path());
        defaults.setObject("a", 1);
        defaults.synchronize();
        defaults.setObject("a", 2);
    }
    EXPECT_EQ(UserDefaults(folder.path()).integerForKey("a"), 1);
}

TEST(UserDefaults, AKillLosesNothingThatWasFlushed)
{
    const TemporaryFolder folder;
    const pid_t child = fork();
    if (child == 0) {
        UserDefaults defaults(folder.path());
        Value::Array array;
        for (int i = 0; i < 50; ++i) {
            array.push_back(entry(i));
            defaults.setObject("BookData", array);
            defaults.synchronize();
        }
        defaults.setObject("BookData", "not flushed");
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    const UserDefaults defaults(folder.path());
    const auto& problem = defaults.openingProblem();
    EXPECT_EQ(problem, "");
    const auto value = defaults.objectForKey("BookData");
    ASSERT_TRUE(value && value->array());
    ASSERT_EQ(value->array()->size(), 50u);
    EXPECT_EQ(value->array()->back(), entry(49));
}

TEST(UserDefaults, TellsTheFirstChangeAfterAFlush)
{
    const TemporaryFolder folder;
    UserDefaults defaults(folder.path());
    int told = 0;
    defaults.setWhenChanged([&] { ++told; });
    defaults.setObject("a", 1);
    defaults.setObject("b", 1);
    EXPECT_EQ(told, 1);
    defaults.synchronize();
    defaults.setObject("a", 1);
    EXPECT_EQ(told, 1) << "storing the same is no change";
    defaults.removeObject("missing");
    EXPECT_EQ(told, 1);
    defaults.removeObject("a");
    EXPECT_EQ(told, 2);
}

TEST(UserDefaults, DataAreReadableAfterTheirElementWasRemoved)
{
    const TemporaryFolder folder;
    {
        UserDefaults defaults(folder.path());
        defaults.setObject("BookData", Value::Array { entry(1), entry(2) });
        defaults.synchronize();
    }
    std::optional<Data> cover;
    {
        UserDefaults defaults(folder.path());
        cover = *(*defaults.objectForKey("BookData")->array())[0].find("CoverImage")->data();
        defaults.removeObject("BookData");
        for (int i = 0; i < 3; ++i) {
            defaults.setObject("count", i);
            EXPECT_TRUE(defaults.synchronize());
        }
        EXPECT_EQ(cover->bytes(), std::string(8000, 'b'));
    }
    EXPECT_EQ(cover->bytes(), std::string(8000, 'b')) << "after the store was closed";
}

TEST(UserDefaults, RemovedDataCanBeStoredAgain)
{
    const TemporaryFolder folder;
    {
        UserDefaults defaults(folder.path());
        defaults.setObject("BookData", Value::Array { entry(1) });
        defaults.synchronize();
        const auto kept = *defaults.objectForKey("BookData");
        defaults.removeObject("BookData");
        defaults.synchronize();
        defaults.setObject("BookData", kept);
        defaults.synchronize();
        defaults.setObject("later", 1);
        defaults.synchronize();
    }
    EXPECT_EQ(UserDefaults(folder.path()).objectForKey("BookData"), Value(Value::Array { entry(1) }));
}

TEST(UserDefaults, AFolderThatCannotBeMadeKeepsValuesInMemory)
{
    const TemporaryFolder folder;
    std::ofstream(folder.path("file")) << "in the way";
    const LogCapture quiet([](const std::string&) {});
    UserDefaults defaults(folder.path("file") + "/defaults");
    defaults.setObject("a", 1);
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(defaults.integerForKey("a"), 1);
}

TEST(UserDefaults, ValuesAreStoredOnceTheFolderCanBeMade)
{
    const TemporaryFolder folder;
    std::ofstream(folder.path("file")) << "in the way";
    const LogCapture quiet([](const std::string&) {});
    {
        UserDefaults defaults(folder.path("file"));
        defaults.setObject("a", 1);
        EXPECT_FALSE(defaults.synchronize());
        unlink(folder.path("file").c_str());
        EXPECT_TRUE(defaults.synchronize());
    }
    EXPECT_EQ(UserDefaults(folder.path("file")).integerForKey("a"), 1);
}

TEST(UserDefaults, SeveralThreadsMayUseIt)
{
    const TemporaryFolder folder;
    {
        UserDefaults defaults(folder.path());
        const auto write = [&](const std::string& name) {
            Value::Array array;
            for (int i = 0; i < 30; ++i) {
                array.push_back(entry(i));
                defaults.setObject(name, array);
                EXPECT_TRUE(defaults.synchronize());
                EXPECT_EQ(array[0].find("CoverImage")->data()->bytes(), std::string(8000, 'a'));
                defaults.allKeys();
            }
        };
        std::jthread first([&] { write("first"); });
        std::jthread second([&] { write("second"); });
    }
    const UserDefaults defaults(folder.path());
    for (const auto& name : { "first", "second" })
        EXPECT_EQ(defaults.objectForKey(name)->array()->size(), 30u);
}

TEST(UserDefaults, TwoAtATimeKeepBothTheirKeys)
{
    const TemporaryFolder folder;
    {
        UserDefaults first(folder.path()), second(folder.path());
        first.setObject("first", Value::Array { entry(1) });
        second.setObject("second", Value::Array { entry(2) });
        EXPECT_TRUE(first.synchronize());
        EXPECT_TRUE(second.synchronize());
        first.setObject("first", Value::Array { entry(3) });
        EXPECT_TRUE(first.synchronize());
    }
    const UserDefaults defaults(folder.path());
    EXPECT_EQ(defaults.objectForKey("first"), Value(Value::Array { entry(3) }));
    EXPECT_EQ(defaults.objectForKey("second"), Value(Value::Array { entry(2) }));
}

TEST(UserDefaults, CanBeReadFromElsewhereWhileOpen)
{
    const TemporaryFolder folder;
    UserDefaults defaults(folder.path());
    defaults.setObject("DragDropMode", "Copy");
    defaults.setObject("BookData", Value::Array { entry(1) });
    defaults.synchronize();
    const auto values = readDefaults(folder.path());
    ASSERT_TRUE(values) << values.reason();
    EXPECT_EQ(values->find("DragDropMode")->string()->c_str(), std::string("Copy"));
    EXPECT_NE(jsonText(*values).find("\"data\": \"YmJi"), std::string::npos);
}

TEST(UserDefaults, ReadingFromElsewhereLeavesNothingBehind)
{
    const TemporaryFolder folder;
    {
        UserDefaults defaults(folder.path());
        defaults.setObject("a", 1);
        defaults.synchronize();
    }
    EXPECT_TRUE(readDefaults(folder.path()));
    EXPECT_FALSE(std::filesystem::exists(folder.path("defaults.sqlite-wal")));
    EXPECT_EQ(*readDefaults(folder.path("nothing")), Value(Value::Dictionary {}));
    EXPECT_FALSE(std::filesystem::exists(folder.path("nothing")));
}
