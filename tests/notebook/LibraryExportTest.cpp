#include "notebook/LibraryExport.hpp"

#include "files/Files.hpp"
#include "marks/MarksFile.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

struct LibraryExportTest : testing::Test {
    LibraryExportTest()
    {
        book.archive = library.path("Book.epub");
        book.book = { "urn:isbn:1", "Title", "Author" };
        book.documents = { "/books/b/OEBPS/one.xhtml", "/books/b/OEBPS/two.xhtml" };
        book.contents = { { "/books/b/OEBPS/two.xhtml#top", "The Second" } };
        request.folder = out.path();
    }
    void add(const std::string& source, const std::string& text, MarkColor color, const std::string& note = {})
    {
        Mark mark;
        mark.id = newMarkId();
        mark.created = timeNow();
        mark.color = color;
        mark.note = note;
        mark.tags = { text };
        mark.text = { source, text, "", "", 1, 5, "" };
        ASSERT_TRUE(MarksFile(book.archive, book.book).write({ { mark } }).isSaved);
    }

    const test::TemporaryFolder library;
    const test::TemporaryFolder out;
    BookToExport book;
    MarksExportRequest request;
};

}

TEST_F(LibraryExportTest, WritesTheMarksOfABookInItsOrder)
{
    add("two.xhtml", "second", MarkColor::Pink, "a note");
    add("gone.xhtml", "lost", MarkColor::Pink);
    add("one.xhtml", "first", MarkColor::Blue);
    EXPECT_EQ(exportMarksOf(book, request), 3u);
    EXPECT_EQ(readFile(out.path("Book.md")),
        "# Title (Author)\n\n## Beginning\n\n> first\n\n(0 %)\n\n## The Second\n\n> second\n\na note\n\n(50 %)\n"
        "\n## Not found in this edition\n\n> lost\n");
}

TEST_F(LibraryExportTest, WritesEachFormat)
{
    add("one.xhtml", "first", MarkColor::Blue);
    request.format = ExportFormat::Html;
    EXPECT_EQ(exportMarksOf(book, request), 1u);
    EXPECT_NE(readFile(out.path("Book.html"))->find("<blockquote>first</blockquote>"), std::string::npos);
    request.format = ExportFormat::Annotation;
    EXPECT_EQ(exportMarksOf(book, request), 1u);
    EXPECT_EQ(annotationSetFrom(*readFile(out.path("Book.annotation")))->marks.size(), 1u);
}

TEST_F(LibraryExportTest, LeavesOutWhatDoesNotPass)
{
    add("one.xhtml", "first", MarkColor::Blue);
    add("one.xhtml", "other", MarkColor::Pink, "a note");
    request.filter.colors = { MarkColor::Blue };
    EXPECT_EQ(exportMarksOf(book, request), 1u);
    request.filter = { { Mark::Kind::Note }, {}, {} };
    EXPECT_EQ(exportMarksOf(book, request), 1u);
    request.filter = { {}, {}, { "other" } };
    EXPECT_EQ(exportMarksOf(book, request), 1u);
    request.filter = { {}, {}, { "none" } };
    EXPECT_EQ(exportMarksOf(book, request), 0u);
    EXPECT_EQ(folderEntries(out.path())->size(), 3u);
}

TEST_F(LibraryExportTest, OverwritesNothing)
{
    add("one.xhtml", "first", MarkColor::Blue);
    writeFile(out.path("Book.md"), "mine");
    EXPECT_EQ(exportMarksOf(book, request), 1u);
    EXPECT_EQ(readFile(out.path("Book.md")), "mine");
    EXPECT_TRUE(fileExists(out.path("Book 2.md")));
}

TEST_F(LibraryExportTest, SaysWhatCannotBeReadOrWritten)
{
    EXPECT_FALSE(exportMarksOf(book, request));
    writeFile(library.path("Book.annotation"), "no JSON");
    EXPECT_FALSE(exportMarksOf(book, request));
    EXPECT_TRUE(fileExists(library.path("Book.annotation")));
    removeItem(library.path("Book.annotation"));
    add("one.xhtml", "first", MarkColor::Blue);
    request.folder = out.path("nowhere");
    EXPECT_FALSE(exportMarksOf(book, request));
}

TEST_F(LibraryExportTest, FindsTheBooksThatHaveMarks)
{
    EXPECT_TRUE(namesWithMarks(library.path()).empty());
    add("one.xhtml", "first", MarkColor::Blue);
    writeFile(library.path("Other.epub"), "");
    EXPECT_EQ(namesWithMarks(library.path()), std::set<std::string> { "Book" });
}

}
