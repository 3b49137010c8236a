#include "kept_pages/PageKey.hpp"

#include "files/Files.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace pagora {

namespace {

PageKey someKey()
{
    PageKey key;
    key.archive = "/books/Sea.epub";
    key.archiveBytes = 1000;
    key.archiveTime = 2000;
    key.theme = 1;
    key.font = "Georgia";
    key.textSize = 1.25f;
    key.columns = 2;
    key.chapter = 3;
    key.cap = 4;
    key.place = 0.1;
    return key;
}

}

TEST(PageKey, HasOneText)
{
    EXPECT_EQ(textOf(someKey()), textOf(someKey()));
}

TEST(PageKey, DiffersWithEachThingThatThePageDependsOn)
{
    const std::vector<std::function<void(PageKey&)>> changes {
        [](PageKey& key) { key.archive = "/books/See.epub"; },
        [](PageKey& key) { ++key.archiveBytes; },
        [](PageKey& key) { ++key.archiveTime; },
        [](PageKey& key) { key.theme = 2; },
        [](PageKey& key) { key.font = "Arial"; },
        [](PageKey& key) { key.textSize = 1.2500001f; },
        [](PageKey& key) { key.columns = 1; },
        [](PageKey& key) { key.chapter = 4; },
        [](PageKey& key) { key.cap = 3; },
        [](PageKey& key) { key.place = 0.10000000000000002; },
        [](PageKey& key) { key.place = std::nullopt; },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        auto key = someKey();
        changes[i](key);
        EXPECT_NE(textOf(key), textOf(someKey())) << i;
    }
}

TEST(PageKey, DoesNotTakeAFontsNameForAnotherValue)
{
    auto key = someKey();
    key.font = "Georgia\n4 1.25\n1 2";
    key.textSize = 2;
    EXPECT_NE(textOf(key), textOf(someKey()));
}

TEST(PageKey, ChangesWithTheArchive)
{
    const test::TemporaryFolder folder;
    const auto archive = folder.path("Sea.epub");
    EXPECT_FALSE(pageKeyOf(archive));
    ASSERT_TRUE(writeFile(archive, "one"));
    const auto before = pageKeyOf(archive);
    ASSERT_TRUE(before);
    EXPECT_EQ(textOf(pageKeyOf(archive).value()), textOf(*before));
    ASSERT_TRUE(writeFile(archive, "another"));
    EXPECT_NE(textOf(pageKeyOf(archive).value()), textOf(*before));
}

}
