#include "marks/MarkStore.hpp"

#include "files/Files.hpp"
#include "tests/support/ManualRunLoop.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

struct MarkStoreTest : testing::Test {
    MarkStoreTest()
    {
        createFolder(book.path("META-INF"));
        createFolder(book.path("OEBPS/Text"));
        writeFile(book.path("META-INF/container.xml"),
            "<container><rootfiles><rootfile full-path='OEBPS/book.opf'/></rootfiles></container>");
        path = book.path("OEBPS/Text/one.xhtml");
        writeFile(path, "<html><body><p>It was the best of times, it was the worst of times.</p></body></html>");
        open();
    }

    void open(bool isInLibrary = true)
    {
        store.reset();
        const auto archive = library.path("Book.epub");
        store = std::make_unique<MarkStore>(loop, isInLibrary ? std::optional(archive) : std::nullopt,
            MarkedBook { "urn:isbn:1", "Title", "Author" }, std::vector { path }, book.path());
        store->load();
    }
    Mark highlight(MarkColor color = MarkColor::Yellow)
    {
        Mark mark;
        mark.color = color;
        return mark;
    }

    const test::TemporaryFolder library;
    const test::TemporaryFolder book;
    test::ManualRunLoop loop;
    std::string path;
    std::unique_ptr<MarkStore> store;
};

}

TEST_F(MarkStoreTest, KeepsAMarkWithTheTextThatItMarks)
{
    store->add(highlight(MarkColor::Pink), { 0, 8, 12, "best" });
    EXPECT_TRUE(store->isSaved());
    open();
    ASSERT_EQ(store->marks().size(), 1u);
    const auto& kept = store->marks()[0];
    EXPECT_EQ(kept.mark.color, MarkColor::Pink);
    EXPECT_EQ(kept.mark.text.source, "Text/one.xhtml");
    EXPECT_EQ(kept.mark.text.exact, "best");
    EXPECT_EQ(kept.mark.text.before, "It was the ");
    EXPECT_EQ(kept.anchor, (MarkAnchor { 0, 8, 12, "best" }));
}

TEST_F(MarkStoreTest, ShowsAMarkAtOnceAndSaysWhenItIsSaved)
{
    int told = 0;
    store->setChanged([&told] { ++told; });
    loop.holdsBackground = true;
    store->add(highlight(), { 0, 8, 12, "best" });
    EXPECT_EQ(store->marks().size(), 1u);
    EXPECT_FALSE(store->isSaved());
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(fileExists(library.path("Book.annotation")));
}

TEST_F(MarkStoreTest, WritesWhatWaitsWhenTheBookIsClosed)
{
    loop.holdsBackground = true;
    store->add(highlight(), { 0, 8, 12, "best" });
    store->add(highlight(), { 0, 25, 30, "worst" });
    store.reset();
    loop.finishBackground();
    loop.holdsBackground = false;
    open();
    EXPECT_EQ(store->marks().size(), 2u);
}

TEST_F(MarkStoreTest, ChangesRemovesAndBringsBackAMark)
{
    store->add(highlight(), { 0, 8, 12, "best" });
    auto kept = store->marks()[0];
    kept.mark.note = "a note";
    store->change(kept.mark, kept.anchor);
    open();
    EXPECT_EQ(store->marks()[0].mark.note, "a note");
    EXPECT_EQ(store->marks()[0].mark.kind(), Mark::Kind::Note);
    store->remove(kept.mark.id);
    EXPECT_TRUE(store->marks().empty());
    open();
    EXPECT_TRUE(store->marks().empty());
    store->change(kept.mark, kept.anchor);
    open();
    EXPECT_EQ(store->marks()[0].mark.note, "a note");
}

TEST_F(MarkStoreTest, HasMarksInTheOrderOfTheBookAndThoseWithoutAPlaceLast)
{
    store->add(highlight(), { 0, 25, 30, "worst" });
    store->add(highlight(), { 0, 8, 12, "best" });
    Mark lost = highlight();
    lost.id = newMarkId();
    lost.created = timeNow();
    lost.text = { "Text/gone.xhtml", "this is nowhere in the book", "", "", 3, 9, "" };
    store->import({ lost });
    open();
    ASSERT_EQ(store->marks().size(), 3u);
    EXPECT_EQ(store->marks()[0].mark.text.exact, "best");
    EXPECT_EQ(store->marks()[1].mark.text.exact, "worst");
    EXPECT_FALSE(store->marks()[2].anchor);
}

TEST_F(MarkStoreTest, TakesInWhatAnotherProgramAdded)
{
    store->add(highlight(), { 0, 8, 12, "best" });
    MarkStore other(loop, library.path("Book.epub"), {}, { path }, book.path());
    other.load();
    other.add(highlight(), { 0, 25, 30, "worst" });
    store->change(store->marks()[0].mark, store->marks()[0].anchor);
    EXPECT_EQ(store->marks().size(), 2u);
}

TEST_F(MarkStoreTest, HasTheMarksOfTheBooksMakerApart)
{
    writeFile(book.path("META-INF/my.annotation"),
        R"({"items": [{"id": "urn:uuid:1", "target": {"source": "Text/one.xhtml",
            "selector": [{"type": "TextQuoteSelector", "exact": "best of times"}]}}]})");
    open();
    EXPECT_TRUE(store->marks().empty());
    ASSERT_EQ(store->bundledMarks().size(), 1u);
    EXPECT_EQ(store->bundledMarks()[0].anchor->start, 8u);
    store->add(highlight(), { 0, 25, 30, "worst" });
    EXPECT_EQ(store->bundledMarks().size(), 1u);
    EXPECT_EQ(readFile(library.path("Book.annotation"))->find("urn:uuid:1\""), std::string::npos);
}

TEST_F(MarkStoreTest, KeepsNothingOfABookThatIsNotInTheLibrary)
{
    open(false);
    EXPECT_FALSE(store->keepsMarks());
    store->add(highlight(), { 0, 8, 12, "best" });
    EXPECT_TRUE(store->marks().empty());
    EXPECT_TRUE(folderEntries(library.path())->empty());
}

TEST_F(MarkStoreTest, WritesAgainWhatCouldNotBeWritten)
{
    createFolder(library.path("Book.annotation"));
    store->add(highlight(), { 0, 8, 12, "best" });
    EXPECT_FALSE(store->isSaved());
    EXPECT_NE(store->problem(), "");
    EXPECT_EQ(store->marks().size(), 1u);
    removeItem(library.path("Book.annotation"));
    store->add(highlight(), { 0, 25, 30, "worst" });
    EXPECT_TRUE(store->isSaved());
    EXPECT_EQ(store->problem(), "");
    open();
    EXPECT_EQ(store->marks().size(), 2u);
}

}
