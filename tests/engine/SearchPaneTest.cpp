// Search and history in a reader window.

#include "panels/gtk/SearchResultRow.hpp"
#include "tests/engine/ReaderWindowTest.hpp"

#include <gtkmm/checkbutton.h>

namespace pagora::test {

namespace {

class SearchPaneTest : public ReaderWindowTest {
protected:
    SearchPaneTest()
    {
        makeEpubWindow();
        epub->window().setFrame({ 0, 0, 1100, 700 });
        epub->window().makeKeyAndOrderFront();
    }
    SearchPane& pane() { return epub->searchPane(); }
    std::string count() { return widget<Gtk::Label>("resultCount").get_text(); }
    guint rows()
    {
        return g_list_model_get_n_items(G_LIST_MODEL(widget<Gtk::ListView>("resultList").get_model()->gobj()));
    }
    static FoundText result(const std::string& match) { return { 0, 1, 2, "before ", match, " after" }; }
    void type(const std::string& text) { epub->searchField().setStringValue(text); }
};

// The texts of the results in a widget, in order.
void addTexts(Gtk::Widget& widget, std::vector<std::string>& texts)
{
    if (const auto* const row = dynamic_cast<SearchResultRow*>(&widget))
        texts.push_back(row->text());
    for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling())
        addTexts(*child, texts);
}

}

TEST_F(SearchPaneTest, SearchesWhileTheFieldIsTyped)
{
    type("lam");
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "find lam" });
    type("lamp");
    ASSERT_TRUE(waitUntil([this] { return done.back() == "find lamp"; }));
}

TEST_F(SearchPaneTest, SearchesAgainForWholeWords)
{
    type("lamp");
    widget<Gtk::CheckButton>("wholeWords").set_active(true);
    ASSERT_TRUE(waitForDone(2));
    EXPECT_EQ(done.back(), "find lamp as words");
}

TEST_F(SearchPaneTest, ShowsTheResultsInThePlaceOfTheContents)
{
    pane().setResultsShown(true);
    EXPECT_TRUE(widget<Gtk::Widget>("searchResults").get_visible());
    EXPECT_FALSE(widget<Gtk::Widget>("tocClip").get_visible());
    pane().addChapter("One");
    pane().addResults({ result("<lamp>"), result("lamps") });
    std::vector<std::string> texts;
    ASSERT_TRUE(waitUntil([&] {
        texts.clear();
        addTexts(widget<Gtk::Widget>("resultList"), texts);
        return texts.size() >= 3;
    }));
    EXPECT_EQ(texts[0], "One");
    EXPECT_EQ(texts[1], "before <lamp> after");
    pane().setResultsShown(false);
    EXPECT_TRUE(widget<Gtk::Widget>("tocClip").get_visible());
}

TEST_F(SearchPaneTest, SaysHowManyThereAre)
{
    pane().setCount(0, false);
    EXPECT_EQ(count(), "Searching…");
    pane().setCount(0, true);
    EXPECT_EQ(count(), "No matches");
    pane().setCount(1, true);
    EXPECT_EQ(count(), "1 match");
    pane().setCount(12, true);
    EXPECT_EQ(count(), "12 matches");
    pane().setCount(12345, true);
    EXPECT_EQ(count(), "12345 matches, the first 10000 are listed");
}

TEST_F(SearchPaneTest, KeysLeadThroughTheResultsAndEndTheSearch)
{
    type("lamp");
    pane().setResultsShown(true);
    press(GDK_KEY_F3);
    press(GDK_KEY_F3, GDK_SHIFT_MASK);
    EXPECT_TRUE(press(GDK_KEY_Escape));
    ASSERT_TRUE(waitForDone(4));
    EXPECT_EQ(done, (Lines { "find lamp", "next", "previous", "end" }));
}

TEST_F(SearchPaneTest, WithoutASearchEscapeIsForOthers)
{
    EXPECT_FALSE(press(GDK_KEY_Escape));
}

TEST_F(SearchPaneTest, AResultIsChosenFromTheList)
{
    pane().setResultsShown(true);
    pane().addChapter("One");
    pane().addResults({ result("a"), result("b") });
    auto& list = widget<Gtk::ListView>("resultList");
    g_signal_emit_by_name(list.gobj(), "activate", 0u);
    g_signal_emit_by_name(list.gobj(), "activate", 2u);
    ASSERT_TRUE(waitForDone(1));
    settle();
    EXPECT_EQ(done, Lines { "result 1" });
}

TEST_F(SearchPaneTest, TakesAThousandResultsAndForgetsThem)
{
    pane().setResultsShown(true);
    pane().addChapter("One");
    pane().addResults(std::vector<FoundText>(1000, result("a")));
    pane().selectResult(999);
    EXPECT_EQ(rows(), 1001u);
    pane().removeAllResults();
    EXPECT_EQ(rows(), 0u);
    pane().selectResult(3);
}

TEST_F(SearchPaneTest, MakesTheRowsOfManyResultsInParts)
{
    pane().setResultsShown(true);
    pane().addChapter("One");
    pane().addResults(std::vector<FoundText>(1000, result("a")));
    EXPECT_LT(rows(), 100u);
    ASSERT_TRUE(waitUntil([this] { return rows() == 1001; }));
}

TEST_F(SearchPaneTest, TheWayBackHasAButtonOnceThereIsOne)
{
    auto& button = widget<Gtk::Button>("backButton");
    EXPECT_FALSE(button.get_visible());
    epub->setHistory(true, false);
    EXPECT_TRUE(button.get_visible());
    EXPECT_TRUE(button.get_sensitive());
    g_signal_emit_by_name(button.gobj(), "clicked");
    press(GDK_KEY_Left, GDK_ALT_MASK);
    press(GDK_KEY_Right, GDK_ALT_MASK);
    ASSERT_TRUE(waitForDone(3));
    EXPECT_EQ(done, (Lines { "back", "back", "on" }));
    epub->setHistory(false, true);
    EXPECT_TRUE(button.get_visible());
    EXPECT_FALSE(button.get_sensitive());
    epub->setHistory(false, false);
    EXPECT_FALSE(button.get_visible());
}

}
