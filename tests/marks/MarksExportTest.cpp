#include "marks/MarksExport.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

const MarkedBook book { "urn:isbn:1", "A & B", "An Author" };

std::vector<ExportedMark> marks()
{
    ExportedMark highlight;
    highlight.mark.id = newMarkId();
    highlight.mark.created = timeNow();
    highlight.mark.text = { "one.xhtml", "the <b>best</b> of *times*", "", "", 3, 9, "" };
    highlight.mark.color = MarkColor::Pink;
    highlight.mark.tags = { "first" };
    highlight.chapter = "One";
    highlight.percentage = 12;
    auto note = highlight;
    note.mark.id = newMarkId();
    note.mark.color = MarkColor::Yellow;
    note.mark.tags.clear();
    note.mark.note = "<script>alert(1)</script>\n\xE2\x80\xAE# turned \x01";
    auto bookmark = note;
    bookmark.mark = {};
    bookmark.mark.id = newMarkId();
    bookmark.mark.created = timeNow();
    bookmark.mark.isBookmark = true;
    bookmark.mark.text = { "two.xhtml", "", "before", "after it", 3, 3, "" };
    bookmark.chapter = "Two";
    return { highlight, note, bookmark };
}

std::string exported(ExportFormat format, const MarksFilter& filter = {})
{
    return exportedMarks(format, book, marks(), filter);
}

}

TEST(MarksExport, WritesQuoteNoteChapterAndPlaceAsMarkdown)
{
    EXPECT_EQ(exported(ExportFormat::Markdown),
        "# A \\& B (An Author)\n\n## One\n\n> the \\<b\\>best\\</b\\> of \\*times\\*\n\n(12 %)\n\n"
        "> the \\<b\\>best\\</b\\> of \\*times\\*\n\n\\<script\\>alert(1)\\</script\\>\n\\# turned \n\n(12 %)\n\n"
        "## Two\n\nBookmark: after it …\n\n(12 %)\n");
}

TEST(MarksExport, WritesNoMarkupOfMarksIntoHtml)
{
    const auto text = exported(ExportFormat::Html);
    EXPECT_NE(text.find("<h1>A &amp; B (An Author)</h1>"), std::string::npos);
    EXPECT_NE(text.find("<blockquote>the &lt;b&gt;best&lt;/b&gt; of *times*</blockquote>"), std::string::npos);
    EXPECT_NE(text.find("<p>&lt;script&gt;alert(1)&lt;/script&gt;<br># turned </p>"), std::string::npos);
    EXPECT_EQ(text.find("<script"), std::string::npos);
    EXPECT_EQ(text.find("\xE2\x80\xAE"), std::string::npos);
}

TEST(MarksExport, WritesASetThatIsReadAgain)
{
    const auto set = annotationSetFrom(exported(ExportFormat::Annotation));
    ASSERT_TRUE(set);
    ASSERT_EQ(set->marks.size(), 3u);
    EXPECT_EQ(set->marks[1].note, marks()[1].mark.note);
    EXPECT_EQ(identifiersOf(*set), std::vector<std::string> { "urn:isbn:1" });
}

TEST(MarksExport, LeavesOutWhatTheFilterDoesNotLetPass)
{
    const auto count = [](const MarksFilter& filter) {
        return annotationSetFrom(exported(ExportFormat::Annotation, filter))->marks.size();
    };
    EXPECT_EQ(count({ { Mark::Kind::Bookmark }, {}, {} }), 1u);
    EXPECT_EQ(count({ { Mark::Kind::Bookmark, Mark::Kind::Note }, {}, {} }), 2u);
    EXPECT_EQ(count({ {}, { MarkColor::Pink }, {} }), 1u);
    EXPECT_EQ(count({ {}, {}, { "first", "second" } }), 1u);
    EXPECT_EQ(count({ {}, { MarkColor::Blue }, {} }), 0u);
}

TEST(MarksExport, KnowsASetAboutAnotherBook)
{
    EXPECT_FALSE(isAboutAnotherBook(annotationSetAbout(book), book));
    EXPECT_TRUE(isAboutAnotherBook(annotationSetAbout({ "urn:isbn:2", "A & B", "" }), book));
    EXPECT_FALSE(isAboutAnotherBook(annotationSetAbout({ "", "A & B", "" }), book));
    EXPECT_TRUE(isAboutAnotherBook(annotationSetAbout({ "", "C", "" }), book));
    EXPECT_FALSE(isAboutAnotherBook(annotationSetAbout({}), book));
}

}
