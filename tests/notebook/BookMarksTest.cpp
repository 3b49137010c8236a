#include "notebook/BookMarks.hpp"

#include "files/Files.hpp"
#include "tests/support/FakeEpubWindow.hpp"
#include "tests/support/ManualRunLoop.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

// A reader with two chapters. The test sets the answers of its page.
class FakeMarkedReader : public MarkedReader {
public:
    const std::vector<Url>& bookSplits() const override { return splits; }
    std::uint64_t activeSplitIndex() const override { return chapter; }
    std::vector<std::string> chapterNames() override { return { "One", "Two" }; }
    void setMarks(MarksHooks marks) override { hooks = std::move(marks); }
    void runChapterScript() override { painted = hooks.script(chapter); }
    void ask(std::string script, std::function<void(std::int64_t)> answer) override
    {
        asked.push_back(std::move(script));
        if (answer)
            answer(start * (1 << 26) + end);
    }
    void askText(std::string, std::function<void(const std::string&)> answer) override { answer(selection); }
    void goToMark(const MarkAnchor& anchor) override { goneTo = anchor; }

    std::vector<Url> splits;
    std::uint64_t chapter = 0;
    MarksHooks hooks;
    std::string painted;
    std::vector<std::string> asked;
    // The shown page and the selection.
    std::int64_t start = 0;
    std::int64_t end = 20;
    std::string selection;
    std::optional<MarkAnchor> goneTo;
};

struct BookMarksTest : testing::Test {
    BookMarksTest()
    {
        for (const char* name : { "one.xhtml", "two.xhtml" }) {
            writeFile(book.path(name),
                "<html><body><p>It was the best of times, it was the worst of times.</p></body></html>");
            reader.splits.push_back(Url::file(book.path(name)));
        }
        open();
    }
    void open(bool isInLibrary = true)
    {
        marks.reset();
        marks = std::make_unique<BookMarks>(reader, window, loop);
        const auto archive = isInLibrary ? std::optional(library.path("Book.epub")) : std::nullopt;
        marks->open(archive, { "urn:isbn:1", "Title", "Author" }, book.path());
    }
    std::vector<std::string> lines() const
    {
        std::vector<std::string> texts;
        for (const auto& line : parts().marksPane.lines)
            texts.push_back(line.kind == MarkLine::Kind::Heading ? "# " + line.text : line.text);
        return texts;
    }
    test::ReaderWindowParts& parts() const { return *window.parts; }
    void highlightBest(MarkColor color = MarkColor::Blue)
    {
        reader.selection = "8 12 best";
        marks->highlight(color);
    }
    using Lines = std::vector<std::string>;

    const test::TemporaryFolder library;
    const test::TemporaryFolder book;
    test::ManualRunLoop loop;
    FakeMarkedReader reader;
    test::FakeEpubWindow window;
    std::unique_ptr<BookMarks> marks;
};

}

TEST_F(BookMarksTest, HighlightsTheSelectedText)
{
    highlightBest();
    EXPECT_EQ(lines(), (Lines { "# One", "best" }));
    EXPECT_EQ(reader.painted, "pagoraMarks.paint([[0,8,12,'best','blue',0],])");
    EXPECT_EQ(reader.asked.back(), "pagoraMarks.clearSelection()");
}

TEST_F(BookMarksTest, PaintsOnlyTheMarksOfTheChapter)
{
    highlightBest();
    EXPECT_EQ(reader.hooks.script(1), "pagoraMarks.paint([])");
}

TEST_F(BookMarksTest, GivesAHighlightThatIsThereAnotherColour)
{
    highlightBest();
    highlightBest(MarkColor::Pink);
    EXPECT_EQ(lines().size(), 2u);
    EXPECT_EQ(parts().marksPane.lines[1].color, "pink");
}

TEST_F(BookMarksTest, SaysThatNothingIsSelected)
{
    marks->highlight(MarkColor::Yellow);
    EXPECT_EQ(parts().notice, "Select a text first.");
    EXPECT_TRUE(lines().empty());
}

TEST_F(BookMarksTest, SaysThatBooksOutsideTheLibraryKeepNoMarks)
{
    open(false);
    marks->toggleBookmark();
    EXPECT_EQ(parts().notice, "Marks are kept for books in the library only.");
    highlightBest();
    EXPECT_TRUE(lines().empty());
}

