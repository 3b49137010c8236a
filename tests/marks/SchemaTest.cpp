#include "files/Files.hpp"
#include "marks/MarksFile.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <cstdlib>
#include <gtest/gtest.h>

namespace pagora {

namespace {

bool isValid(const std::string& path)
{
    const std::string command = std::string("python3 '") + MARKS_TESTS_FOLDER + "/check-schema' '" + path + "'";
    return std::system(command.c_str()) == 0;
}

}

TEST(Schema, OfTheFormatIsMetByWhatIsWritten)
{
    const test::TemporaryFolder folder;
    const MarksFile file(folder.path("Book.epub"), { "urn:isbn:1", "A \"Title\"", "Author" });
    std::vector<MarkChange> changes;
    for (const auto color : markColors) {
        Mark mark;
        mark.id = newMarkId();
        mark.created = timeNow();
        mark.isBookmark = color == MarkColor::Yellow;
        mark.color = color;
        mark.note = color == MarkColor::Blue ? "A note\n<b>with markup</b> \x01" : "";
        if (color == MarkColor::Green)
            mark.tags = { "one", "two" };
        if (color == MarkColor::Pink)
            mark.modified = timeNow();
        mark.text = { "Text/one%201.xhtml", mark.isBookmark ? "" : "exact", "before", "after", 3, 8, "" };
        if (color == MarkColor::Orange)
            mark.text.start = mark.text.end = std::nullopt;
        changes.push_back({ mark });
    }
    ASSERT_TRUE(file.write(changes).isSaved);
    EXPECT_TRUE(isValid(file.path()));
    // A book with no known texts and no marks.
    const MarksFile nameless(folder.path("Nameless.epub"), {});
    ASSERT_TRUE(nameless.write({}).isSaved);
    EXPECT_TRUE(isValid(nameless.path()));
}

TEST(Schema, OfTheFormatIsNotMetByAnyFile)
{
    const test::TemporaryFolder folder;
    writeFile(folder.path("x"), R"({"type": "AnnotationSet", "items": [{"id": "1"}]})");
    EXPECT_FALSE(isValid(folder.path("x")));
}

}
