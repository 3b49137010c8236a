// Searches books in the real program, and checks what is painted in the page.

#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <gtkmm/label.h>

namespace pagora::test {

namespace {

std::string page(const std::string& body, const std::string& attributes = {})
{
    return "<html xmlns='http://www.w3.org/1999/xhtml' " + attributes + "><head><title>t</title></head><body>" + body
        + "</body></html>";
}

class Find : public ReadingTest {
protected:
    // Opens a book with these chapters.
    void read(const std::vector<std::string>& chapters)
    {
        EpubBuilder book;
        book.chapters(static_cast<int>(chapters.size()));
        for (std::size_t i = 0; i < chapters.size(); ++i)
            book.member("OEBPS/chapter" + std::to_string(i + 1) + ".xhtml", chapters[i]);
        import(book.write(_home.path("book.epub")));
        ASSERT_EQ(bookCount(), 1u);
        open();
    }

    BookSearch& search() { return state().reading._epubWindowController->search(); }
    std::string count() { return window().parts().widget<Gtk::Label>("resultCount").get_text(); }

    void find(const std::string& pattern, WholeWords words = WholeWords::No)
    {
        window().parts().widget<Gtk::Label>("resultCount").set_text("Searching…");
        search().search(pattern, words);
        ASSERT_TRUE(waitUntil([this] { return count() != "Searching…"; }));
        settle();
    }
    void goTo(std::size_t index)
    {
        search().goTo(index);
        settle();
    }

