#include "tests/engine/ReaderWindowTest.hpp"

#include "fixed/gtk/FixedWindowGtk.hpp"

namespace pagora::test {

TEST_F(ReaderWindowTest, ActionsRunFromTheMainLoopInTheOrderOfTheKeys)
{
    makeEpubWindow();
    epub->window().orderFront();
    area.grab_focus();
    EXPECT_TRUE(press(GDK_KEY_Right));
    press(GDK_KEY_Left);
    press(GDK_KEY_space);
    press(GDK_KEY_space, GDK_SHIFT_MASK);
    press(GDK_KEY_Home);
    press(GDK_KEY_End);
    EXPECT_TRUE(done.empty());
    ASSERT_TRUE(waitForDone(6));
    EXPECT_EQ(done, (Lines { "page 1", "page 0", "page 1", "page 0", "first", "last" }));
}

TEST_F(ReaderWindowTest, AWindowWhoseWidgetsWereMadeAheadIsThatWindow)
{
    ReaderLayout layout(EpubWindowGtk::layoutName);
    const auto* const ahead = &layout.content();
    EXPECT_FALSE(ahead->get_parent());
    epub = std::make_unique<EpubWindowGtk>(toplevel, makePage(), std::move(layout));
    epub->window().makeKeyAndOrderFront();
    EXPECT_TRUE(ahead->is_ancestor(window()));
    int turned = 0;
    ReaderWindowActions actions;
    actions.changePage = [&turned](int) { ++turned; };
    epub->setActions(std::move(actions));
    press(GDK_KEY_Right);
    EXPECT_TRUE(waitUntil([&] { return turned == 1; }));
}

TEST_F(ReaderWindowTest, WidgetsThatWereMadeAheadInVainGo)
{
    gpointer content = nullptr;
    {
        const ReaderLayout layout(EpubWindowGtk::layoutName);
        content = layout.content().gobj();
        g_object_add_weak_pointer(G_OBJECT(content), &content);
        EXPECT_TRUE(content);
    }
    EXPECT_FALSE(content);
}

TEST_F(ReaderWindowTest, WidgetsOfAWindowGoWithIt)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&] { return area.get_width() > 0; }));
    gpointer content = widget<Gtk::Widget>("stage").gobj();
    g_object_add_weak_pointer(G_OBJECT(content), &content);
    Gtk::Box library;
    SharedWindow another(toplevel, library);
    another.orderFront();
    epub.reset();
    EXPECT_TRUE(waitUntil([&] { return !content; }));
}

TEST_F(ReaderWindowTest, NothingIsDoneAfterTheWindowClosed)
{
    makeEpubWindow();
    press(GDK_KEY_w, GDK_CONTROL_MASK);
    press(GDK_KEY_Right);
    ASSERT_TRUE(waitForDone(1));
    settle();
    EXPECT_EQ(done, Lines { "close" });
    EXPECT_FALSE(epub);
}

TEST_F(ReaderWindowTest, KeysCountWhileTheDisplayOptionsAreOpen)
{
    makeEpubWindow();
    auto& panel = widget<Gtk::Popover>("displayOptions");
    EXPECT_TRUE(ToolkitTest::press(panel.gobj(), GDK_KEY_F11));
    EXPECT_TRUE(ToolkitTest::press(panel.gobj(), GDK_KEY_w, GDK_CONTROL_MASK));
    ASSERT_TRUE(waitForDone(2));
    EXPECT_EQ(done, (Lines { "full screen", "close" }));
}

TEST_F(ReaderWindowTest, DisplayOptionsCloseWithTheTitleBar)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    auto& panel = widget<Gtk::Popover>("displayOptions");
    ASSERT_TRUE(waitUntil([&] { return widget<Gtk::Button>("displayOptionsButton").get_mapped(); }));
    epub->displayOptions().makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&] { return panel.get_mapped(); }));
    widget<Gtk::Widget>("headerBar").set_visible(false);
    EXPECT_FALSE(epub->displayOptions().isVisible());
    EXPECT_FALSE(panel.get_visible());
}

TEST_F(ReaderWindowTest, DisplayOptionsFillTheirSurfaceWhereNothingIsComposited)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&] { return widget<Gtk::Button>("displayOptionsButton").get_mapped(); }));
    epub->displayOptions().makeKeyAndOrderFront();
    auto& panel = widget<Gtk::Popover>("displayOptions");
    const auto* contents = panel.get_first_child();
    while (contents && contents->get_css_name() != "contents")
        contents = contents->get_next_sibling();
    ASSERT_TRUE(contents);
    ASSERT_TRUE(waitUntil([&] { return contents->get_width() > 0; }));
    graphene_rect_t bounds;
    ASSERT_TRUE(gtk_widget_compute_bounds(const_cast<GtkWidget*>(contents->gobj()), GTK_WIDGET(panel.gobj()), &bounds));
    const auto surface = static_cast<float>(panel.get_surface()->get_width());
    constexpr float borders = 2;
    EXPECT_EQ(bounds.size.width + borders >= surface, !panel.get_display()->is_composited())
        << bounds.size.width << " of " << surface;
}

