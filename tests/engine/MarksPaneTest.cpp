// The list of marks, the bar of a mark and the signs over the page in a reader window.

#include "base/Path.hpp"
#include "files/Files.hpp"
#include "notebook/gtk/MarkRow.hpp"
#include "tests/engine/ReaderWindowTest.hpp"
#include "tests/engine/ShownFileChooser.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gdkmm/clipboard.h>

namespace pagora::test {

namespace {

using Kind = MarkLine::Kind;

class MarksPaneTest : public ReaderWindowTest {
protected:
    MarksPaneTest()
    {
        makeEpubWindow();
        MarkActions actions;
        actions.toggleBookmark = [this] { done.push_back("bookmark"); };
        actions.highlight = [this](const std::string& color) { done.push_back("highlight " + color); };
        actions.annotate = [this] { done.push_back("annotate"); };
        actions.goTo = [this](std::size_t mark) { done.push_back("go to " + std::to_string(mark)); };
        actions.edit = [this](std::size_t mark) { done.push_back("edit " + std::to_string(mark)); };
        actions.remove = [this](std::size_t mark) { done.push_back("remove " + std::to_string(mark)); };
        actions.setColor = [this](std::size_t mark, const std::string& color) {
            done.push_back("color " + std::to_string(mark) + " " + color);
        };
        actions.setNote = [this](std::size_t mark, const std::string& note) {
            done.push_back("note " + std::to_string(mark) + " " + note);
        };
        actions.undo = [this] { done.push_back("undo"); };
        actions.choose = [this](const MarksChoice& choice) {
            done.push_back("choose '" + choice.text + "' "
                + (choice.kind ? "kind " + std::to_string(static_cast<int>(*choice.kind)) : "all") + " " + choice.color
                + (choice.tag.empty() ? "" : " tag " + choice.tag));
        };
        actions.exportTo = [this](const std::string& path) { done.push_back("export " + lastPathComponent(path)); };
        actions.copy = [this] { done.push_back("copy"); };
        actions.importFrom = [this](const std::string& path) { done.push_back("import " + lastPathComponent(path)); };
        epub->setMarkActions(std::move(actions));
        epub->window().setFrame({ 0, 0, 1100, 700 });
        epub->window().makeKeyAndOrderFront();
    }

