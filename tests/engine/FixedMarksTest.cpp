// Sets marks in a fixed-layout book in the real program, with the pointer and the keyboard of the display.

#include "files/Files.hpp"
#include "fixed/PreparedPages.hpp"
#include "tests/engine/PointedReading.hpp"
#include "tests/support/EpubBuilder.hpp"

namespace pagora::test {

namespace {

std::string page(const std::string& body)
{
    return "<html xmlns='http://www.w3.org/1999/xhtml'><head><title>t</title><meta name='viewport' content='width=600, "
           "height=800'/><style>body { margin: 0; font: 30px serif; } p { position: absolute; left: 80px; top: 200px; "
           "margin: 0; }</style></head><body>"
        + body + "</body></html>";
}

class FixedMarks : public PointedReading {
protected:
    // The second page has text, the third one none.
    void read()
    {
        EpubBuilder builder;
        builder.chapters(4).fixedLayout(600, 800);
        builder.member("OEBPS/chapter2.xhtml", page("<p>The <span id='here'>fourth</span> lamp was broken.</p>"));
        builder.member("OEBPS/chapter3.xhtml",
            page("<svg xmlns='http://www.w3.org/2000/svg' width='600' height='800'>"
                 "<circle cx='300' cy='400' r='200'/></svg>"));
        builder.member("OEBPS/chapter4.xhtml",
            page("<p>The last <span id='last'>word</span></p><p style='top: 300px'>Another block.</p>"));
        import(builder.write(_home.path("book.epub")));
        ASSERT_EQ(bookCount(), 1u);
        open();
        ASSERT_TRUE(waitUntil([this] { return marks().store() && marks().store()->isSaved(); }));
        webView().makeFirstResponder();
    }
    BookMarks& marks() { return state().reading._fixedWindowController->marks(); }
    const KeptMarks& kept() { return marks().store()->marks(); }
    void waitUntilKept(std::size_t count)
    {
        ASSERT_TRUE(waitUntil([&] { return kept().size() == count && marks().store()->isSaved(); }, 60));
        settleFixed();
    }
    void show(std::int64_t page)
    {
        if (fixedReader().activeSplitIndex() + 1 == static_cast<std::uint64_t>(page))
            return;
        fixedReader().goToPageNumber(page);
        ASSERT_TRUE(
            waitUntil([&] { return fixedReader().activeSplitIndex() + 1 == static_cast<std::uint64_t>(page); }));
        settleFixed();
    }
    // Without a window manager the display's keys go to the window below the pointer.
    void key(const std::string& name) { xdotool("mousemove " + onDisplay(20, 20) + " key --clearmodifiers " + name); }
    void highlightTheWord()
    {
        show(2);
        const auto word = lineOf("here");
        const auto point = onDisplay((word.left + word.right) / 2, word.middle);
        xdotool("mousemove " + point + " click --repeat 2 --delay 60 1");
        ASSERT_TRUE(waitUntil([this] { return evaluate("String(getSelection()).trim()") == "fourth"; }, 60));
        ASSERT_TRUE(waitUntil([this] { return fixedWindow().selectionBar().isShown(); }, 60));
        key("ctrl+h");
        waitUntilKept(1);
    }
    std::string painted()
    {
        return evaluate("[...(CSS.highlights.get('pagora-mark-yellow') || [])].map(String).join('|')");
    }
    bool hasRibbon() { return fixedWindow().markSigns().ribbon().get_visible(); }
    std::vector<std::string> listed()
    {
        std::vector<std::string> texts;
        for (const auto& line : fixedWindow().marksPane().lines())
            texts.push_back(line.text);
        return texts;
    }
    using Texts = std::vector<std::string>;
};

}

TEST_F(FixedMarks, AreHighlightsOfTextThatIsThere)
{
    read();
    show(2);
    const auto before = evaluate("document.documentElement.outerHTML");
    highlightTheWord();
    EXPECT_TRUE(waitUntil([this] { return painted() == "fourth"; }));
    EXPECT_EQ(evaluate("document.documentElement.outerHTML"), before);
    EXPECT_TRUE(waitUntil([this] { return !fixedWindow().selectionBar().isShown(); }));
    const auto path = *book()->epubPath();
    const auto file = readFile(path.substr(0, path.rfind('.')) + ".annotation").value_or("");
    EXPECT_NE(file.find("\"exact\": \"fourth\""), std::string::npos) << file;
    EXPECT_NE(file.find("chapter2.xhtml"), std::string::npos) << file;
    ASSERT_TRUE(waitUntil([this] { return listed().size() == 2; }));
    EXPECT_EQ(listed(), (Texts { "Chapter 2, page 2", "fourth" }));
}

// The engine takes the words of both blocks for one.
TEST_F(FixedMarks, OfTheLastWordOfABlockHoldNothingOfTheNextOne)
{
    read();
    show(4);
    const auto word = lineOf("last");
    xdotool("mousemove " + onDisplay((word.left + word.right) / 2, word.middle) + " click --repeat 2 --delay 60 1");
    ASSERT_TRUE(waitUntil([this] { return fixedWindow().selectionBar().isShown(); }, 60));
    EXPECT_EQ(evaluate("String(getSelection())"), "word");
    key("ctrl+h");
    waitUntilKept(1);
    EXPECT_EQ(kept()[0].mark.text.exact, "word");
}

TEST_F(FixedMarks, AreThereAgainWhenTheirPageIsShownAgain)
{
    read();
    highlightTheWord();
    show(1);
    EXPECT_EQ(painted(), "");
    fixedReader().changePage(1);
    settleFixed();
    EXPECT_TRUE(waitUntil([this] { return painted() == "fourth"; }));
    close();
    ASSERT_TRUE(waitUntil([this] { return !state().reading._fixedWindowController; }));
    open();
    ASSERT_TRUE(waitUntil([this] { return marks().store() && marks().store()->isSaved() && kept().size() == 1; }));
    show(2);
    EXPECT_TRUE(waitUntil([this] { return painted() == "fourth"; }));
}

TEST_F(FixedMarks, ThatAreRemovedAreNotOnAPageThatWasPrepared)
{
    read();
    highlightTheWord();
    show(1);
    ASSERT_TRUE(waitUntil([this] { return dynamic_cast<PreparedPages&>(webView()).isReady(); }));
    marks().remove(0);
    waitUntilKept(0);
    fixedReader().changePage(1);
    settleFixed();
    EXPECT_TRUE(waitUntil([this] { return fixedReader().activeSplitIndex() == 1; }));
    EXPECT_EQ(painted(), "");
}

TEST_F(FixedMarks, ShowTheirBarWhereTheyArePressed)
{
    read();
    highlightTheWord();
    ASSERT_TRUE(waitUntil([this] { return painted() == "fourth"; }));
    const auto word = lineOf("here");
    const double x = (word.left + word.right) / 2;
    // This press separates the previous ones from the next, which would be a triple click. A press at the side would
    // turn the page.
    press(x, word.middle + 200);
    press(x, word.middle);
    auto& bar = fixedWindow().markEditor().popover();
    ASSERT_TRUE(waitUntil([&bar] { return bar.get_mapped(); }, 60));
    fixedWindow().markEditor().note().get_buffer()->set_text("a note");
    bar.popdown();
    ASSERT_TRUE(waitUntil([this] { return kept()[0].mark.note == "a note"; }));
    EXPECT_EQ(fixedReader().activeSplitIndex(), 1u);
}

TEST_F(FixedMarks, AreBookmarksOfPagesWithAndWithoutText)
{
    read();
    for (const int number : { 2, 3 }) {
        show(number);
        EXPECT_FALSE(hasRibbon());
        key("ctrl+d");
        ASSERT_TRUE(waitUntil([this] { return hasRibbon(); }, 60)) << number;
    }
    waitUntilKept(2);
    show(4);
    ASSERT_TRUE(waitUntil([this] { return !hasRibbon(); }));
    close();
    ASSERT_TRUE(waitUntil([this] { return !state().reading._fixedWindowController; }));
    open();
    ASSERT_TRUE(waitUntil([this] { return marks().store() && kept().size() == 2; }));
    for (const int number : { 3, 2 }) {
        show(number);
        ASSERT_TRUE(waitUntil([this] { return hasRibbon(); })) << number;
    }
    key("ctrl+d");
    ASSERT_TRUE(waitUntil([this] { return !hasRibbon(); }, 60));
    EXPECT_EQ(fixedWindow().markSigns().line(), "Bookmark removed");
}

TEST_F(FixedMarks, LeadToTheirPagesFromTheListAndBackLeadsFromThere)
{
    read();
    highlightTheWord();
    show(4);
    key("ctrl+l");
    auto& list = fixedWindow().marksPane().list();
    ASSERT_TRUE(waitUntil([&list] { return list.get_mapped(); }, 60));
    ASSERT_TRUE(waitUntil(
        [&] {
            const auto* const focus = _program->toplevel.window().get_focus();
            return focus && (focus == &list || focus->is_ancestor(list));
        },
        60));
    key("Return");
    ASSERT_TRUE(waitUntil([this] { return fixedReader().activeSplitIndex() == 1; }, 60));
    settleFixed();
    EXPECT_TRUE(waitUntil([this] { return painted() == "fourth"; }));
    key("alt+Left");
    ASSERT_TRUE(waitUntil([this] { return fixedReader().activeSplitIndex() == 3; }, 60));
}

}