    // Returns the text painted as the current match, and whether it is on the shown page.
    std::string painted() { return evaluate("String([...(CSS.highlights.get('pagora-current') || [])][0] || 'none')"); }
    long long paintedLightly() { return number("(CSS.highlights.get('pagora-found') || []).size || 0"); }
    bool isOnPage()
    {
        return evaluate("(() => { const box = [...CSS.highlights.get('pagora-current')][0].getClientRects()[0];"
                        "return box.left >= 0 && box.right <= innerWidth && box.top >= 0 && box.bottom <= innerHeight;"
                        "})()")
            == "true";
    }
};

// Returns several pages of text with `something` in the second half.
std::string longChapter(const std::string& something)
{
    std::string text;
    for (int i = 0; i < 80; ++i) {
        text += "<p>The lantern was lit and the keeper went up the stairs, slowly, one after the other, while the wind "
                "pressed against the old glass and the sea was heard below.</p>";
        if (i == 50)
            text += something;
    }
    return page(text);
}

}

// A search finds text in a chapter that the engine would take minutes to lay out.
TEST_F(Find, AChapterOfTwentyMegabytesIsSearched)
{
    std::string text;
    for (int i = 0; text.size() < 20'000'000; ++i)
        text += "<p>The lantern " + std::to_string(i) + " was lit, and the sea was heard below.</p>";
    read({ page("<p>nothing</p>"), page(text + "<p>Here is the nee<b>dle</b>.</p>") });
    find("needle");
    EXPECT_EQ(count(), "1 match");
    find("lantern");
    // The first results are reported before the end of the chapter is read.
    EXPECT_TRUE(waitUntil([this] { return count().ends_with(" matches, the first 10000 are listed"); })) << count();
    find("nothing");
    EXPECT_EQ(count(), "1 match");
}

TEST_F(Find, APressLandsOnThePageThatHoldsTheMatch)
{
    read({ page("<p>nothing</p>"), longChapter("<p>Here is the needle in it.</p>"), page("<p>nothing</p>") });
    find("needle");
    EXPECT_EQ(count(), "1 match");
    goTo(0);
    EXPECT_EQ(reader().activeSplitIndex(), 1u);
    EXPECT_EQ(painted(), "needle");
    EXPECT_TRUE(isOnPage());
    EXPECT_GT(number("window.pageXOffset"), 0);
    EXPECT_EQ(number("window.pageXOffset") % number("innerWidth"), 0);
}

TEST_F(Find, TheMatchStaysInViewWhenTheWindowTakesAnotherSize)
{
    read({ longChapter("<p>Here is the needle in it.</p>") });
    find("needle");
    goTo(0);
    window().window().setFrame({ 0, 0, 900, 620 });
    ASSERT_TRUE(waitUntil([this] { return number("innerHeight") < 600; }));
    settle();
    EXPECT_TRUE(isOnPage());
}

TEST_F(Find, TextThatMarkupSplitsIsFoundAndPainted)
{
    read({ page("<p>one foo<b>bar</b> two of\u00ADfice, \uFB01nal. <ruby>漢<rt>kan</rt>字<rt>ji</rt></ruby></p>"
                "<table><tr><td>in a cell</td><td>other</td></tr></table>"
                "<aside id='n'>a footnote’s text</aside><p dir='rtl'>שָׁלוֹם עולם</p><p>東京の本</p>"
                "<script>var hidden = 'one foo';</script><p><![CDATA[data < here]]> caf&#233;</p>") });
    const std::vector<std::pair<std::string, std::string>> expected { { "foobar", "foobar" },
        { "office", "of\u00ADfice" }, { "final", "\uFB01nal" }, { "漢字", "漢kan字" }, { "a cell", "a cell" },
        { "footnote's", "footnote’s" }, { "שלום", "שָׁלוֹם" }, { "京の", "京の" }, { "data < here", "data < here" },
        { "cafe", "café" } };
    for (const auto& [pattern, text] : expected) {
        find(pattern);
        EXPECT_EQ(count(), "1 match") << pattern;
        goTo(0);
        EXPECT_EQ(painted(), text) << pattern;
        EXPECT_TRUE(isOnPage()) << pattern;
    }
}

TEST_F(Find, RightToLeftPagesAreReached)
{
    std::string text;
    for (int i = 0; i < 120; ++i)
        text += "<p>هذا نص طويل من أجل صفحات كثيرة في هذا الكتاب الصغير الذي نقرأه الآن معا</p>"
            + std::string(i == 90 ? "<p>الإبرة</p>" : "");
    read({ page("<div>" + text + "</div>", "dir='rtl'") });
    find("الابره");
    EXPECT_EQ(count(), "No matches");
    find("الإبرة");
    EXPECT_EQ(count(), "1 match");
    goTo(0);
    EXPECT_TRUE(isOnPage());
    EXPECT_GT(number("window.pageXOffset"), 0);
}

TEST_F(Find, OtherMatchesArePaintedLightlyAndTheDocumentStaysAsItIs)
{
    read({ page("<p>word and word and word</p>") });
    const auto before = evaluate("document.documentElement.outerHTML");
    const auto length = number("document.body.scrollWidth");
    find("word");
    EXPECT_EQ(paintedLightly(), 3);
    goTo(1);
    EXPECT_EQ(painted(), "word");
    EXPECT_EQ(evaluate("document.documentElement.outerHTML"), before);
    EXPECT_EQ(number("document.body.scrollWidth"), length);
}

TEST_F(Find, LeadsFromMatchToMatchThroughTheChapters)
{
    read({ page("<p>a needle and a needle</p>"), page("<p>nothing</p>"), page("<p>the needle</p>") });
    goToChapter(1);
    find("needle");
    search().goToNext();
    settle();
    EXPECT_EQ(reader().activeSplitIndex(), 2u);
    search().goToNext();
    settle();
    EXPECT_EQ(reader().activeSplitIndex(), 0u);
    search().goToPrevious();
    settle();
    EXPECT_EQ(reader().activeSplitIndex(), 2u);
    EXPECT_EQ(painted(), "needle");
}

TEST_F(Find, BeginsWithTheFirstMatchFromThePageOn)
{
    read({ longChapter("<p>Here is the needle in it.</p>") });
    find("keeper");
    turn(1);
    const auto shown = number("window.pageXOffset");
    search().goToNext();
    settle();
    EXPECT_EQ(number("window.pageXOffset"), shown);
    EXPECT_TRUE(isOnPage());
}

TEST_F(Find, AChapterThatIsTurnedToIsPaintedToo)
{
    read({ page("<p>a needle</p>"), page("<p>two needles, needles</p>") });
    find("needle");
    turn(1);
    EXPECT_EQ(reader().activeSplitIndex(), 1u);
    EXPECT_EQ(paintedLightly(), 2);
}

TEST_F(Find, TheEndTakesThePaintAwayAndGivesTheContentsBack)
{
    read({ page("<p>a needle</p>") });
    find("needle");
    goTo(0);
    search().end();
    settle();
    EXPECT_EQ(number("CSS.highlights.size"), 0);
    EXPECT_TRUE(window().parts().widget<Gtk::Widget>("tocClip").get_visible());
    EXPECT_FALSE(window().parts().widget<Gtk::Widget>("searchResults").get_visible());
}

TEST_F(Find, APageThatChangesItselfIsFollowed)
{
    read(
        { page("<p id='a'>first</p><p>the needle</p><script>"
               "document.getElementById('a').firstChild.data = 'a good deal more of text than there was';</script>") });
    find("needle");
    goTo(0);
    EXPECT_EQ(painted(), "needle");
}

TEST_F(Find, APageThatIsNotWellFormedIsSearched)
{
    read({ page("<p>first<br>the <b>nee</b>dle<p>&nbsp;&copy; unclosed") });
    find("needle");
    EXPECT_EQ(count(), "1 match");
    goTo(0);
    EXPECT_EQ(painted(), "needle");
    EXPECT_TRUE(isOnPage());
}

TEST_F(Find, ABookMayBeClosedWhileItIsSearched)
{
    read({ longChapter("<p>Here is the needle in it.</p>") });
    search().search("e", WholeWords::No);
    close();
    EXPECT_FALSE(state().reading._epubWindowController);
}

}
