#include "app/HomeOpening.hpp"

#include "catalogue/Settings.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <filesystem>
#include <gtest/gtest.h>

namespace pagora {

using test::TemporaryFolder;

TEST(HomeOpening, OpensTheStoredValuesAndMakesTheRecordsOfTheBooks)
{
    const TemporaryFolder folder;
    {
        UserDefaults stored(folder.path());
        stored.setObject(defaults_keys::BookData, Value::Array { Value::Dictionary { { "Title", "Emma" } } });
        ASSERT_TRUE(stored.synchronize());
    }
    HomeOpening home(folder.path());
    ASSERT_TRUE(home.take(0));
    const auto books = home.defaults().objectForKey(defaults_keys::BookData);
    ASSERT_TRUE(books && books->array());
    const auto records = home.records()->take(*books->array());
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records.front()->title(), "Emma");
}

TEST(HomeOpening, LeavesAFolderThatAnotherProgramHasAlone)
{
    const TemporaryFolder folder;
    HomeLock other(folder.path());
    ASSERT_TRUE(other.take(0));
    HomeOpening home(folder.path());
    EXPECT_FALSE(home.take(0));
    EXPECT_FALSE(std::filesystem::exists(folder.path("defaults.sqlite")));
}

TEST(HomeOpening, OpensAFolderThatBecomesFree)
{
    const TemporaryFolder folder;
    auto other = std::make_unique<HomeLock>(folder.path());
    ASSERT_TRUE(other->take(0));
    HomeOpening home(folder.path());
    other = nullptr;
    ASSERT_TRUE(home.take(30));
    EXPECT_EQ(home.defaults().folder(), folder.path());
}

TEST(HomeOpening, GivesTheFolderFreeAtItsEnd)
{
    const TemporaryFolder folder;
    std::optional<HomeOpening> home(std::in_place, folder.path());
    HomeLock next(folder.path());
    EXPECT_FALSE(next.take(0));
    home.reset();
    EXPECT_TRUE(next.take(0));
}

}
