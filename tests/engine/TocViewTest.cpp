#include "contents/ContentsPane.hpp"
#include "contents/gtk/TocViewGtk.hpp"
#include "desktop/gtk/StyleSheet.hpp"
#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/gestureclick.h>
#include <gtkmm/settings.h>
#include <gtkmm/window.h>

namespace pagora::test {

namespace {

struct OpenedChapters : ContentsDelegate {
    void changeChapter(const Url& url) override { urls.push_back(url.text()); }
    std::vector<std::string> urls;
};

// A contents pane in a window, 300 points high.
class TocViewTest : public ToolkitTest {
protected:
    TocViewTest()
    {
        addStyleSheet("reader.css");
        clip.add_css_class("contents-pane");
        clip.set_child(list);
        clip.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
        clip.set_size_request(240, 300);
        clip.set_valign(Gtk::Align::START);
        window.set_child(clip);
        window.present();
    }

    // `withoutText` is the index of an entry without a link.
    void load(int count, int withoutText = -1)
    {
        std::vector<ContentsEntry> entries;
        for (int i = 0; i < count; ++i) {
            ContentsEntry entry { "Chapter " + std::to_string(i), Url::file("/b/" + std::to_string(i)), 1 };
            if (i == withoutText)
                entry.text.reset();
            entries.push_back(entry);
        }
        pane.loadTOC(entries);
    }

    bool isLaidOut()
    {
        const double rows = static_cast<double>(pane.tocContentHeight());
        return waitUntil([&] {
            return clip.get_vadjustment()->get_page_size() == 300 && clip.get_vadjustment()->get_upper() >= rows
                && toc.numberOfRows() > 0;
        });
    }

    double scrolled() { return clip.get_vadjustment()->get_value(); }

    void press(double y)
    {
        g_autoptr(GListModel) controllers = gtk_widget_observe_controllers(GTK_WIDGET(list.gobj()));
        for (guint i = 0; i < g_list_model_get_n_items(controllers); ++i) {
            g_autoptr(GtkEventController) each = GTK_EVENT_CONTROLLER(g_list_model_get_item(controllers, i));
            if (GTK_IS_GESTURE_CLICK(each) && gtk_event_controller_get_propagation_phase(each) == GTK_PHASE_CAPTURE)
                g_signal_emit_by_name(each, "pressed", 1, 10.0, y);
        }
    }

    // Sends a key to the list. Returns whether the list handled it.
    bool type(guint keyval)
    {
        gboolean taken = FALSE;
        g_autoptr(GListModel) controllers = gtk_widget_observe_controllers(GTK_WIDGET(list.gobj()));
        for (guint i = 0; i < g_list_model_get_n_items(controllers) && !taken; ++i) {
            g_autoptr(GtkEventController) each = GTK_EVENT_CONTROLLER(g_list_model_get_item(controllers, i));
            if (GTK_IS_EVENT_CONTROLLER_KEY(each)
                && gtk_event_controller_get_propagation_phase(each) == GTK_PHASE_CAPTURE)
                g_signal_emit_by_name(each, "key-pressed", keyval, 0u, GdkModifierType(0), &taken);
        }
        return taken;
    }
    // Activates the focused row and returns its title.
    std::string openedByEnter()
    {
        const auto before = chapters.urls.size();
        type(GDK_KEY_Return);
        return waitUntil([&] { return chapters.urls.size() > before; }) ? chapters.urls.back() : "";
    }
    void loadTitles(const std::vector<std::string>& titles)
    {
        std::vector<ContentsEntry> entries;
        for (const auto& title : titles)
            entries.push_back({ title, Url::file("/b/" + title), 1 });
        pane.loadTOC(entries);
    }

    Gtk::Window window;
    Gtk::ScrolledWindow clip;
    Gtk::ListView list;
    ActionQueue queue;
    OpenedChapters chapters;
    TocViewGtk toc { list, clip, queue };
    ContentsPane pane { toc, chapters };
};

}

TEST_F(TocViewTest, LongListIsAsHighAsItsLinks)
{
    load(50);
    EXPECT_EQ(toc.frame().height, 1000);
}

TEST_F(TocViewTest, LongListStartsAtItsTop)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    EXPECT_EQ(scrolled(), 0);
    EXPECT_EQ(toc.linkAt(1)->tag(), 0);
}

