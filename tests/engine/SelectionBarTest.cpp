// The actions for selected text, in the real program with the real pointer.

#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/PointedReading.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <algorithm>
#include <stdexcept>

namespace pagora::test {

namespace {

class SelectionBarTest : public PointedReading {
protected:
    void read(const std::string& first, const std::string& after = {})
    {
        EpubBuilder book;
        book.chapters(2);
        book.member("OEBPS/chapter1.xhtml", chapterOf(120, first, after));
        import(book.write(_home.path("book.epub")));
        open();
        webView().makeFirstResponder();
    }

    // The bar, found by its style class in the parent widget of the page.
    Gtk::Widget& bar() { return *childOfClass("selection-bar"); }
    Gtk::Widget* childOfClass(const char* name)
    {
        auto* child = place().get_first_child();
        while (child && !child->has_css_class(name))
            child = child->get_next_sibling();
        return child;
    }
    Gtk::Widget& place() { return window().parts().widget<Gtk::Widget>("pagePlace"); }
    bool isShown() { return bar().get_visible(); }
    bool waitForBar()
    {
        return waitUntil([this] { return isShown() && bar().get_width() > 0; }, 30);
    }
    bool waitForNoBar()
    {
        return waitUntil([this] { return !isShown(); }, 30);
    }
    Gtk::Button& button(const std::string& label)
    {
        for (auto* child = bar().get_first_child(); child; child = child->get_next_sibling()) {
            if (auto* const each = dynamic_cast<Gtk::Button*>(child); each && each->get_label().raw() == label)
                return *each;
        }
        throw std::runtime_error("no button " + label);
    }

    // Selects an element from its start to its end with the pointer.
    void dragOver(const std::string& id)
    {
        const auto [left, right, middle] = lineOf(id);
        xdotool("mousemove " + onDisplay(left + 1, middle) + " mousedown 1");
        for (int step = 1; step <= 4; ++step) {
            xdotool("mousemove " + onDisplay(left + 1 + (right - left - 2) * step / 4, middle));
            evaluate("0");
        }
        ASSERT_TRUE(waitUntil([this] { return !evaluate("String(getSelection())").empty(); }, 30));
        xdotool("mouseup 1");
    }
    // Sends a key to the window.
    bool pressKey(guint key, GdkModifierType state = GdkModifierType(0))
    {
        return ToolkitTest::press(window().parts().window.window().gobj(), key, state);
    }
    void select(const std::string& id)
    {
        evaluate("getSelection().selectAllChildren(document.getElementById('" + id + "')); 0");
    }

