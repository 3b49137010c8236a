// Sets marks with the real reader, and checks what is painted in the page and stored in the library.

#include "tests/engine/MarkedReading.hpp"

#include <gtkmm/scale.h>

namespace pagora::test {

namespace {

class Marks : public MarkedReading { };

}

TEST_F(Marks, AreKeptInAFileBesideTheArchive)
{
    read({ longChapter() });
    showSentence();
    highlight();
    EXPECT_EQ(painted(), "fourth lamp");
    const auto text = readFile(file()).value_or("");
    EXPECT_NE(text.find("\"exact\": \"fourth lamp\""), std::string::npos) << text;
    EXPECT_NE(text.find("\"source\": \"chapter1.xhtml\""), std::string::npos) << text;
    EXPECT_EQ(kept()[0].mark.text.before, "e sea was heard below. Here the ");
}

TEST_F(Marks, LeaveTheDocumentAndItsLengthAsTheyAre)
{
    read({ longChapter() });
    showSentence();
    const auto before = evaluate("document.documentElement.outerHTML");
    const auto length = number("document.body.scrollWidth");
    highlight();
    EXPECT_EQ(evaluate("document.documentElement.outerHTML"), before);
    EXPECT_EQ(number("document.body.scrollWidth"), length);
}

TEST_F(Marks, AreFoundAgainAfterEachChangeOfTheDisplay)
{
    read({ longChapter() });
    showSentence();
    highlight();
    window().parts().widget<Gtk::Scale>("fontSizeSlider").set_value(1.7);
    settle();
    expectFound();
    reader().changeWidth();
    settle();
    expectFound();
    const auto width = evaluate("innerWidth");
    window().window().setFrame({ 0, 0, 860, 640 });
    ASSERT_TRUE(waitUntil([&] { return evaluate("innerWidth") != width; }));
    settle();
    expectFound();
    for (const int theme : { 2, 3, 1 }) {
        window().colorControl().setSelectedSegment(theme - 1);
        reader().changeColor();
        settle();
        expectFound();
    }
    window().fontMenu().selectItemWithTitle("DejaVu Serif");
    reader().fontChange();
    settle();
    expectFound();
}

TEST_F(Marks, AreFoundAgainAfterANewVersionHasWipedWhatIsStored)
{
    highlightAndClose();
    _program->defaults.setObject("BundleVersion", std::string("0"));
    restart();
    openBook();
    expectFound();
}

TEST_F(Marks, AreFoundAgainAfterAReset)
{
    highlightAndClose();
    _program->controller.resetAppSettings();
    ASSERT_TRUE(waitUntil([this] { return !state().launch.isResetting() && bookCount() == 1; }));
    openBook();
    expectFound();
}

TEST_F(Marks, StayWhenTheBookIsRemovedAndAreFoundWhenItComesBack)
{
    highlightAndClose();
    const auto path = file();
    removeBook();
    EXPECT_TRUE(fileExists(path));
    read({ longChapter() });
    expectFound();
}

TEST_F(Marks, AreFoundInTheSameBookUnderAnotherName)
{
    highlightAndClose();
    removeBook();
    import(write("another name.epub", { longChapter() }));
    openBook();
    expectFound();
}

TEST_F(Marks, AreFoundInANewerEditionWhoseTextHasMoved)
{
    highlightAndClose();
    removeBook();
    write("book.epub", { markedPage("<p>A preface.</p>"), longChapter("<p>A new beginning of the chapter.</p>") });
    import(_home.path("book.epub"));
    openBook();
    ASSERT_EQ(kept().size(), 1u);
    ASSERT_TRUE(kept()[0].anchor);
    EXPECT_EQ(kept()[0].anchor->chapter, 1u);
    marks().goTo(0);
    settle();
    expectFound();
}

TEST_F(Marks, WhoseTextIsGoneStayInTheListAndSaySo)
{
    highlightAndClose();
    removeBook();
    read({ markedPage("<p>Another text altogether.</p>") });
    ASSERT_EQ(kept().size(), 1u);
    EXPECT_FALSE(kept()[0].anchor);
    waitForLines(2);
    const auto& lines = window().marksPane().lines();
    EXPECT_EQ(lines[0].text, "Not found in this edition");
    EXPECT_TRUE(lines[1].isLost);
    EXPECT_NE(readFile(file())->find("fourth lamp"), std::string::npos);
}

TEST_F(Marks, OfThePageAreShownByARibbonAndTakenAwayAgain)
{
    read({ longChapter() });
    turn(1);
    const auto seen = place();
    marks().toggleBookmark();
    ASSERT_TRUE(waitUntil([this] { return hasRibbon(); }));
    waitUntilSaved();
    turn(1);
    EXPECT_FALSE(hasRibbon());
    marks().goTo(0);
    settle();
    EXPECT_TRUE(hasRibbon());
    EXPECT_EQ(place(), seen);
    reader().goBack();
    settle();
    EXPECT_FALSE(hasRibbon());
    marks().goTo(0);
    settle();
    marks().toggleBookmark();
    ASSERT_TRUE(waitUntil([this] { return !hasRibbon(); }));
    EXPECT_TRUE(kept().empty());
    EXPECT_EQ(window().markSigns().line(), "Bookmark removed");
    marks().undo();
    ASSERT_TRUE(waitUntil([this] { return hasRibbon(); }));
    EXPECT_EQ(window().markSigns().line(), "");
}

TEST_F(Marks, OfTheBooksMakerAreListedApartAndPainted)
{
    EpubBuilder builder;
    builder.chapters(1);
    builder.member("OEBPS/chapter1.xhtml", longChapter());
    builder.member("META-INF/my.annotation",
        "{\"items\": [{\"id\": \"urn:uuid:1\", \"body\": {\"color\": \"green\", \"value\": \"\"}, \"target\": "
        "{\"source\": "
        "\"chapter1.xhtml\", \"selector\": [{\"type\": \"TextQuoteSelector\", \"exact\": \"fourth lamp\"}]}}]}");
    import(builder.write(_home.path("book.epub")));
    openBook();
    EXPECT_TRUE(kept().empty());
    showSentence();
    EXPECT_EQ(painted(), "fourth lamp");
    waitForLines(2);
    const auto& lines = window().marksPane().lines();
    EXPECT_EQ(lines[0].text, "From the makers of the book");
    EXPECT_FALSE(lines[1].isMine);
    marks().remove(lines[1].number);
    settle();
    waitForLines(2);
}

TEST_F(Marks, TwoThousandInAChapterArePaintedEachOnItsPage)
{
    read({ longChapter() });
    AnnotationSet many = annotationSetAbout({});
    for (std::size_t i = 0; i < 2000; ++i) {
        Mark mark;
        mark.id = newMarkId();
        mark.created = timeNow();
        mark.color = MarkColor::Green;
        mark.text = { "chapter1.xhtml", "", "", "", i * 4, i * 4 + 3, "" };
        many.marks.push_back(std::move(mark));
    }
    makeFile(_home.path("many.annotation"), annotationText(many));
    marks().importFrom(_home.path("many.annotation"));
    ASSERT_TRUE(waitUntil([this] { return kept().size() == 2000; }));
    waitUntilSaved();
    long long sum = 0;
    for (bool isLast = false; !isLast; turn(1)) {
        const auto count = number(rangesOnPage() + ".length");
        // Only marks of the page and of adjacent pages are registered.
        EXPECT_LE(number("CSS.highlights.get('pagora-mark-green').size"), 1000);
        sum += count;
        isLast = isAtEnd();
    }
    EXPECT_GE(sum, 1990);
}

TEST_F(Marks, ArePaintedOnAPageThatReachesThemAfterAChangeOfItsText)
{
    read({ longChapter() });
    turn(1);
    const auto second = place();
    evaluate("getSelection().setBaseAndExtent(...(() => { const at = document.caretRangeFromPoint(30, 60);"
             "return [at.startContainer, at.startOffset, at.startContainer, at.startContainer.length]; })())");
    marks().highlight(MarkColor::Green);
    ASSERT_TRUE(waitUntil([this] { return !kept().empty(); }));
    waitUntilSaved();
    EXPECT_NE(painted(), "");
    turn(0);
    EXPECT_NE(place(), second);
    EXPECT_EQ(painted(), "");
    window().parts().widget<Gtk::Scale>("fontSizeSlider").set_value(0.8);
    settle();
    EXPECT_EQ(number("window.pageXOffset"), 0);
    EXPECT_NE(painted(), "");
    EXPECT_TRUE(isOnPage());
}
}