TEST_F(ReaderWindowTest, ActionsOfAWindowThatIsDroppedAreDropped)
{
    makeEpubWindow();
    press(GDK_KEY_Right);
    epub.reset();
    settle();
    EXPECT_TRUE(done.empty());
}

TEST_F(ReaderWindowTest, CloseButtonAsksForClosingAndLeavesTheWindowThere)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    window().close();
    EXPECT_TRUE(window().get_visible());
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "close" });
}

TEST_F(ReaderWindowTest, WindowWithRoomShowsTheContents)
{
    makeEpubWindow();
    epub->window().setFrame({ 0, 0, 1000, 700 });
    epub->window().makeKeyAndOrderFront();
    EXPECT_FALSE(epub->mainSplitView().isSubviewHidden(0));
    EXPECT_TRUE(epub->parts().header.isContentsShown());
}

TEST_F(ReaderWindowTest, NarrowWindowHidesTheContents)
{
    makeEpubWindow();
    epub->window().setFrame({ 0, 0, 999, 700 });
    epub->window().makeKeyAndOrderFront();
    EXPECT_TRUE(epub->mainSplitView().isSubviewHidden(0));
    EXPECT_FALSE(epub->parts().header.isContentsShown());
    EXPECT_TRUE(done.empty());
}

TEST_F(ReaderWindowTest, PageHasTheFocusAfterOpening)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    EXPECT_TRUE(waitUntil([&] { return webView->timesFocused > 0; }));
}

TEST_F(ReaderWindowTest, WhatHasTheKeyboardStaysMarked)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&] { return window().get_mapped(); }));
    window().set_focus_visible(true);
    // The toolkit does this after a few seconds.
    window().set_focus_visible(false);
    EXPECT_TRUE(waitUntil([&] { return window().get_focus_visible(); }));
}

TEST_F(ReaderWindowTest, PageTakesAllTheWidthWithoutContents)
{
    makeEpubWindow();
    epub->window().setFrame({ 0, 0, 900, 700 });
    epub->window().makeKeyAndOrderFront();
    EXPECT_TRUE(waitUntil(
        [&] { return area.get_width() > 0 && area.get_width() == widget<Gtk::Widget>("stage").get_width(); }));
}

TEST_F(ReaderWindowTest, SpacePressesAFocusedButton)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    widget<Gtk::Widget>("libraryButton").grab_focus();
    EXPECT_FALSE(press(GDK_KEY_space));
    EXPECT_FALSE(press(GDK_KEY_Return));
    EXPECT_TRUE(press(GDK_KEY_Right));
}

TEST_F(ReaderWindowTest, SearchFieldKeepsItsKeys)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    epub->searchField().makeFirstResponder();
    EXPECT_FALSE(press(GDK_KEY_Left));
    EXPECT_FALSE(press(GDK_KEY_space));
    EXPECT_FALSE(press(GDK_KEY_Home));
}

TEST_F(ReaderWindowTest, SliderKeepsTheArrows)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    epub->locSlider().makeFirstResponder();
    EXPECT_FALSE(press(GDK_KEY_Right));
}

TEST_F(ReaderWindowTest, SearchKeyShowsTheFieldAndEnterSearches)
{
    makeEpubWindow();
    epub->searchField().setStringValue("lamp");
    g_signal_emit_by_name(widget<Gtk::Widget>("searchField").gobj(), "activate");
    ASSERT_TRUE(waitForDone(2));
    EXPECT_EQ(done, (Lines { "find lamp", "search lamp" }));
}

TEST_F(ReaderWindowTest, TextSizeKeysMoveTheSlider)
{
    makeEpubWindow();
    std::vector<float> sizes;
    epub->fontSizeSlider().setAction([&](EventType) { sizes.push_back(epub->fontSizeSlider().floatValue()); });
    press(GDK_KEY_plus, GDK_CONTROL_MASK);
    press(GDK_KEY_minus, GDK_CONTROL_MASK);
    press(GDK_KEY_minus, GDK_CONTROL_MASK);
    press(GDK_KEY_0, GDK_CONTROL_MASK);
    ASSERT_TRUE(waitUntil([&] { return sizes.size() == 4; }));
    EXPECT_FLOAT_EQ(sizes[0], 1.2f);
    EXPECT_FLOAT_EQ(sizes[1], 1.1f);
    EXPECT_FLOAT_EQ(sizes[2], 1.0f);
    EXPECT_FLOAT_EQ(sizes[3], 1.1f);
}

TEST_F(ReaderWindowTest, APageThatIsLongOnItsWayHasASign)
{
    makeEpubWindow();
    auto& sign = widget<Gtk::Widget>("loadingSign");
    epub->setLoading(true);
    EXPECT_FALSE(sign.get_visible());
    ASSERT_TRUE(waitUntil([&] { return sign.get_visible(); }));
    epub->setLoading(false);
    ASSERT_TRUE(waitUntil([&] { return !sign.get_visible(); }));
}