    std::string count() { return window().parts().widget<Gtk::Label>("resultCount").get_text(); }
};

constexpr const char* sentence
    = "<p>It is told that <span id='words'>the old lantern</span> was lit by a keeper who had come from the sea.</p>";

}

TEST_F(SelectionBarTest, IsShownBesideTextThatThePointerSelects)
{
    read(std::string("<p>first</p><p>second</p><p>third</p>") + sentence);
    EXPECT_FALSE(isShown());
    dragOver("words");
    ASSERT_TRUE(waitForBar());
    EXPECT_TRUE(webView().currentLoad() > 0);
    double barX = 0;
    double barY = 0;
    bar().translate_coordinates(place(), 0, 0, barX, barY);
    double textX = 0;
    double textY = 0;
    gtk_widget_translate_coordinates(GTK_WIDGET(engineView()), place().gobj(),
        number("Math.round(getSelection().getRangeAt(0).getBoundingClientRect().left)"),
        number("Math.floor(getSelection().getRangeAt(0).getBoundingClientRect().top)"), &textX, &textY);
    EXPECT_LE(barY + bar().get_height(), textY);
    EXPECT_GT(barY + bar().get_height(), textY - 60);
}

// Each block without a space at its end is a word with the next block for the engine.
TEST_F(SelectionBarTest, OfAWordThatIsPressedTwiceHoldsOneBlockOnly)
{
    read("<div style='position: relative; height: 3em'><span style='position: absolute'>A <i "
         "id='words'>lantern</i></span>"
         "<span style='position: absolute; left: 12em'>beside it</span></div>");
    const auto [left, right, middle] = lineOf("words");
    xdotool("mousemove " + onDisplay((left + right) / 2, middle) + " click --repeat 2 --delay 60 1");
    ASSERT_TRUE(waitForBar());
    EXPECT_EQ(evaluate("String(getSelection())"), "lantern");
}

TEST_F(SelectionBarTest, OfAWordThatIsPressedTwiceHoldsItsLargeFirstLetter)
{
    read("<p><span style='float: left; font-size: 3em'>L</span><span id='words'>antern</span> and sea</p>");
    const auto [left, right, middle] = lineOf("words");
    xdotool("mousemove " + onDisplay((left + right) / 2, middle) + " click --repeat 2 --delay 60 1");
    ASSERT_TRUE(waitForBar());
    EXPECT_EQ(evaluate("String(getSelection()).replace(/\\s/g, '')"), "Lantern");
}

TEST_F(SelectionBarTest, CopiesTheText)
{
    read(sentence);
    dragOver("words");
    ASSERT_TRUE(waitForBar());
    button("Copy").activate();
    EXPECT_TRUE(waitUntil([this] { return clipboard().find("old lantern") != std::string::npos; }, 30));
    EXPECT_TRUE(waitForNoBar());
}

TEST_F(SelectionBarTest, FindsTheTextInTheBook)
{
    read(sentence, "<p>A lan\u00ADtern. Lantern.</p><p>lantern</p><p id='lantern'>lantern</p>");
    select("lantern");
    select("words");
    evaluate("getSelection().setBaseAndExtent(document.getElementById('words').firstChild, 8, "
             "document.getElementById('words').firstChild, 15); 0");
    pressKey(GDK_KEY_Menu);
    ASSERT_TRUE(waitForBar());
    button("Find in Book").activate();
    ASSERT_TRUE(waitUntil([this] { return count() == "5 matches"; }, 60)) << count();
    EXPECT_EQ(window().searchField().stringValue(), "lantern");
    EXPECT_FALSE(window().mainSplitView().isSubviewHidden(0));
    EXPECT_FALSE(isShown());
}

TEST_F(SelectionBarTest, LooksTheTextUp)
{
    read("<p id='words'>the <b>old</b>\n lan&#xAD;tern</p>");
    select("words");
    pressKey(GDK_KEY_Menu);
    ASSERT_TRUE(waitForBar());
    button("Look Up").activate();
    ASSERT_TRUE(waitUntil([this] { return !_program->workspace.lookedUp.empty(); }, 30));
    EXPECT_EQ(_program->workspace.lookedUp, std::vector<std::string> { "the old lantern" });
}

TEST_F(SelectionBarTest, IsOpenedByTheMenuKeyAndTakesTheKeyboard)
{
    read(sentence);
    for (const auto& [key, state] :
        { std::pair(GDK_KEY_Menu, GdkModifierType(0)), std::pair(GDK_KEY_F10, GDK_SHIFT_MASK) }) {
        select("words");
        EXPECT_TRUE(pressKey(key, state));
        ASSERT_TRUE(waitForBar());
        EXPECT_TRUE(button("Copy").has_focus());
        EXPECT_TRUE(pressKey(GDK_KEY_Escape));
        ASSERT_TRUE(waitForNoBar());
        EXPECT_TRUE(waitUntil([this] { return gtk_widget_has_focus(GTK_WIDGET(engineView())); }, 30));
        EXPECT_FALSE(evaluate("String(getSelection())").empty());
    }
}

TEST_F(SelectionBarTest, IsNotOpenedByTheMenuKeyWithoutASelection)
{
    read(sentence);
    evaluate("getSelection().removeAllRanges(); 0");
    pressKey(GDK_KEY_Menu);
    settle();
    EXPECT_EQ(evaluate("pagoraSelection.ask()"), "false");
    EXPECT_FALSE(isShown());
}

TEST_F(SelectionBarTest, ArrowsDoNotTurnThePageWhileItHasTheKeyboard)
{
    read(sentence);
    select("words");
    pressKey(GDK_KEY_Menu);
    ASSERT_TRUE(waitForBar());
    EXPECT_FALSE(pressKey(GDK_KEY_Right));
    EXPECT_TRUE(isShown());
}

TEST_F(SelectionBarTest, GoesWhenNothingIsSelectedAnyMore)
{
    read(sentence);
    dragOver("words");
    ASSERT_TRUE(waitForBar());
    evaluate("getSelection().removeAllRanges(); 0");
    EXPECT_TRUE(waitForNoBar());
}

TEST_F(SelectionBarTest, GoesWhenThePageIsPressed)
{
    read(sentence);
    dragOver("words");
    ASSERT_TRUE(waitForBar());
    press(number("innerWidth / 2"), number("innerHeight - 60"));
    EXPECT_TRUE(waitForNoBar());
}

TEST_F(SelectionBarTest, GoesWhenThePageIsTurned)
{
    read(sentence);
    dragOver("words");
    ASSERT_TRUE(waitForBar());
    turn(1);
    EXPECT_TRUE(waitForNoBar());
}

TEST_F(SelectionBarTest, GoesWithItsChapter)
{
    read(sentence);
    dragOver("words");
    ASSERT_TRUE(waitForBar());
    goToChapter(1);
    EXPECT_TRUE(waitForNoBar());
}

TEST_F(SelectionBarTest, GoesWhenTheTextChangesItsSize)
{
    read(sentence);
    dragOver("words");
    ASSERT_TRUE(waitForBar());
    pressKey(GDK_KEY_plus, GDK_CONTROL_MASK);
    EXPECT_TRUE(waitForNoBar());
}

// A page that changes its selection continuously is reported at most ten times a second, with a truncated text.
TEST_F(SelectionBarTest, IsNotFloodedByThePage)
{
    read(std::string(sentence)
        + "<p id='long'></p><script>document.getElementById('long').textContent = 'word '.repeat(100000);"
          "let turns = 0; window.addEventListener('message', () => setInterval(() => { ++turns; "
          "getSelection().selectAllChildren(document.getElementById(turns % 2 ? 'words' : 'long')); }, 1));</script>");
    dragOver("words");
    ASSERT_TRUE(waitForBar());
    long long reports = 0;
    std::size_t maxLength = 0;
    reader().setSelectionHandler([&](const std::optional<PageSelection>& selection) {
        ++reports;
        maxLength = std::max(maxLength, selection ? selection->text.size() : 0);
    });
    const auto start = g_get_monotonic_time();
    evaluate("window.postMessage('begin', '*'); 0");
    ASSERT_TRUE(waitUntil([&] { return reports >= 8; }, 60));
    // One report may have been pending.
    EXPECT_LE(reports - 2, (g_get_monotonic_time() - start) / 100'000);
    EXPECT_LE(maxLength, 300U);
    reader().setSelectionHandler({});
}

// The bar adds nothing that the page's own scripts can see.
TEST_F(SelectionBarTest, IsNotNoticedByThePage)
{
    read(sentence,
        "<script>let changes = 0; const observer = new MutationObserver((all) => { changes += all.length; });"
        "window.addEventListener('message', (event) => { if (event.data === 'watch') observer.observe(document, { "
        "subtree: true, attributes: true, childList: true, characterData: true }); else document.title = changes + ' ' "
        "+ typeof window.pagoraSelection; });</script>");
    evaluate("window.postMessage('watch', '*'); 0");
    dragOver("words");
    ASSERT_TRUE(waitForBar());
    button("Copy").activate();
    ASSERT_TRUE(waitForNoBar());
    evaluate("window.postMessage('tell', '*'); 0");
    ASSERT_TRUE(waitUntil([this] { return evaluate("document.title").ends_with("undefined"); }, 30));
    EXPECT_EQ(evaluate("document.title"), "0 undefined");
}

}