    MarksPaneGtk& pane() { return epub->marksPane(); }
    void list(std::vector<MarkLine> lines)
    {
        pane().setLines({ std::make_shared<const std::vector<MarkLine>>(std::move(lines)), 0, 0 });
    }
    void fill()
    {
        list({ { Kind::Heading, "One", {}, {}, {}, 0, false, false },
            { Kind::Highlight, "the <b>best</b> of times", {}, "pink", "first", 7, false, true },
            { Kind::Note, "the worst of times", "really?", "green", {}, 8, false, true },
            { Kind::Heading, "Two", {}, {}, {}, 0, false, false },
            { Kind::Bookmark, "after it", {}, "yellow", {}, 9, true, true } });
    }
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

TEST_F(MarksPaneTest, AsksForTheMarksThatAreChosen)
{
    pane().filter().set_text("worst");
    pane().kinds().set_selected(1);
    pane().kinds().set_selected(9);
    ASSERT_TRUE(waitForDone(3));
    EXPECT_EQ(done, (Lines { "choose 'worst' all ", "choose 'worst' kind 1 ", "choose 'worst' all green" }));
}

TEST_F(MarksPaneTest, AsksForTheMarksWithATagOnceAMarkHasOne)
{
    list({ { Kind::Heading, "One", {}, {}, {}, 0, false, false },
        { Kind::Bookmark, "after it", {}, "yellow", {}, 9, false, true } });
    EXPECT_FALSE(pane().tag().get_visible());
    list({ { Kind::Heading, "One", {}, {}, {}, 0, false, false },
        { Kind::Highlight, "the best of times", {}, "pink", "sea, wind", 7, false, true } });
    EXPECT_TRUE(pane().tag().get_visible());
    pane().tag().set_text("sea");
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "choose '' all  tag sea" });
    // So that the tag can be deleted.
    list({});
    EXPECT_TRUE(pane().tag().get_visible());
}

TEST_F(MarksPaneTest, MakesRowsForTheMarksThatAreSeenOnly)
{
    std::vector<MarkLine> many(100'000, { Kind::Highlight, "text", {}, "pink", {}, 7, false, true });
    list(many);
    pane().setShown(true);
    ASSERT_TRUE(waitUntil([this] { return pane().list().get_mapped() && pane().model().itemsMade() > 0; }));
    settle();
    EXPECT_LT(pane().model().itemsMade(), 2'000u);
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
    EXPECT_EQ(spokenMark(pane().lines()[1]), "Highlight, Pink: \u2068the <b>best</b> of times\u2069");
    EXPECT_EQ(spokenMark(pane().lines()[2]), "Note: \u2068really?\u2069. On: \u2068the worst of times\u2069");
    EXPECT_EQ(spokenMark(pane().lines()[4]), "Bookmark: \u2068after it\u2069");
}

TEST_F(MarksPaneTest, ShowsWhatTurnsTheDirectionRoundAsASign)
{
    MarkRow row;
    row.show({ Kind::Note, "txt.\u202Eexe", "a\u2067b\u0007", "pink", {}, 7, false, true });
    const auto shown = [](Gtk::Widget* child) { return dynamic_cast<Gtk::Label&>(*child).get_text(); };
    EXPECT_EQ(shown(row.get_first_child()), "txt.\uFFFDexe");
    EXPECT_EQ(shown(row.get_last_child()), "a\uFFFDb\uFFFD");
}

TEST_F(MarksPaneTest, KeysOfTheReaderSetMarksAndShowTheList)
{
    fill();
    constexpr auto control = GDK_CONTROL_MASK;
    EXPECT_TRUE(press(GDK_KEY_d, control));
    EXPECT_TRUE(press(GDK_KEY_h, control));
    EXPECT_TRUE(press(GDK_KEY_m, control));
    ASSERT_TRUE(waitForDone(3));
    EXPECT_EQ(done, (Lines { "bookmark", "highlight yellow", "annotate" }));
    epub->mainSplitView().setSubviewHidden(0, false);
    EXPECT_TRUE(press(GDK_KEY_l, control));
    ASSERT_TRUE(waitUntil([this] {
        const auto* const focus = window().get_focus();
        return focus && (focus == &pane().list() || focus->is_ancestor(pane().list()));
    }));
    EXPECT_TRUE(pane().list().get_mapped());
}

TEST_F(MarksPaneTest, KeysOfTheListEditAndRemoveTheMarkThatIsSelected)
{
    fill();
    pane().setShown(true);
    pane().list().get_model()->select_item(2, true);
    EXPECT_TRUE(ToolkitTest::press(static_cast<gpointer>(pane().list().gobj()), GDK_KEY_F2));
    EXPECT_TRUE(ToolkitTest::press(static_cast<gpointer>(pane().list().gobj()), GDK_KEY_Delete));
    ASSERT_TRUE(waitForDone(2));
    EXPECT_TRUE(ToolkitTest::press(static_cast<gpointer>(pane().list().gobj()), GDK_KEY_Return));
    ASSERT_TRUE(waitForDone(3));
    EXPECT_EQ(done, (Lines { "edit 8", "remove 8", "go to 8" }));
}

TEST_F(MarksPaneTest, MarksOfTheMakersAreNeitherEditedNorRemoved)
{
    list({ { Kind::Heading, "From the makers", {}, {}, {}, 0, false, false },
        { Kind::Highlight, "text", {}, "pink", {}, 7, false, false } });
    pane().setShown(true);
    pane().list().get_model()->select_item(1, true);
    EXPECT_FALSE(ToolkitTest::press(static_cast<gpointer>(pane().list().gobj()), GDK_KEY_F2));
    EXPECT_FALSE(ToolkitTest::press(static_cast<gpointer>(pane().list().gobj()), GDK_KEY_Delete));
}

TEST_F(MarksPaneTest, MenuOfTheListCopies)
{
    fill();
    pane().setShown(true);
    EXPECT_TRUE(pane().menu().activate_action("marks.copy"));
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "copy" });
}

TEST_F(MarksPaneTest, MenuOfTheListAsksForTheFileOfAnExport)
{
    const TemporaryFolder folder;
    pane().setShown(true);
    EXPECT_TRUE(pane().menu().activate_action("marks.export"));
    ASSERT_TRUE(waitUntil([] { return shownFileChooser() != nullptr; }));
    auto* const chooser = shownFileChooser();
    EXPECT_EQ(gtk_file_chooser_get_action(chooser), GTK_FILE_CHOOSER_ACTION_SAVE);
    g_autofree char* name = gtk_file_chooser_get_current_name(chooser);
    EXPECT_STREQ(name, "Marks.md");
    // If the dialog gets another folder while it reads its first one, it shows the parent of the first.
    ASSERT_TRUE(waitUntil([&] {
        g_autoptr(GFile) first = gtk_file_chooser_get_current_folder(chooser);
        return first != nullptr;
    }));
    g_autoptr(GFile) inFolder = g_file_new_for_path(folder.path().c_str());
    gtk_file_chooser_set_current_folder(chooser, inFolder, nullptr);
    ASSERT_TRUE(waitUntil([&] {
        g_autoptr(GFile) file = gtk_file_chooser_get_file(chooser);
        return file && std::string(g_file_peek_path(file)) == folder.path("Marks.md");
    }));
    gtk_dialog_response(GTK_DIALOG(chooser), GTK_RESPONSE_ACCEPT);
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "export Marks.md" });
    ASSERT_TRUE(waitUntil([] { return shownFileChooser() == nullptr; }));
}

