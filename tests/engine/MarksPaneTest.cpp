// The list of marks, the bar of a mark and the signs over the page in a reader window.

#include "notebook/gtk/MarkRow.hpp"
#include "tests/engine/ReaderWindowTest.hpp"

namespace pagora::test {

namespace {

using Kind = MarkLine::Kind;

class MarksPaneTest : public ReaderWindowTest {
protected:
    MarksPaneTest()
    {
        makeEpubWindow();
        ReaderWindowActions actions;
        actions.toggleBookmark = [this] { done.push_back("bookmark"); };
        actions.highlight = [this](const std::string& color) { done.push_back("highlight " + color); };
        actions.annotate = [this] { done.push_back("annotate"); };
        actions.goToMark = [this](std::size_t mark) { done.push_back("go to " + std::to_string(mark)); };
        actions.editMark = [this](std::size_t mark) { done.push_back("edit " + std::to_string(mark)); };
        actions.removeMark = [this](std::size_t mark) { done.push_back("remove " + std::to_string(mark)); };
        actions.setMarkColor = [this](std::size_t mark, const std::string& color) {
            done.push_back("color " + std::to_string(mark) + " " + color);
        };
        actions.setMarkNote = [this](std::size_t mark, const std::string& note) {
            done.push_back("note " + std::to_string(mark) + " " + note);
        };
        actions.undoRemoval = [this] { done.push_back("undo"); };
        epub->setActions(std::move(actions));
        epub->window().setFrame({ 0, 0, 1100, 700 });
        epub->window().makeKeyAndOrderFront();
    }

    MarksPaneGtk& pane() { return epub->marksPane(); }
    void fill()
    {
        pane().setLines({ { Kind::Heading, "One", {}, {}, {}, 0, false, false },
            { Kind::Highlight, "the <b>best</b> of times", {}, "pink", "first", 7, false, true },
            { Kind::Note, "the worst of times", "really?", "green", {}, 8, false, true },
            { Kind::Heading, "Two", {}, {}, {}, 0, false, false },
            { Kind::Bookmark, "after it", {}, "yellow", {}, 9, true, true } });
    }
    std::vector<std::string> listed()
    {
        std::vector<std::string> texts;
        for (const auto& line : pane().lines())
            texts.push_back(line.text);
        return texts;
    }
    using Texts = std::vector<std::string>;
};

}

TEST_F(MarksPaneTest, IsShownInThePlaceOfTheContents)
{
    EXPECT_TRUE(widget<Gtk::Widget>("tocClip").get_visible());
    EXPECT_FALSE(pane().list().get_mapped());
    pane().setShown(true);
    EXPECT_FALSE(widget<Gtk::Widget>("tocClip").get_visible());
    ASSERT_TRUE(waitUntil([this] { return pane().list().get_mapped(); }));
    pane().setShown(false);
    EXPECT_TRUE(widget<Gtk::Widget>("tocClip").get_visible());
}

TEST_F(MarksPaneTest, GivesWayToTheResultsOfASearchAndComesBack)
{
    pane().setShown(true);
    epub->searchPane().setResultsShown(true);
    EXPECT_FALSE(widget<Gtk::Widget>("tocClip").get_visible());
    ASSERT_TRUE(waitUntil([this] { return !pane().list().get_mapped(); }));
    epub->searchPane().setResultsShown(false);
    EXPECT_FALSE(widget<Gtk::Widget>("tocClip").get_visible());
    ASSERT_TRUE(waitUntil([this] { return pane().list().get_mapped(); }));
}

TEST_F(MarksPaneTest, ListsTheMarksThatPassTheFilter)
{
    fill();
    EXPECT_EQ(listed().size(), 5u);
    pane().filter().set_text("WORST");
    EXPECT_EQ(listed(), (Texts { "One", "the worst of times" }));
    pane().filter().set_text("really");
    EXPECT_EQ(listed(), (Texts { "One", "the worst of times" }));
    pane().filter().set_text("first");
    EXPECT_EQ(listed(), (Texts { "One", "the <b>best</b> of times" }));
    pane().filter().set_text("");
    pane().kinds().set_selected(1);
    EXPECT_EQ(listed(), (Texts { "Two", "after it" }));
    pane().kinds().set_selected(9);
    EXPECT_EQ(listed(), (Texts { "One", "the worst of times" }));
    pane().filter().set_text("nothing");
    EXPECT_TRUE(listed().empty());
}

TEST_F(MarksPaneTest, ChosenMarkIsShown)
{
    fill();
    pane().setShown(true);
    g_signal_emit_by_name(pane().list().gobj(), "activate", 0u);
    g_signal_emit_by_name(pane().list().gobj(), "activate", 2u);
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "go to 8" });
}

TEST_F(MarksPaneTest, TellsAssistiveTechnologyWhatAMarkIs)
{
    fill();
    EXPECT_EQ(spokenMark(pane().lines()[1]), "Highlight, Pink: the <b>best</b> of times");
    EXPECT_EQ(spokenMark(pane().lines()[2]), "Note: really?. On: the worst of times");
    EXPECT_EQ(spokenMark(pane().lines()[4]), "Bookmark: after it");
}

TEST_F(MarksPaneTest, ColorAndNoteAreChangedInTheBarOfAMark)
{
    epub->showMark({ 7, "pink", "best", "before", true }, Rect { 100, 100, 50, 20 });
    ASSERT_TRUE(waitUntil([this] { return epub->markEditor().popover().get_mapped(); }));
    std::vector<Gtk::ToggleButton*> buttons;
    const std::function<void(Gtk::Widget&)> collect = [&](Gtk::Widget& parent) {
        if (auto* const button = dynamic_cast<Gtk::ToggleButton*>(&parent))
            buttons.push_back(button);
        for (auto* child = parent.get_first_child(); child; child = child->get_next_sibling())
            collect(*child);
    };
    collect(epub->markEditor().popover());
    ASSERT_EQ(buttons.size(), 6u);
    EXPECT_TRUE(buttons[2]->get_active());
    buttons[4]->set_active(true);
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done.back(), "color 7 blue");
    epub->markEditor().note().get_buffer()->set_text("after");
    epub->markEditor().popover().popdown();
    ASSERT_TRUE(waitForDone(2));
    EXPECT_EQ(done.back(), "note 7 after");
}

TEST_F(MarksPaneTest, OffersToBringBackWhatWasRemoved)
{
    EXPECT_EQ(epub->markSigns().line(), "");
    epub->offerUndo("Highlight removed");
    EXPECT_EQ(epub->markSigns().line(), "Highlight removed");
    g_signal_emit_by_name(epub->markSigns().undoButton().gobj(), "clicked");
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "undo" });
    epub->offerUndo("");
    EXPECT_EQ(epub->markSigns().line(), "");
}

TEST_F(MarksPaneTest, RibbonShowsThatThePageHasABookmark)
{
    EXPECT_FALSE(epub->markSigns().ribbon().get_visible());
    epub->setBookmarked(true);
    EXPECT_TRUE(epub->markSigns().ribbon().get_visible());
}

}