TEST_F(ReaderWindowTest, TheSignIsDrawnOnce)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    auto& sign = widget<Gtk::Widget>("loadingSign");
    epub->setLoading(true);
    ASSERT_TRUE(waitUntil([&] { return sign.get_mapped(); }));
    // An animation draws frames continuously; a blinking caret at most twice a second.
    constexpr int enough = 5;
    int ticks = 0;
    int quietTicks = 0;
    int frames = 0;
    auto* const clock = gtk_widget_get_frame_clock(GTK_WIDGET(window().gobj()));
    const auto painted
        = g_signal_connect_swapped(clock, "after-paint", G_CALLBACK(+[](int* count) { ++*count; }), &frames);
    Glib::signal_timeout().connect(
        [&] {
            quietTicks = frames == 0 ? quietTicks + 1 : 0;
            frames = 0;
            return ++ticks < 200 && quietTicks < enough;
        },
        100);
    waitUntil([&] { return ticks == 200 || quietTicks == enough; });
    g_signal_handler_disconnect(clock, painted);
    EXPECT_EQ(quietTicks, enough);
}

TEST_F(ReaderWindowTest, TheSignOfOneLoadStaysForTheNext)
{
    makeEpubWindow();
    auto& sign = widget<Gtk::Widget>("loadingSign");
    epub->setLoading(true);
    ASSERT_TRUE(waitUntil([&] { return sign.get_visible(); }));
    int changes = 0;
    sign.property_visible().signal_changed().connect([&] { ++changes; });
    epub->setLoading(false);
    epub->setLoading(true);
    bool isLater = false;
    Glib::signal_idle().connect_once([&] { isLater = true; });
    ASSERT_TRUE(waitUntil([&] { return isLater; }));
    EXPECT_EQ(changes, 0);
}

TEST_F(ReaderWindowTest, DisplayOptionsAreShownAndHidden)
{
    makeEpubWindow();
    epub->window().makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&] { return area.get_mapped(); }));
    EXPECT_FALSE(epub->displayOptions().isVisible());
    epub->displayOptions().makeKeyAndOrderFront();
    EXPECT_TRUE(epub->displayOptions().isVisible());
    epub->displayOptions().orderOut();
    EXPECT_FALSE(epub->displayOptions().isVisible());
}

TEST_F(ReaderWindowTest, ButtonsSendTheirActions)
{
    makeEpubWindow();
    epub->goLeftButton().setAction([this] { done.push_back("left"); });
    for (const auto* button : { "goLeftButton", "columnsButton", "displayOptionsButton", "fullScreenButton" })
        g_signal_emit_by_name(widget<Gtk::Button>(button).gobj(), "clicked");
    ASSERT_TRUE(waitForDone(4));
    EXPECT_EQ(done, (Lines { "left", "columns", "options", "full screen" }));
}

TEST_F(ReaderWindowTest, ContentsButtonGoesBackWhereNothingWasToggled)
{
    makeEpubWindow();
    auto& button = widget<Gtk::ToggleButton>("contentsButton");
    g_signal_emit_by_name(button.gobj(), "clicked");
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "contents" });
    EXPECT_TRUE(waitUntil([&] { return button.get_active(); }));
}

TEST_F(ReaderWindowTest, FlickIsPassedOn)
{
    makeEpubWindow();
    flick(-120);
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "flick left" });
}

TEST_F(ReaderWindowTest, PageAreaIsWhiteUntilItIsFilled)
{
    makeEpubWindow();
    EXPECT_EQ(epub->parts().bgView.fillColor(), Color::white(1));
    epub->bgView().setFillColor(Color::white(0));
    EXPECT_EQ(epub->parts().bgView.fillColor(), Color::white(0));
}

TEST_F(ReaderWindowTest, TheTitleBarHasTheBooksTitleAndAuthorAndTheWindowItsOwn)
{
    makeEpubWindow();
    epub->window().setTitle("Pagora - A title");
    epub->setBook("A title", "Its author");
    auto* const book = widget<Gtk::HeaderBar>("headerBar").get_title_widget();
    ASSERT_TRUE(book);
    EXPECT_EQ(dynamic_cast<Gtk::Label&>(*book->get_first_child()).get_text(), "A title");
    EXPECT_EQ(dynamic_cast<Gtk::Label&>(*book->get_last_child()).get_text(), "Its author");
    EXPECT_EQ(epub->parts().window.title(), "Pagora - A title");
    epub->setBook("A title", "");
    EXPECT_FALSE(book->get_last_child()->get_visible());
}

TEST_F(ReaderWindowTest, FixedWindowHasTheSameParts)
{
    FixedWindowGtk fixed(toplevel, makePage());
    int pages = 0;
    ReaderWindowActions actions;
    actions.scrollWheelBegan = [&](double) { ++pages; };
    fixed.setActions(std::move(actions));
    fixed.locLabel().setStringValue("1 of 12");
    EXPECT_EQ(fixed.locLabel().stringValue(), "1 of 12");
    EXPECT_EQ(&fixed.webView(), webView);
    flick(10);
    EXPECT_TRUE(waitUntil([&] { return pages == 1; }));
}

}