TEST_F(MarksPaneTest, MenuOfTheListAsksForTheFileOfAnImport)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(writeFile(folder.path("Sea.annotation"), "{}"));
    pane().setShown(true);
    EXPECT_TRUE(pane().menu().activate_action("marks.import"));
    ASSERT_TRUE(waitUntil([] { return shownFileChooser() != nullptr; }));
    auto* const chooser = shownFileChooser();
    EXPECT_EQ(gtk_file_chooser_get_action(chooser), GTK_FILE_CHOOSER_ACTION_OPEN);
    g_autoptr(GFile) file = g_file_new_for_path(folder.path("Sea.annotation").c_str());
    gtk_file_chooser_set_file(chooser, file, nullptr);
    // The file is selected when the folder has been read.
    ASSERT_TRUE(waitUntil([&] {
        g_autoptr(GListModel) files = gtk_file_chooser_get_files(chooser);
        return g_list_model_get_n_items(files) == 1;
    }));
    gtk_dialog_response(GTK_DIALOG(chooser), GTK_RESPONSE_ACCEPT);
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "import Sea.annotation" });
}

TEST_F(MarksPaneTest, ContentsThatAreMissingAreNotNamedBesideTheList)
{
    auto& contents = widget<Gtk::Box>("contentsPane");
    const auto isSaid = [&contents] {
        for (auto* child = contents.get_first_child(); child; child = child->get_next_sibling()) {
            if (child->has_css_class("no-contents"))
                return child->get_visible();
        }
        return false;
    };
    epub->parts().surroundings.setHasContents(false);
    EXPECT_TRUE(isSaid());
    pane().setShown(true);
    EXPECT_FALSE(isSaid());
    pane().setShown(false);
    EXPECT_TRUE(isSaid());
    epub->searchPane().setResultsShown(true);
    EXPECT_FALSE(isSaid());
}

TEST_F(MarksPaneTest, ButtonsOfTheBarCopyAndRemove)
{
    epub->showMark({ 7, "pink", "best", "before", false }, Rect { 100, 100, 50, 20 });
    auto& bar = epub->markEditor().popover();
    ASSERT_TRUE(waitUntil([&bar] { return bar.get_mapped(); }));
    std::vector<Gtk::Button*> buttons;
    const std::function<void(Gtk::Widget&)> collect = [&](Gtk::Widget& parent) {
        auto* const button = dynamic_cast<Gtk::Button*>(&parent);
        if (button && !dynamic_cast<Gtk::ToggleButton*>(button))
            buttons.push_back(button);
        for (auto* child = parent.get_first_child(); child; child = child->get_next_sibling())
            collect(*child);
    };
    collect(bar);
    ASSERT_EQ(buttons.size(), 2u);
    g_signal_emit_by_name(buttons[0]->gobj(), "clicked");
    ASSERT_TRUE(waitUntil([&bar] { return !bar.get_mapped(); }));
    std::optional<Glib::ustring> copied;
    const auto clipboard = window().get_clipboard();
    clipboard->read_text_async(
        [&](Glib::RefPtr<Gio::AsyncResult>& result) { copied = clipboard->read_text_finish(result); });
    ASSERT_TRUE(waitUntil([&copied] { return copied.has_value(); }));
    EXPECT_EQ(*copied, "best\n\nbefore");
    epub->showMark({ 7, "pink", "best", "before", true }, Rect { 100, 100, 50, 20 });
    ASSERT_TRUE(waitUntil([&bar] { return bar.get_mapped(); }));
    epub->markEditor().note().get_buffer()->set_text("typed");
    g_signal_emit_by_name(buttons[1]->gobj(), "clicked");
    ASSERT_TRUE(waitForDone(1));
    settle();
    EXPECT_EQ(done, Lines { "remove 7" });
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
