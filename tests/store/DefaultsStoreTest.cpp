#include "store/DefaultsStore.hpp"

#include "base/Log.hpp"
#include "store/RowsInMemory.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <SQLiteCpp/SQLiteCpp.h>

#include <gtest/gtest.h>
#include <utility>

using namespace pagora;
using test::TemporaryFolder;

namespace {

// The row with the number of the last flush.
constexpr int stateRow = 1;

Value entry(int number, const Data& cover)
{
    return Value::Dictionary { { "CoverImage", cover }, { "LastInd", number } };
}

// Returns the paths of a book's files.
Value paths(const std::string& folder = "/books/Sea")
{
    Value::Array paths;
    for (int i = 0; i < 100; ++i)
        paths.emplace_back(folder + "/chapter" + std::to_string(i) + ".xhtml");
    return paths;
}

Value entryWithFiles(int number, const Value& files)
{
    return Value::Dictionary { { "Files", files }, { "LastInd", number } };
}

const Value* filesOf(const Value& books)
{
    return books.array()->front().find("Files");
}

Data cover(char character = 'x')
{
    return Data(std::string(8000, character));
}

// A store that measures the cost of a flush of one key.
class Flushes {
public:
    explicit Flushes(const std::string& folder)
        : _store(folder)
    {
        values = _store.open().values;
    }

    int rows(const std::string& key, std::optional<Value> value)
    {
        const int before = _store.rowsChanged();
        EXPECT_TRUE(_store.write({ { key, std::move(value) } }).isDone);
        _store.waitForBackup();
        return _store.rowsChanged() - before - stateRow;
    }