TEST_F(TocViewTest, LinksLieOneBelowTheOther)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    EXPECT_EQ(toc.linkAt(19)->tag(), 0);
    EXPECT_EQ(toc.linkAt(20)->tag(), 1);
    EXPECT_EQ(toc.linkAt(119)->tag(), 5);
}

TEST_F(TocViewTest, LinksAreShownWholeOnHover)
{
    load(3, 1);
    ASSERT_TRUE(isLaidOut());
    auto* const first = list.get_first_child();
    EXPECT_TRUE(showsTooltip(*first->get_first_child()));
    EXPECT_FALSE(showsTooltip(*first->get_next_sibling()->get_first_child()));
}

TEST_F(TocViewTest, LinksGrowWhereTheDesktopEnlargesText)
{
    const auto settings = Gtk::Settings::get_default();
    const int before = settings->property_gtk_xft_dpi();
    settings->property_gtk_xft_dpi() = 96 * 1024 * 3 / 2;
    load(50);
    EXPECT_TRUE(waitUntil([&] { return isLaidOut() && clip.get_vadjustment()->get_upper() == 1500; }));
    EXPECT_EQ(toc.frame().height, 1000);
    EXPECT_EQ(toc.clipHeight(), 200);
    EXPECT_EQ(toc.linkAt(29)->tag(), 0);
    EXPECT_EQ(toc.linkAt(30)->tag(), 1);
    toc.scrollToPoint(0, 400);
    EXPECT_EQ(scrolled(), (1000 - 400) * 1.5 - 300);
    settings->property_gtk_xft_dpi() = before;
}

TEST_F(TocViewTest, ThereIsNoLinkBelowTheLast)
{
    load(3);
    ASSERT_TRUE(isLaidOut());
    EXPECT_EQ(toc.linkAt(60), nullptr);
}

TEST_F(TocViewTest, EntryWithoutTextLeavesItsPlaceEmpty)
{
    load(3, 1);
    ASSERT_TRUE(isLaidOut());
    EXPECT_EQ(toc.linkAt(30), nullptr);
    EXPECT_EQ(toc.linkAt(50)->tag(), 2);
}

TEST_F(TocViewTest, PointGoesToTheBottomLeftOfTheVisibleArea)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    toc.scrollToPoint(0, 400);
    EXPECT_EQ(scrolled(), 1000 - 400 - 300);
}

TEST_F(TocViewTest, PointBeyondTheEndsScrollsToTheEnds)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    toc.scrollToPoint(0, -500);
    EXPECT_EQ(scrolled(), 700);
    toc.scrollToPoint(0, 5000);
    EXPECT_EQ(scrolled(), 0);
}

TEST_F(TocViewTest, PointSetBeforeTheListIsLaidOutIsReachedThen)
{
    load(50);
    toc.scrollToPoint(0, 400);
    ASSERT_TRUE(isLaidOut());
    EXPECT_TRUE(waitUntil([&] { return scrolled() == 300; }));
}

TEST_F(TocViewTest, ActiveLinkIsBroughtTowardTheMiddle)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    pane.updateTOClinkWithKey("25", 300);
    // The entry's lower edge is at 480 from the bottom; the bottom of the visible part is half the height below it.
    EXPECT_EQ(scrolled(), 1000 - (480 - 150) - 300);
}

TEST_F(TocViewTest, OnlyRowsNearTheVisibleAreaAreMade)
{
    load(5000);
    ASSERT_TRUE(isLaidOut());
    EXPECT_LT(toc.numberOfRows(), 500u);
}

TEST_F(TocViewTest, PressedLinkOpensItsChapterFromTheMainLoop)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    press(45);
    EXPECT_TRUE(chapters.urls.empty());
    EXPECT_TRUE(waitUntil([&] { return !chapters.urls.empty(); }));
    EXPECT_EQ(chapters.urls, std::vector<std::string> { "file:///b/2" });
    EXPECT_TRUE(pane.links()[2]->isActive());
}

TEST_F(TocViewTest, PressOnAListThatIsGoneOpensNothing)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    press(45);
    pane.removeAllLinks();
    load(50);
    settle();
    EXPECT_TRUE(chapters.urls.empty());
}