TEST_F(BookMarksTest, AsksForTheNoteOfTheSelectedText)
{
    reader.selection = "8 12 best";
    marks->annotate();
    EXPECT_EQ(reader.asked.back(), "pagoraMarks.press(0)");
    reader.hooks.isPressed({ 0, {} });
    ASSERT_TRUE(parts().editedMark);
    EXPECT_TRUE(parts().editedMark->asksForNote);
    marks->setNote(0, "a note");
    EXPECT_EQ(parts().marksPane.lines[1].note, "a note");
    reader.hooks.isPressed({ 0, {} });
    EXPECT_FALSE(parts().editedMark->asksForNote);
}

TEST_F(BookMarksTest, PressOfAMarkThatIsNotThereShowsNothing)
{
    reader.hooks.isPressed({ 5, {} });
    EXPECT_FALSE(parts().editedMark);
}

TEST_F(BookMarksTest, BookmarksThePageAndTakesItBack)
{
    marks->toggleBookmark();
    EXPECT_TRUE(parts().isBookmarked);
    reader.start = 20;
    reader.end = 40;
    reader.hooks.pageIsSeen();
    EXPECT_FALSE(parts().isBookmarked);
    reader.start = 0;
    reader.end = 20;
    marks->toggleBookmark();
    EXPECT_FALSE(parts().isBookmarked);
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(parts().undoText, "Bookmark removed");
}

TEST_F(BookMarksTest, AsksThePageNothingWhereItsChapterHasNoBookmark)
{
    reader.hooks.pageIsSeen();
    highlightBest();
    reader.asked.clear();
    reader.hooks.pageIsSeen();
    EXPECT_TRUE(reader.asked.empty());
}

TEST_F(BookMarksTest, BringsBackWhatWasRemovedForTenSeconds)
{
    highlightBest();
    marks->setNote(0, "a note");
    marks->remove(0);
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(parts().undoText, "Note removed");
    EXPECT_EQ(loop.delays.back(), 10);
    marks->undo();
    EXPECT_EQ(lines(), (Lines { "# One", "best" }));
    EXPECT_EQ(parts().marksPane.lines[1].note, "a note");
    EXPECT_EQ(parts().undoText, "");
    marks->remove(0);
    loop.runTimers();
    EXPECT_EQ(parts().undoText, "");
    marks->undo();
    EXPECT_TRUE(lines().empty());
}

TEST_F(BookMarksTest, ShowsThePageOfAMark)
{
    reader.chapter = 1;
    highlightBest();
    marks->goTo(0);
    EXPECT_EQ(reader.goneTo, (MarkAnchor { 1, 8, 12, "best" }));
    reader.goneTo.reset();
    marks->goTo(1);
    EXPECT_FALSE(reader.goneTo);
}

TEST_F(BookMarksTest, ExportsTheChosenMarksInTheFormatOfTheName)
{
    highlightBest();
    marks->exportTo(library.path("out.md"));
    EXPECT_EQ(readFile(library.path("out.md")), "# Title (Author)\n\n## One\n\n> best\n\n(0 %)\n");
    EXPECT_EQ(parts().notice, "1 mark was exported.");
    marks->exportTo(library.path("out.html"));
    EXPECT_NE(readFile(library.path("out.html"))->find("<blockquote>best</blockquote>"), std::string::npos);
    marks->copy();
    EXPECT_EQ(parts().copiedMarks, *readFile(library.path("out.md")));
    marks->exportTo(library.path("nowhere/out.md"));
    EXPECT_EQ(parts().notice, "“out.md” could not be written.");
}

TEST_F(BookMarksTest, ImportsASetWithAHintWhereItIsAboutAnotherBook)
{
    highlightBest();
    marks->exportTo(library.path("out.annotation"));
    marks->remove(0);
    marks->importFrom(library.path("out.annotation"));
    EXPECT_EQ(lines(), (Lines { "# One", "best" }));
    EXPECT_EQ(parts().notice, "1 mark was imported.");
    auto text = *readFile(library.path("out.annotation"));
    const auto isbn = text.find("urn:isbn:1");
    text.replace(isbn, 10, "urn:isbn:2");
    writeFile(library.path("out.annotation"), text);
    marks->importFrom(library.path("out.annotation"));
    EXPECT_EQ(parts().notice, "1 mark was imported. They were made in another book or edition.");
    marks->importFrom(library.path("nothing"));
    EXPECT_EQ(parts().notice, "“nothing” holds no marks.");
}

