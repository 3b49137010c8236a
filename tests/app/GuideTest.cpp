#include "tests/app/Program.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

struct Guide : testing::Test {
    test::LaunchedProgram program;
};

}

TEST_F(Guide, IsReadInTheReader)
{
    program.window.actions.openGuide();
    ASSERT_TRUE(program.isReading());
    EXPECT_EQ(program.reader().window.title, "Pagora - A Guide to Pagora");
    EXPECT_EQ(program.controller->currentBook()->files().size(), 5U);
    EXPECT_TRUE(program.window.errorListFake.text.empty());
}

TEST_F(Guide, EveryContentsEntryHasItsTarget)
{
    program.window.actions.openGuide();
    const auto& book = *program.controller->currentBook();
    const auto entries = tableOfContentFrom(book.content().value_or(Value::Array {}));
    EXPECT_GT(entries.size(), book.files().size());
    for (const auto& entry : entries) {
        const auto page = readFile(entry.src.path());
        ASSERT_TRUE(page) << entry.src.text();
        const auto fragment = entry.src.fragment();
        EXPECT_TRUE(!fragment || page->find("id=\"" + *fragment + "\"") != std::string::npos) << entry.src.text();
    }
}

TEST_F(Guide, StaysOutOfTheLibrary)
{
    program.import({ "Sea.epub" });
    program.window.actions.openGuide();
    program.closeReader();
    EXPECT_EQ(program.catalogue().count(), 1U);
    EXPECT_EQ(program.storedCount(), 1U);
    EXPECT_EQ(folderEntries(program.home.path("Documents/ePubLibrary")), (std::vector<std::string> { "Sea.epub" }));
    EXPECT_TRUE(program.workspace.recent.empty());
    EXPECT_FALSE(program.isReading());
}

TEST_F(Guide, CanBeReadTwice)
{
    for (int i = 0; i < 2; ++i) {
        program.window.actions.openGuide();
        EXPECT_TRUE(program.isReading());
        program.closeReader();
    }
}

TEST_F(Guide, DoesNotTakeThePlaceOfABookThatIsRead)
{
    program.import({ "Sea.epub" });
    program.doubleClick(0);
    program.window.actions.openGuide();
    EXPECT_EQ(program.reader().window.title, "Pagora - Sea");
}

TEST_F(Guide, ComesInWhateverTheLastInspectionLeftBehind)
{
    test::makeFile(program.inTemporary("_data/META-INF/encryption.xml"), "locked");
    program.window.actions.openGuide();
    EXPECT_TRUE(program.isReading());
}

}
