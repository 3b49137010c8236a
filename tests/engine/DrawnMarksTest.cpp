// Compares the pixels of a page whose marks were changed, or to which the user has turned, with those of the same page
// in a book that was opened there.

#include "tests/engine/MarkedReading.hpp"
#include "tests/engine/SeenFrame.hpp"

#include <gtkmm/label.h>

#include <algorithm>

namespace pagora::test {

namespace {

class DrawnMarks : public MarkedReading {
protected:
    // A chapter of many pages.
    void readManyPages()
    {
        std::string text;
        for (int i = 0; i < 150; ++i)
            text += "<p id='p" + std::to_string(i) + "'>" + std::to_string(i)
                + " The lantern was lit and the keeper went up the stairs, slowly, one after the other, while the wind "
                  "pressed "
                  "against the <i>old</i> glass and the sea was heard below.</p>";
        read({ markedPage(text) });
        // A note that is shown at the first opening only takes space from the page.
        close();
        openBook();
    }

    // Adds marks of all colours, every third with a note. Some touch, some overlap and some reach over the end of a
    // page.
    void markAll()
    {
        AnnotationSet set = annotationSetAbout({});
        for (std::size_t i = 0; i < 400; ++i) {
            Mark mark;
            mark.id = newMarkId();
            mark.created = timeNow();
            mark.color = markColors[i % markColors.size()];
            mark.note = i % 3 == 0 ? "a note" : "";
            mark.text = { "chapter1.xhtml", "", "", "", i * 50, i * 50 + 20 + i % 5 * 15, "" };
            set.marks.push_back(std::move(mark));
        }
        makeFile(_home.path("many.annotation"), annotationText(set));
        marks().importFrom(_home.path("many.annotation"));
        ASSERT_TRUE(waitUntil([this] { return kept().size() == 400; }));
        waitUntilSaved();
    }

    // What is drawn of the page, in a frame that is drawn now.
    SeenFrame seen()
    {
        auto& page = *window().parts().page.widget;
        bool isPainted = false;
        GdkFrameClock* const clock = gtk_widget_get_frame_clock(GTK_WIDGET(page.gobj()));
        const auto painted = g_signal_connect(clock, "after-paint",
            G_CALLBACK(+[](GdkFrameClock*, gpointer done) { *static_cast<bool*>(done) = true; }), &isPainted);
        page.queue_draw();
        EXPECT_TRUE(waitUntil([&] { return isPainted; }));
        g_signal_handler_disconnect(clock, painted);
        return seenFrameOf(page);
    }

    // Opens the book anew on the page that is shown. Returns what is drawn once nothing is pending.
    SeenFrame opened()
    {
        close();
        openBook();
        bool isAnswered = false;
        reader().ask("0", [&](std::int64_t) { isAnswered = true; });
        EXPECT_TRUE(waitUntil([&] { return isAnswered && reader().isSettled(); }));
        EXPECT_TRUE(waitUntil([this] { return webView().pictureAtRest().has_value(); }));
        return seen();
    }
    // The same for the pages from the shown one on. The last of them is shown then.
    std::vector<SeenFrame> openedPages(int count)
    {
        std::vector<SeenFrame> frames { opened() };
        while (frames.size() < static_cast<std::size_t>(count)) {
            turn(1);
            frames.push_back(opened());
        }
        return frames;
    }

    void expectSeen(const SeenFrame& expected, const std::string& when)
    {
        ASSERT_FALSE(expected.isBlank());
        std::size_t differences = 0;
        EXPECT_TRUE(waitUntil([&] { return (differences = seen().differences(expected)) == 0; }, 10))
            << differences << " pixels are others " << when;
    }
    // Turns over the pages and back, and compares each. The first of them is shown before and after.
    void expectPages(const std::vector<SeenFrame>& pages, const std::string& when)
    {
        expectSeen(pages.front(), when);
        for (std::size_t i = 1; i < pages.size(); ++i) {
            turn(1);
            expectSeen(pages[i], when + ", page " + std::to_string(i) + " on");
        }
        for (std::size_t i = pages.size() - 1; i > 0; --i) {
            turn(0);
            expectSeen(pages[i - 1], when + ", back on page " + std::to_string(i - 1));
        }
    }
    void turnBack(int pages)
    {
        for (int i = 0; i < pages; ++i)
            turn(0);
    }