TEST_F(BookMarksTest, ListsTheMarksThatAreChosen)
{
    highlightBest();
    reader.selection = "23 28 worst";
    marks->highlight(MarkColor::Pink);
    marks->setNote(1, "Not réally");
    marks->toggleBookmark();
    ASSERT_EQ(lines().size(), 4u);
    const auto chosen = [this](const MarksChoice& choice) {
        marks->choose(choice);
        return lines();
    };
    EXPECT_EQ(chosen({ "WORST", {}, {} }), (Lines { "# One", "worst" }));
    EXPECT_EQ(chosen({ "really", {}, {} }), (Lines { "# One", "worst" }));
    EXPECT_EQ(chosen({ {}, MarkLine::Kind::Note, {} }), (Lines { "# One", "worst" }));
    EXPECT_EQ(chosen({ {}, {}, "blue" }), (Lines { "# One", "best" }));
    EXPECT_EQ(chosen({ "worst", {}, "blue" }), Lines {});
    marks->exportTo(library.path("none.md"));
    EXPECT_EQ(parts().notice, "0 marks were exported.");
    EXPECT_EQ(chosen({}).size(), 4u);
}

TEST_F(BookMarksTest, ListsAndExportsTheMarksWithATag)
{
    AnnotationSet tagged = annotationSetAbout({});
    for (const std::string tag : { "sea", "seaside" }) {
        Mark mark;
        mark.id = "urn:uuid:" + tag;
        mark.created = "2026-01-01T00:00:00Z";
        mark.text = { "one.xhtml", tag, "", "", 0, 2, "" };
        mark.tags = { "all", tag };
        tagged.marks.push_back(std::move(mark));
    }
    writeFile(library.path("Book.annotation"), annotationText(tagged));
    open();
    ASSERT_EQ(marks->store()->marks().size(), 2u);
    marks->choose({ {}, {}, {}, "sea" });
    ASSERT_EQ(lines().size(), 2u);
    EXPECT_EQ(parts().marksPane.lines[1].tags, "all, sea");
    marks->exportTo(library.path("tagged.md"));
    EXPECT_EQ(parts().notice, "1 mark was exported.");
    marks->choose({ {}, {}, {}, "all" });
    EXPECT_EQ(parts().marksPane.lines.size(), 3u);
    marks->choose({ {}, {}, {}, "se" });
    EXPECT_TRUE(lines().empty());
}

TEST_F(BookMarksTest, MakesTheListOfAHundredThousandMarksInTheBackground)
{
    AnnotationSet many = annotationSetAbout({});
    for (std::size_t i = 0; i < maxMarks; ++i) {
        Mark mark;
        mark.id = "urn:uuid:" + std::to_string(i);
        mark.created = "2026-01-01T00:00:00Z";
        mark.text = { "one.xhtml", "", "", "", i % 50, i % 50 + 2, "" };
        many.marks.push_back(std::move(mark));
    }
    writeFile(library.path("Book.annotation"), annotationText(many));
    loop.holdsBackground = true;
    open();
    EXPECT_TRUE(lines().empty());
    loop.finishBackground();
    // The marks were read, but the list is still empty.
    EXPECT_EQ(marks->store()->marks().size(), maxMarks);
    EXPECT_TRUE(lines().empty());
    loop.finishBackground();
    EXPECT_EQ(parts().marksPane.lines.size(), maxMarks + 1);
    marks->choose({ "nothing", {}, {} });
    EXPECT_EQ(parts().marksPane.lines.size(), maxMarks + 1);
    loop.finishBackground();
    EXPECT_TRUE(lines().empty());
}

TEST_F(BookMarksTest, TellsTheListWhatStaysAsItIs)
{
    highlightBest();
    reader.selection = "23 28 worst";
    marks->highlight(MarkColor::Pink);
    marks->setColor(1, MarkColor::Green);
    EXPECT_EQ(parts().marksPane.sameAtStart, 2u);
    EXPECT_EQ(parts().marksPane.sameAtEnd, 0u);
    marks->setColor(0, MarkColor::Green);
    EXPECT_EQ(parts().marksPane.sameAtStart, 1u);
    EXPECT_EQ(parts().marksPane.sameAtEnd, 1u);
}

TEST_F(BookMarksTest, SaysWhatCouldNotBeSaved)
{
    createFolder(library.path("Book.annotation"));
    highlightBest();
    EXPECT_EQ(parts().marksPane.problem, "“Book.annotation” could not be read. Marks are not saved.");
    EXPECT_EQ(lines().size(), 2u);
}

}
