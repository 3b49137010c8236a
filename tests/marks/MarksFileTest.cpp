#include "marks/MarksFile.hpp"

#include "base/Log.hpp"
#include "base/Path.hpp"
#include "files/Files.hpp"
#include "tests/support/ForkedTest.hpp"
#include "tests/support/ReadOnlyFolder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

Mark markOf(const std::string& text)
{
    Mark mark;
    mark.id = newMarkId();
    mark.created = timeNow();
    mark.text = { "one.xhtml", text, "before", "after", 3, 9, "" };
    return mark;
}

struct MarksFileTest : testing::Test {
    std::vector<std::string> textsOf(const MarksOnDisk& disk) const
    {
        std::vector<std::string> texts;
        for (const auto& mark : disk.marks)
            texts.push_back(mark.text.exact + (mark.note.empty() ? "" : ":" + mark.note));
        return texts;
    }
    using Texts = std::vector<std::string>;

    const test::TemporaryFolder folder;
    const MarkedBook book { "urn:isbn:1", "Title", "Author" };
    const MarksFile file { folder.path("A Book.v2.epub"), book };
};

}

TEST_F(MarksFileTest, LiesBesideTheArchiveUnderItsName)
{
    EXPECT_EQ(file.path(), folder.path("A Book.v2.annotation"));
    EXPECT_TRUE(file.read().marks.empty());
    EXPECT_FALSE(fileExists(file.path()));
}

TEST_F(MarksFileTest, KeepsWhatWasWritten)
{
    const auto outcome = file.write({ { markOf("one") }, { markOf("two") } });
    EXPECT_TRUE(outcome.isSaved);
    EXPECT_EQ(outcome.problem, "");
    EXPECT_EQ(textsOf(file.read()), (Texts { "one", "two" }));
}

TEST_F(MarksFileTest, LeavesNoOtherFileBesideIt)
{
    file.write({ { markOf("one") } });
    EXPECT_EQ(folderEntries(folder.path()), std::vector<std::string> { lastPathComponent(file.path()) });
}

TEST_F(MarksFileTest, RemovesAMark)
{
    const auto one = markOf("one");
    file.write({ { one }, { markOf("two") } });
    EXPECT_EQ(textsOf(file.write({ { one, true } })), Texts { "two" });
    EXPECT_EQ(textsOf(file.read()), Texts { "two" });
}

TEST_F(MarksFileTest, MergesWhatAnotherProgramWroteMeanwhile)
{
    auto one = markOf("one");
    auto two = markOf("two");
    file.write({ { one }, { two } });
    // The other program changes one mark, removes the other and adds a third.
    const MarksFile others(folder.path("A Book.v2.epub"), book);
    auto changed = one;
    changed.note = "theirs";
    changed.modified = "2999-01-01T00:00:00Z";
    others.write({ { changed }, { two, true }, { markOf("three") } });
    // This program changed the same mark before, and adds a fourth one.
    one.note = "mine";
    one.modified = timeNow();
    EXPECT_EQ(textsOf(file.write({ { one }, { markOf("four") } })), (Texts { "one:theirs", "three", "four" }));
    EXPECT_EQ(textsOf(file.read()), (Texts { "one:theirs", "three", "four" }));
}

TEST_F(MarksFileTest, RemovesNoMarkThatAnotherProgramChangedLater)
{
    auto one = markOf("one");
    file.write({ { one } });
    auto changed = one;
    changed.note = "theirs";
    changed.modified = "2999-01-01T00:00:00Z";
    file.write({ { changed } });
    EXPECT_EQ(textsOf(file.write({ { one, true } })), Texts { "one:theirs" });
}

TEST_F(MarksFileTest, SetsADamagedFileAsideWithOneLine)
{
    std::vector<std::string> lines;
    const LogCapture log([&lines](const std::string& line) { lines.push_back(line); });
    writeFile(file.path(), "{\"items\": [");
    const auto outcome = file.read();
    EXPECT_TRUE(outcome.marks.empty());
    EXPECT_EQ(
        outcome.problem, "“A Book.v2.annotation” is damaged. It was set aside as “A Book.v2.annotation-damaged”.");
    EXPECT_EQ(lines.size(), 1u);
    EXPECT_EQ(readFile(file.path() + "-damaged"), "{\"items\": [");
    EXPECT_TRUE(file.write({ { markOf("one") } }).isSaved);
    writeFile(file.path(), "");
    file.read();
    EXPECT_EQ(readFile(file.path() + "-damaged"), "{\"items\": [");
    EXPECT_EQ(readFile(file.path() + "-damaged-2"), "");
}

TEST_F(MarksFileTest, FindsTheMarksOfTheSameBookUnderAnotherName)
{
    file.write({ { markOf("one") } });
    const MarksFile renamed(folder.path("Other name.epub"), book);
    EXPECT_EQ(textsOf(renamed.read()), Texts { "one" });
    EXPECT_FALSE(fileExists(renamed.path()));
    EXPECT_EQ(textsOf(renamed.write({ { markOf("two") } })), (Texts { "one", "two" }));
    EXPECT_EQ(textsOf(renamed.read()), (Texts { "one", "two" }));
    EXPECT_EQ(textsOf(file.read()), Texts { "one" });
}

TEST_F(MarksFileTest, FindsNoMarksOfAnotherBook)
{
    file.write({ { markOf("one") } });
    EXPECT_TRUE(MarksFile(folder.path("Other.epub"), { "urn:isbn:11", "Title", "Author" }).read().marks.empty());
    EXPECT_TRUE(MarksFile(folder.path("Other.epub"), {}).read().marks.empty());
    const MarksFile nameless(folder.path("Nameless.epub"), { "<not found>", "<not found>", "<unknown>" });
    nameless.write({ { markOf("two") } });
    EXPECT_TRUE(MarksFile(folder.path("Other.epub"), { "<not found>", "", "" }).read().marks.empty());
}

TEST_F(MarksFileTest, DoesNotWriteOverAFileThatItCannotRead)
{
    createFolder(file.path());
    const auto outcome = file.write({ { markOf("one") } });
    EXPECT_FALSE(outcome.isSaved);
    EXPECT_NE(outcome.problem, "");
    EXPECT_TRUE(isFolder(file.path()));
}

TEST_F(MarksFileTest, ADroppedNameInTheSetOpensNoOtherFile)
{
    writeFile(file.path(),
        R"({"about": {"dc:identifier": "../../etc/passwd"}, "items": [{"id": "x", "target": {"source": "/etc/passwd"}}]})");
    EXPECT_EQ(file.read().marks.size(), 1u);
    EXPECT_EQ(folderEntries(folder.path())->size(), 1u);
}

TEST(MarksFileInAFolder, ThatCannotBeWrittenSaysSoInOneLine)
{
    const test::TemporaryFolder folder;
    const MarksFile file(folder.path("Book.epub"), {});
    test::inForkedProcess([&] {
        test::makeReadOnly(folder.path());
        const auto outcome = file.write({ { markOf("one") } });
        EXPECT_FALSE(outcome.isSaved);
        EXPECT_EQ(outcome.problem, "“Book.annotation” could not be written. The last marks are not saved.");
        EXPECT_EQ(outcome.marks.size(), 1u);
        EXPECT_EQ(folderEntries(folder.path())->size(), 0u);
    });
    test::makeWritable(folder.path());
}

}