    std::map<std::string, Value> values;

private:
    DefaultsStore _store;
};

class LargeArray : public testing::Test {
protected:
    LargeArray()
    {
        for (int i = 0; i < 50'000; ++i)
            array.push_back(Value::Dictionary { { "LastInd", i } });
        flushes.rows("BookData", array);
    }

    void expectStored() { EXPECT_TRUE(Flushes(folder.path()).values.at("BookData") == Value(array)); }

    TemporaryFolder folder;
    Flushes flushes { folder.path() };
    Value::Array array;
};

int rowsIn(const std::string& file, const std::string& table)
{
    SQLite::Database database(file);
    return database.execAndGet("SELECT count(*) FROM " + table).getInt();
}

}

TEST_F(LargeArray, AChangedElementCostsOneRow)
{
    array[25'000] = Value::Dictionary { { "LastInd", -1 } };
    EXPECT_EQ(flushes.rows("BookData", array), 1);
    expectStored();
}

TEST_F(LargeArray, AnAppendedElementCostsOneRow)
{
    array.push_back("last");
    EXPECT_EQ(flushes.rows("BookData", array), 1);
    expectStored();
}

TEST_F(LargeArray, RemovedElementsCostTheirRows)
{
    array.erase(array.begin() + 40'000);
    array.erase(array.begin() + 20'000);
    array.erase(array.begin());
    EXPECT_EQ(flushes.rows("BookData", array), 3);
    expectStored();
}

TEST_F(LargeArray, AnUnchangedArrayCostsNothing)
{
    EXPECT_EQ(flushes.rows("BookData", array), -stateRow);
}

TEST(DefaultsStore, LargeDataAreNotWrittenAgainWithTheirEntry)
{
    const TemporaryFolder folder;
    Flushes flushes(folder.path());
    const Data picture = cover();
    flushes.rows("BookData", Value::Array { entry(1, picture) });
    EXPECT_EQ(flushes.rows("BookData", Value::Array { entry(2, picture) }), 1);
}

TEST(DefaultsStore, LargeDataThatWereLoadedAreNotWrittenAgainWithTheirEntry)
{
    const TemporaryFolder folder;
    Flushes(folder.path()).rows("BookData", Value::Array { entry(1, cover()) });
    Flushes flushes(folder.path());
    const Data loaded = *(*flushes.values.at("BookData").array())[0].find("CoverImage")->data();
    EXPECT_EQ(flushes.rows("BookData", Value::Array { entry(2, loaded) }), 1);
    EXPECT_EQ(loaded.bytes(), std::string(8000, 'x'));
}

TEST(DefaultsStore, SharedLargeDataAreStoredOnce)
{
    const TemporaryFolder folder;
    {
        Flushes flushes(folder.path());
        const Data picture = cover();
        flushes.rows("BookData", Value::Array { entry(1, picture), entry(2, picture) });
    }
    EXPECT_EQ(rowsIn(folder.path("defaults.sqlite"), "data"), 1);
}

TEST(DefaultsStore, UnusedLargeDataGoWithALaterFlush)
{
    const TemporaryFolder folder;
    {
        Flushes flushes(folder.path());
        flushes.rows("BookData", Value::Array { entry(1, cover()), entry(2, cover()) });
        flushes.rows("BookData", Value::Array {});
        flushes.rows("later", 1);
    }
    EXPECT_EQ(rowsIn(folder.path("defaults.sqlite"), "data"), 0);
    EXPECT_EQ(rowsIn(folder.path("defaults.sqlite"), "leftData"), 0);
}

TEST(DefaultsStore, ALongListInAnEntryStaysOnTheDiskUntilItIsAskedFor)
{
    const TemporaryFolder folder;
    Flushes(folder.path()).rows("BookData", Value::Array { entryWithFiles(1, paths()) });
    const Flushes flushes(folder.path());
    const Value* files = filesOf(flushes.values.at("BookData"));
    ASSERT_NE(files->source(), nullptr);
    EXPECT_EQ(*files, paths());
}

TEST(DefaultsStore, AListThatHoldsLargeDataStaysWithItsEntry)
{
    const TemporaryFolder folder;
    const Value pictures(Value::Array { cover('a'), cover('b') });
    Flushes(folder.path()).rows("BookData", Value::Array { entryWithFiles(1, pictures) });
    const Flushes flushes(folder.path());
    EXPECT_EQ(filesOf(flushes.values.at("BookData"))->source(), nullptr);
    EXPECT_EQ(*filesOf(flushes.values.at("BookData")), pictures);
}

TEST(DefaultsStore, ALongListIsNotWrittenAgainWithItsEntry)
{
    const TemporaryFolder folder;
    const Value files = paths();
    Flushes flushes(folder.path());
    EXPECT_EQ(flushes.rows("BookData", Value::Array { entryWithFiles(1, files) }), 3);
    EXPECT_EQ(flushes.rows("BookData", Value::Array { entryWithFiles(2, files) }), 1);
    EXPECT_EQ(flushes.rows("BookData", Value::Array { entryWithFiles(2, paths("/books/Land")) }), 3);
}

TEST(DefaultsStore, ALongListThatWasLoadedIsNotWrittenAgainWithItsEntry)
{
    const TemporaryFolder folder;
    Flushes(folder.path()).rows("BookData", Value::Array { entryWithFiles(1, paths()) });
    Flushes flushes(folder.path());
    const Value loaded = *filesOf(flushes.values.at("BookData"));
    EXPECT_EQ(flushes.rows("BookData", Value::Array { entryWithFiles(2, loaded) }), 1);
    EXPECT_EQ(loaded, paths());
}

TEST(DefaultsStore, AnUnusedLongListGoesWithALaterFlush)
{
    const TemporaryFolder folder;
    {
        const Value files = paths();
        Flushes flushes(folder.path());
        flushes.rows("BookData", Value::Array { entryWithFiles(1, files), entryWithFiles(2, files) });
        flushes.rows("BookData", Value::Array { entryWithFiles(1, files) });
        flushes.rows("BookData", Value::Array {});
        flushes.rows("later", 1);
    }
    EXPECT_EQ(rowsIn(folder.path("defaults.sqlite"), "data"), 0);
    EXPECT_EQ(rowsIn(folder.path("defaults.sqlite"), "leftData"), 0);
}

TEST(DefaultsStore, AListThatLeftTheStoreAndComesBackIsStoredAnew)
{
    const TemporaryFolder folder;
    const Value files = paths();
    {
        Flushes flushes(folder.path());
        flushes.rows("BookData", Value::Array { entryWithFiles(1, files) });
        flushes.rows("BookData", Value::Array {});
        flushes.rows("later", 1);
        flushes.rows("BookData", Value::Array { entryWithFiles(2, files) });
    }
    EXPECT_EQ(*filesOf(Flushes(folder.path()).values.at("BookData")), files);
}

TEST(DefaultsStore, ADamagedLongListIsReadFromTheBackup)
{
    const TemporaryFolder folder;
    Flushes(folder.path()).rows("BookData", Value::Array { entryWithFiles(1, paths()) });
    {
        SQLite::Database file(folder.path("defaults.sqlite"), SQLite::OPEN_READWRITE);
        file.exec("UPDATE data SET bytes = zeroblob(1000)");
    }
    const LogCapture quiet([](const std::string&) {});
    const Flushes flushes(folder.path());
    EXPECT_EQ(*filesOf(flushes.values.at("BookData")), paths());
}

TEST(DefaultsStore, TheBackupHasTheSameRows)
{
    const TemporaryFolder folder;
    {
        Flushes flushes(folder.path());
        flushes.rows("BookData", Value::Array { entry(1, cover()), entry(2, cover()) });
        flushes.rows("BookData", Value::Array { entry(3, cover()) });
        flushes.rows("a", "text");
    }
    for (const char* table : { "value", "element", "data" })
        EXPECT_EQ(rowsIn(folder.path("defaults.sqlite"), table), rowsIn(folder.path("defaults-backup.sqlite"), table));
    std::filesystem::remove(folder.path("defaults.sqlite"));
    const Flushes flushes(folder.path());
    EXPECT_EQ(flushes.values.at("BookData"), Value(Value::Array { entry(3, cover()) }));
    EXPECT_EQ(flushes.values.at("a"), Value("text"));
}

TEST(DefaultsStore, ABackupThatFellBehindIsMadeAnew)
{
    const TemporaryFolder folder;
    Flushes(folder.path()).rows("a", 1);
    std::filesystem::copy_file(folder.path("defaults-backup.sqlite"), folder.path("older"));
    Flushes(folder.path()).rows("a", 2);
    std::filesystem::rename(folder.path("older"), folder.path("defaults-backup.sqlite"));
    {
        const Flushes flushes(folder.path());
    }
    std::filesystem::remove(folder.path("defaults.sqlite"));
    EXPECT_EQ(Flushes(folder.path()).values.at("a"), Value(2));
}

TEST(DefaultsStore, DamagedLargeDataAreReadFromTheBackup)
{
    const TemporaryFolder folder;
    Flushes(folder.path()).rows("BookData", Value::Array { entry(1, cover()) });
    {
        SQLite::Database file(folder.path("defaults.sqlite"), SQLite::OPEN_READWRITE);
        file.exec("UPDATE data SET bytes = zeroblob(8000)");
    }
    const LogCapture quiet([](const std::string&) {});
    const Flushes flushes(folder.path());
    EXPECT_EQ((*flushes.values.at("BookData").array())[0], entry(1, cover()));
}

TEST(DefaultsStore, ADictionaryIsReadOnFirstUse)
{
    const TemporaryFolder folder;
    Flushes(folder.path()).rows("BookData", Value::Array { entry(1, cover()), "text" });
    const Flushes flushes(folder.path());
    const auto& elements = *flushes.values.at("BookData").array();
    ASSERT_TRUE(elements[0].source());
    EXPECT_EQ(entryUnder("LastInd", elements[0]), Value(1));
    EXPECT_EQ(entryUnder("Title", elements[0]), std::nullopt);
    EXPECT_EQ(entryUnder("CoverImage", elements[0])->data()->bytes(), cover().bytes());
    EXPECT_EQ(elements[0], entry(1, cover()));
    EXPECT_EQ(elements[1], Value("text"));
}

TEST(DefaultsStore, ADictionaryThatWasRemovedBeforeItWasReadKeepsItsParts)
{
    const TemporaryFolder folder;
    Flushes(folder.path()).rows("BookData", Value::Array { entry(1, cover()), entryWithFiles(2, paths()) });
    Flushes flushes(folder.path());
    const auto elements = *std::exchange(flushes.values, {}).at("BookData").array();
    flushes.rows("BookData", Value::Array {});
    for (int i = 0; i < 3; ++i)
        flushes.rows("later", i);
    EXPECT_EQ(elements[0], entry(1, cover()));
    EXPECT_EQ(elements[1], entryWithFiles(2, paths()));
}

TEST(DefaultsStore, ADictionaryThatIsStoredAgainUnreadCostsNoRow)
{
    const TemporaryFolder folder;
    Flushes(folder.path()).rows("BookData", Value::Array { entry(1, cover()), entry(2, cover('y')) });
    Flushes flushes(folder.path());
    const auto elements = *flushes.values.at("BookData").array();
    EXPECT_EQ(flushes.rows("BookData", Value::Array { elements[0], elements[1], entry(3, cover('z')) }), 2);
    const Flushes again(folder.path());
    EXPECT_EQ(again.values.at("BookData"),
        Value(Value::Array { entry(1, cover()), entry(2, cover('y')), entry(3, cover('z')) }));
}
