#include "kept_pages/KeptPages.hpp"

#include "base/Path.hpp"
#include "files/Files.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace pagora {

namespace {

class KeptPagesTest : public testing::Test {
protected:
    static PageKey keyOf(const std::string& archive)
    {
        PageKey key;
        key.archive = archive;
        key.font = "Georgia";
        return key;
    }
    static PagePicture pictureOf(char color) { return { 2, 1, 1, "engine", "", std::string(8, color) }; }
    void store(const std::string& archive, char color) { pages.storing(keyOf(archive), pictureOf(color))(); }
    std::vector<std::string> files() const
    {
        std::vector<std::string> paths;
        for (const auto& name : folderEntries(inFolder).value_or(paths))
            paths.push_back(appendingPathComponent(inFolder, name));
        return paths;
    }
    // Sets the time of the file's last change to that many seconds ago.
    static void age(const std::string& path, int seconds)
    {
        const timespec time { 1'000'000'000 - seconds, 0 };
        const timespec times[] = { time, time };
        ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    }

    test::TemporaryFolder home;
    std::string inFolder = home.path("pages");
    KeptPages pages { inFolder };
};

}

TEST_F(KeptPagesTest, GiveBackThePictureOfTheSameKey)
{
    store("/a.epub", 'a');
    store("/b.epub", 'b');
    EXPECT_EQ(pages.read(keyOf("/a.epub")), pictureOf('a'));
    EXPECT_EQ(KeptPages(inFolder).read(keyOf("/b.epub")), pictureOf('b'));
    EXPECT_FALSE(pages.read(keyOf("/c.epub")));
}

TEST_F(KeptPagesTest, HaveNoPictureOfAnotherPage)
{
    store("/a.epub", 'a');
    auto key = keyOf("/a.epub");
    key.chapter = 1;
    EXPECT_FALSE(pages.read(key));
}

TEST_F(KeptPagesTest, KeepOnePictureABook)
{
    store("/a.epub", 'a');
    auto key = keyOf("/a.epub");
    key.chapter = 1;
    pages.storing(key, pictureOf('b'))();
    EXPECT_EQ(pages.read(key), pictureOf('b'));
    EXPECT_FALSE(pages.read(keyOf("/a.epub")));
    EXPECT_EQ(files().size(), 1u);
}

TEST_F(KeptPagesTest, LoseThePictureThatATooLargeOneFollows)
{
    store("/a.epub", 'a');
    pages.storing(keyOf("/a.epub"), { 9000, 9000, 1, "", "", std::string(4, 'x') })();
    EXPECT_TRUE(files().empty());
}

TEST_F(KeptPagesTest, LoseTheOldestPictureWhenThereAreTooMany)
{
    store("/0.epub", 'a');
    age(files().at(0), 1000);
    for (std::size_t i = 1; i < KeptPages::maxPages; ++i)
        store("/" + std::to_string(i) + ".epub", 'b');
    EXPECT_EQ(files().size(), KeptPages::maxPages);
    EXPECT_TRUE(pages.read(keyOf("/0.epub")));
    store("/new.epub", 'c');
    EXPECT_EQ(files().size(), KeptPages::maxPages);
    EXPECT_FALSE(pages.read(keyOf("/0.epub")));
    EXPECT_TRUE(pages.read(keyOf("/1.epub")));
    EXPECT_TRUE(pages.read(keyOf("/new.epub")));
}

TEST_F(KeptPagesTest, RemoveThePictureOfABook)
{
    store("/a.epub", 'a');
    store("/b.epub", 'b');
    pages.remove("/a.epub");
    EXPECT_FALSE(pages.read(keyOf("/a.epub")));
    EXPECT_TRUE(pages.read(keyOf("/b.epub")));
    EXPECT_EQ(files().size(), 1u);
}

TEST_F(KeptPagesTest, RemoveAllPictures)
{
    store("/a.epub", 'a');
    store("/b.epub", 'b');
    pages.removeAll();
    EXPECT_TRUE(files().empty());
    store("/a.epub", 'c');
    EXPECT_EQ(pages.read(keyOf("/a.epub")), pictureOf('c'));
}

TEST_F(KeptPagesTest, StoreNothingOfABookThatWasRemovedMeanwhile)
{
    const auto ofRemoved = pages.storing(keyOf("/a.epub"), pictureOf('a'));
    const auto ofAll = pages.storing(keyOf("/b.epub"), pictureOf('b'));
    pages.remove("/a.epub");
    ofRemoved();
    EXPECT_TRUE(files().empty());
    pages.removeAll();
    ofAll();
    EXPECT_TRUE(files().empty());
}

TEST_F(KeptPagesTest, KeepTheLaterOfTwoPicturesInWhateverOrderTheyAreStored)
{
    const auto earlier = pages.storing(keyOf("/a.epub"), pictureOf('a'));
    const auto later = pages.storing(keyOf("/a.epub"), pictureOf('b'));
    later();
    earlier();
    EXPECT_EQ(pages.read(keyOf("/a.epub")), pictureOf('b'));
}

TEST_F(KeptPagesTest, ReadNoDamagedFile)
{
    store("/a.epub", 'a');
    const auto file = files().at(0);
    const auto bytes = readFile(file).value();
    for (const auto& damaged : { std::string(), bytes.substr(0, bytes.size() / 2), bytes + bytes,
             std::string(1'000'000, 'x'), bytes.substr(0, bytes.size() - 1) + "!" }) {
        ASSERT_TRUE(writeFile(file, damaged));
        EXPECT_FALSE(pages.read(keyOf("/a.epub")));
    }
    store("/a.epub", 'b');
    EXPECT_TRUE(pages.read(keyOf("/a.epub")));
}

TEST_F(KeptPagesTest, ReadNoFolderAndNoPipeInAFilesPlace)
{
    store("/a.epub", 'a');
    const auto file = files().at(0);
    ASSERT_TRUE(removeItem(file));
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(pages.read(keyOf("/a.epub")));
    ASSERT_TRUE(removeItem(file));
    ASSERT_TRUE(createFolder(file));
    EXPECT_FALSE(pages.read(keyOf("/a.epub")));
}

TEST_F(KeptPagesTest, WithoutAFolderKeepNothing)
{
    KeptPages none;
    none.storing(keyOf("/a.epub"), pictureOf('a'))();
    EXPECT_FALSE(none.read(keyOf("/a.epub")));
    none.remove("/a.epub");
    none.removeAll();
}

}