TEST_F(TocViewTest, OnlyThePrimaryButtonOpensLinks)
{
    g_autoptr(GListModel) controllers = gtk_widget_observe_controllers(GTK_WIDGET(list.gobj()));
    int clicks = 0;
    for (guint i = 0; i < g_list_model_get_n_items(controllers); ++i) {
        g_autoptr(GObject) each = G_OBJECT(g_list_model_get_item(controllers, i));
        if (!GTK_IS_GESTURE_CLICK(each))
            continue;
        ++clicks;
        EXPECT_EQ(gtk_gesture_single_get_button(GTK_GESTURE_SINGLE(each)), guint(GDK_BUTTON_PRIMARY));
    }
    EXPECT_EQ(clicks, 1);
}

TEST_F(TocViewTest, RowsAreListItemsAndWhatTheyHoldIsNot)
{
    load(3);
    ASSERT_TRUE(isLaidOut());
    auto* const item = gtk_widget_get_first_child(GTK_WIDGET(list.gobj()));
    EXPECT_EQ(gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(item)), GTK_ACCESSIBLE_ROLE_LIST_ITEM);
    auto* const row = gtk_widget_get_first_child(item);
    EXPECT_EQ(gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(row)), GTK_ACCESSIBLE_ROLE_PRESENTATION);
}

TEST_F(TocViewTest, EnterOpensTheLinkThatHasTheFocus)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    list.grab_focus();
    settle();
    EXPECT_EQ(openedByEnter(), "file:///b/0");
}

TEST_F(TocViewTest, TheKeyboardComesInAtTheChapterThatIsRead)
{
    load(5000);
    ASSERT_TRUE(isLaidOut());
    pane.updateTOClinkWithKey("4000", 300);
    // Waits until a row has the focus, not the list.
    const auto rowHasFocus = [&] { return window.get_focus() && window.get_focus()->get_parent() == &list; };
    ASSERT_TRUE(waitUntil([&] { return list.grab_focus() && rowHasFocus(); }));
    settle();
    EXPECT_EQ(openedByEnter(), "file:///b/4000");
}

TEST_F(TocViewTest, TypingLeadsToTheNextLinkThatBeginsSo)
{
    loadTitles({ "Preface", "The Lamp", "The lantern", "Élan", "The Sea" });
    ASSERT_TRUE(isLaidOut());
    list.grab_focus();
    settle();
    for (const char character : std::string("the l"))
        EXPECT_TRUE(type(gdk_unicode_to_keyval(static_cast<guint32>(character))));
    EXPECT_EQ(openedByEnter(), Url::file("/b/The Lamp").text());
}

TEST_F(TocViewTest, TypingOnLeavesTheFocusWhereItFits)
{
    loadTitles({ "Preface", "The Lamp", "The lantern", "Élan", "The Sea" });
    ASSERT_TRUE(isLaidOut());
    list.grab_focus();
    settle();
    for (const char character : std::string("the lan"))
        type(gdk_unicode_to_keyval(static_cast<guint32>(character)));
    EXPECT_EQ(openedByEnter(), Url::file("/b/The lantern").text());
}

TEST_F(TocViewTest, TypingReachesLinksFarBelow)
{
    std::vector<std::string> titles(5000, "Chapter");
    titles[4321] = "Wanted";
    loadTitles(titles);
    ASSERT_TRUE(isLaidOut());
    list.grab_focus();
    settle();
    type(GDK_KEY_w);
    EXPECT_EQ(openedByEnter(), Url::file("/b/Wanted").text());
}

TEST_F(TocViewTest, KeysThatMoveTheFocusAreLeftToTheList)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    list.grab_focus();
    settle();
    for (const guint key : { GDK_KEY_Up, GDK_KEY_Down, GDK_KEY_Home, GDK_KEY_End, GDK_KEY_Page_Down, GDK_KEY_Tab })
        EXPECT_FALSE(type(key)) << gdk_keyval_name(key);
}

TEST_F(TocViewTest, RowsShowTheLinksOfTheNewList)
{
    load(50);
    ASSERT_TRUE(isLaidOut());
    pane.removeAllLinks();
    load(2);
    EXPECT_TRUE(waitUntil([&] { return toc.numberOfRows() == 2; }));
}

}
