#include "files/PrefetchedCopy.hpp"

#include "files/Files.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

using Names = std::vector<std::string>;

namespace {

struct CopiesAhead : testing::Test {
    CopiesAhead() { createFolder(library); }

    test::TemporaryFolder folder;
    const std::string library = folder.path("library");
    const std::string source = test::makeFile(folder.path("Sea.epub"), "the sea");
};

}

TEST_F(CopiesAhead, LeaveNothingUnlessTheyTakeAName)
{
    ASSERT_TRUE(PrefetchedCopy::of(source, library));
    EXPECT_TRUE(folderEntries(library)->empty());
}

TEST_F(CopiesAhead, DoNotShowBeforeTheyTakeTheSourcesName)
{
    const auto copy = PrefetchedCopy::of(source, library);
    ASSERT_TRUE(copy);
    EXPECT_TRUE(folderEntries(library)->empty());
    EXPECT_EQ(copy->takeName(), "Sea.epub");
    EXPECT_EQ(folderEntries(library), (Names { "Sea.epub" }));
    EXPECT_EQ(test::contentsOf(library + "/Sea.epub"), "the sea");
}

TEST_F(CopiesAhead, HoldWhatTheSourceHoldsWhenTheyTakeTheName)
{
    const auto copy = PrefetchedCopy::of(source, library);
    ASSERT_TRUE(copy);
    test::makeFile(source, "another sea");
    EXPECT_EQ(copy->takeName(), "Sea.epub");
    EXPECT_EQ(test::contentsOf(library + "/Sea.epub"), "another sea");
}

TEST_F(CopiesAhead, OfASourceThatIsGoneTakeNoName)
{
    const auto copy = PrefetchedCopy::of(source, library);
    ASSERT_TRUE(copy);
    removeItem(source);
    EXPECT_EQ(copy->takeName(), std::nullopt);
    EXPECT_TRUE(folderEntries(library)->empty());
}

TEST_F(CopiesAhead, TakeAFreeNameWhereTheirsWasTakenMeanwhile)
{
    const auto copy = PrefetchedCopy::of(source, library);
    ASSERT_TRUE(copy);
    test::makeFile(library + "/Sea.epub", "another book");
    EXPECT_EQ(copy->takeName(), "Sea 2.epub");
    EXPECT_EQ(test::contentsOf(library + "/Sea.epub"), "another book");
    EXPECT_EQ(test::contentsOf(library + "/Sea 2.epub"), "the sea");
}

TEST_F(CopiesAhead, AreNotMadeOfWhatTheFolderHoldsAlready)
{
    test::makeFile(library + "/Sea.epub", "the sea");
    EXPECT_FALSE(PrefetchedCopy::of(source, library));
}

}