    // Selects from the beginning of the shown page to the next one and highlights it.
    void highlightOverTheEndOfThePage(MarkColor color)
    {
        const auto count = kept().size();
        evaluate("(() => { const at = document.caretRangeFromPoint(30, 60).startContainer.parentNode.closest('p');"
                 "let last = at; while (last.getBoundingClientRect().left < innerWidth) last = last.nextElementSibling;"
                 "getSelection().setBaseAndExtent(at.nextElementSibling.firstChild, 0, "
                 "last.nextElementSibling.firstChild, 20); })()");
        marks().highlight(color);
        ASSERT_TRUE(waitUntil([&] { return kept().size() == count + 1; }));
        waitUntilSaved();
    }
    // The number of the mark that reaches over the end of the page, which is the longest.
    std::size_t longMark()
    {
        // With the chapter's heading.
        waitForLines(kept().size() + 1);
        const auto& lines = window().marksPane().lines();
        return std::max_element(lines.begin(), lines.end(), [](const auto& one, const auto& other) {
            return one.text.size() < other.text.size();
        })->number;
    }
};

}

TEST_F(DrawnMarks, AreTheSameAfterTurnsAsInABookThatIsOpenedThere)
{
    readManyPages();
    markAll();
    const auto pages = openedPages(5);
    turnBack(4);
    opened();
    expectPages(pages, "after turns");
    // Without waiting for a page to be drawn.
    for (const int tag : { 1, 1, 1, 1, 0, 0, 1, 0, 0, 0 })
        reader().changePage(tag);
    settle();
    expectSeen(pages.front(), "after quick turns");
}

TEST_F(DrawnMarks, AreTheSameAfterEachChangeAsInABookThatIsOpenedThere)
{
    readManyPages();
    markAll();
    turn(1);
    const auto before = openedPages(3);
    turnBack(2);
    highlightOverTheEndOfThePage(MarkColor::Pink);
    const auto added = openedPages(3);
    turnBack(2);
    marks().setColor(longMark(), MarkColor::Green);
    waitUntilSaved();
    const auto recolored = openedPages(3);
    turnBack(2);
    marks().setNote(longMark(), "a note");
    waitUntilSaved();
    const auto noted = openedPages(3);
    turnBack(2);
    for (const std::size_t page : { 0u, 1u }) {
        EXPECT_GT(before[page].differences(added[page]), 0u);
        EXPECT_GT(added[page].differences(recolored[page]), 0u);
        EXPECT_GT(recolored[page].differences(noted[page]), 0u);
    }
    marks().remove(longMark());
    waitUntilSaved();
    opened();
    expectPages(before, "at first");

    highlightOverTheEndOfThePage(MarkColor::Pink);
    expectPages(added, "with the mark");
    const auto number = longMark();
    marks().setColor(number, MarkColor::Green);
    waitUntilSaved();
    expectPages(recolored, "with another colour");
    marks().setNote(number, "a note");
    waitUntilSaved();
    expectPages(noted, "with a note");
    marks().remove(number);
    waitUntilSaved();
    expectPages(before, "without the mark");
    marks().undo();
    waitUntilSaved();
    expectPages(noted, "with the mark that came back");
}

// The engine's page process crashes when the ranges on a line are not in the order of their priorities.
TEST_F(DrawnMarks, LeaveThePageProcessAliveOnALineWithAMatchOfASearch)
{
    read({ longChapter() });
    showSentence();
    auto& search = state().reading._epubWindowController->search();
    search.search("lamp", WholeWords::No);
    ASSERT_TRUE(
        waitUntil([this] { return window().parts().widget<Gtk::Label>("resultCount").get_text() == "1 match"; }));
    search.goTo(0);
    settle();
    const auto load = webView().currentLoad();
    for (const auto color : { MarkColor::Green, MarkColor::Yellow, MarkColor::Pink }) {
        const auto before = seen();
        select("here", 9, 20);
        marks().highlight(color);
        ASSERT_TRUE(waitUntil([&] { return !kept().empty() && kept()[0].mark.color == color; }));
        marks().setNote(0, color == MarkColor::Green ? "a note" : "");
        waitUntilSaved();
        EXPECT_TRUE(waitUntil([&] { return evaluate("getSelection().isCollapsed") == "true" && seen() != before; }));
        EXPECT_EQ(painted(nameOf(color)), "fourth lamp");
        EXPECT_EQ(evaluate("String([...CSS.highlights.get('pagora-current')][0])"), "lamp");
    }
    EXPECT_EQ(webView().currentLoad(), load);
}

}
