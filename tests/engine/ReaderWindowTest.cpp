#include "fixed/gtk/FixedWindowGtk.hpp"
#include "platform/Log.hpp"
#include "platform/gtk/Toplevel.hpp"
#include "reader/gtk/EpubWindowGtk.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeWebView.hpp"

#include <gtkmm/drawingarea.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/headerbar.h>
#include <gtkmm/label.h>
#include <gtkmm/revealer.h>
#include <gtkmm/stack.h>

#include <algorithm>

namespace pagora::test {

namespace {

class ReaderWindowTest : public ToolkitTest {
protected:
    ReaderPage makePage()
    {
        auto view = std::make_unique<FakeWebView>();
        webView = view.get();
        area.set_focusable(true);
        return { std::move(view), &area, [this](std::function<void(double)> handler) { flick = handler; } };
    }

    // A window whose actions are noted in `done`.
    void makeEpubWindow()
    {
        epub = std::make_unique<EpubWindowGtk>(toplevel, makePage());
        ReaderWindowActions actions;
        actions.closeEPUB = [this] {
            done.push_back("close");
            epub.reset();
        };
        actions.toggleLeftView = [this] { done.push_back("contents"); };
        actions.changePage = [this](int tag) { done.push_back("page " + std::to_string(tag)); };
        actions.goToFirstPage = [this] { done.push_back("first"); };
        actions.goToLastPage = [this] { done.push_back("last"); };
        actions.scrollWheelBegan = [this](double deltaX) { done.push_back(deltaX > 0 ? "flick right" : "flick left"); };
        actions.displayOptions = [this] { done.push_back("options"); };
        actions.changeWidth = [this] { done.push_back("columns"); };
        actions.searchContent = [this](const std::string& text) { done.push_back("search " + text); };
        actions.toggleFullScreen = [this] { done.push_back("full screen"); };
        epub->setActions(std::move(actions));
    }

    Gtk::Window& window() { return toplevel.window(); }
    template <typename Widget>
    Widget& widget(const char* name)
    {
        return epub->parts().widget<Widget>(name);
    }

    // In the window, which comes to the front for it.
    bool press(guint keyval, GdkModifierType state = GdkModifierType(0))
    {
        epub->window().orderFront();
        return ToolkitTest::press(window().gobj(), keyval, state);
    }

    // The pointer comes over a widget.
    static void enter(Gtk::Widget& widget)
    {
        const auto controllers = widget.observe_controllers();
        for (guint i = 0; i < controllers->get_n_items(); ++i) {
            if (const auto motion = std::dynamic_pointer_cast<Gtk::EventControllerMotion>(controllers->get_object(i)))
                g_signal_emit_by_name(motion->gobj(), "enter", 1.0, 1.0);
        }
    }
    bool waitForDone(std::size_t count)
    {
        return waitUntil([&] { return done.size() >= count; });
    }

    using Lines = std::vector<std::string>;
    Toplevel toplevel;
    Gtk::DrawingArea area;
    FakeWebView* webView = nullptr;
    std::function<void(double)> flick;
    std::unique_ptr<EpubWindowGtk> epub;
    Lines done;
};

}

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

TEST_F(ReaderWindowTest, TitleBarOfFullScreenTakesAtMostAFifthOfASecond)
{
    makeEpubWindow();
    EXPECT_LE(widget<Gtk::Revealer>("headerRevealer").get_transition_duration(), 200u);
    // One page is in one window.
    epub.reset();
    FixedWindowGtk fixed(toplevel, makePage());
    EXPECT_LE(fixed.parts().widget<Gtk::Revealer>("headerRevealer").get_transition_duration(), 200u);
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
    // As the toolkit does after a while.
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
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, Lines { "search lamp" });
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

TEST_F(ReaderWindowTest, LocationSliderSendsOnceWhenThePointerLetsGo)
{
    makeEpubWindow();
    auto& slider = epub->parts().locSlider;
    slider.setMaxValue(10);
    std::vector<EventType> events;
    slider.setAction([&](EventType event) { events.push_back(event); });
    slider.pointerDown();
    slider.moveTo(2);
    slider.moveTo(4.25);
    EXPECT_TRUE(events.empty());
    slider.pointerUp();
    EXPECT_EQ(events, std::vector { EventType::LeftMouseUp });
    EXPECT_EQ(slider.floatValue(), 4.25f);
}

TEST_F(ReaderWindowTest, LocationSliderSendsAtOnceForTheKeyboard)
{
    makeEpubWindow();
    auto& slider = epub->parts().locSlider;
    slider.setMaxValue(10);
    std::vector<EventType> events;
    slider.setAction([&](EventType event) { events.push_back(event); });
    slider.moveTo(3);
    EXPECT_EQ(events, std::vector { EventType::KeyDown });
}

TEST_F(ReaderWindowTest, SliderSetByTheProgramSendsNothing)
{
    makeEpubWindow();
    auto& slider = epub->parts().locSlider;
    int sent = 0;
    slider.setAction([&](EventType) { ++sent; });
    slider.setMinValue(1);
    slider.setMaxValue(10);
    slider.setFloatValue(7.5f);
    slider.setMaxValue(5);
    EXPECT_EQ(sent, 0);
    EXPECT_EQ(slider.floatValue(), 5);
}

TEST_F(ReaderWindowTest, TextSizeSliderSendsWhileThePointerMoves)
{
    makeEpubWindow();
    std::vector<EventType> events;
    SliderControl slider(widget<Gtk::Scale>("fontSizeSlider"), SliderControl::Continuous::Yes);
    slider.setAction([&](EventType event) { events.push_back(event); });
    slider.pointerDown();
    slider.moveTo(1.5);
    slider.moveTo(1.7);
    slider.pointerUp();
    EXPECT_EQ(events, (std::vector { EventType::LeftMouseDragged, EventType::LeftMouseDragged }));
}

TEST_F(ReaderWindowTest, PageButtonsKeepTheirSidesInAnInterfaceFromRightToLeft)
{
    Gtk::Widget::set_default_direction(Gtk::TextDirection::RTL);
    makeEpubWindow();
    epub->parts().window.makeKeyAndOrderFront();
    const auto left = [this](const char* name) {
        graphene_rect_t bounds {};
        const bool isThere = gtk_widget_compute_bounds(
            widget<Gtk::Widget>(name).gobj(), widget<Gtk::Widget>("pagePlace").gobj(), &bounds);
        return isThere && bounds.size.width > 0 ? bounds.origin.x : -1;
    };
    EXPECT_TRUE(waitUntil([&] { return left("goLeftButton") == 0 && left("goRightButton") > 0; }));
    Gtk::Widget::set_default_direction(Gtk::TextDirection::LTR);
}

TEST_F(ReaderWindowTest, LocationGoesWithThePagesInAnInterfaceFromRightToLeft)
{
    Gtk::Widget::set_default_direction(Gtk::TextDirection::RTL);
    makeEpubWindow();
    epub->locLabel().setStringValue("0 %");
    epub->parts().window.makeKeyAndOrderFront();
    auto& slider = widget<Gtk::Scale>("locSlider");
    auto& label = widget<Gtk::Label>("locLabel");
    EXPECT_TRUE(waitUntil([&] { return label.get_allocation().get_x() > slider.get_allocation().get_width(); }));
    EXPECT_EQ(slider.get_direction(), Gtk::TextDirection::LTR);
    EXPECT_LT(label.get_layout()->index_to_pos(0).get_x(), label.get_layout()->index_to_pos(2).get_x());
    Gtk::Widget::set_default_direction(Gtk::TextDirection::LTR);
}

TEST_F(ReaderWindowTest, PointerThatEntersAPageButtonGetsTheHandTwentyTimes)
{
    Lines logged;
    const LogCapture capture([&](const std::string& line) { logged.push_back(line); });
    makeEpubWindow();
    auto& button = widget<Gtk::Button>("goRightButton");
    int hands = 0;
    button.property_cursor().signal_changed().connect([&] {
        hands += button.get_cursor() && button.get_cursor()->get_name() == "pointer";
        // What the page below sets.
        if (hands < 20)
            g_idle_add_once([](gpointer widget) { gtk_widget_set_cursor(GTK_WIDGET(widget), nullptr); }, button.gobj());
    });
    enter(button);
    ASSERT_TRUE(waitUntil([&] { return hands == 20; }));
    EXPECT_EQ(logged, Lines { "cursor update" });
    settle();
    EXPECT_EQ(button.get_cursor()->get_name(), "pointer");
    EXPECT_EQ(hands, 20);
}

TEST_F(ReaderWindowTest, TextSizeStartsInTheMiddleOfItsRange)
{
    makeEpubWindow();
    auto& slider = epub->fontSizeSlider();
    EXPECT_EQ(slider.floatValue(), static_cast<float>((slider.minValue() + slider.maxValue()) / 2));
}

TEST_F(ReaderWindowTest, ThemesHaveTheTagsOneToThree)
{
    makeEpubWindow();
    auto& themes = epub->colorControl();
    EXPECT_EQ(themes.selectedSegment(), 0);
    EXPECT_EQ(themes.tag(0), 1);
    EXPECT_EQ(themes.tag(2), 3);
    int chosen = 0;
    themes.setAction([&] { chosen = themes.tag(themes.selectedSegment()); });
    widget<Gtk::ToggleButton>("sepiaTheme").set_active(true);
    EXPECT_EQ(chosen, 3);
}

TEST_F(ReaderWindowTest, TitlesOfTheFontMenuAreShownWholeOnHover)
{
    makeEpubWindow();
    epub->fontMenu().addItem("Georgia");
    auto& menu = widget<Gtk::DropDown>("fontMenu");
    ASSERT_TRUE(waitUntil([&] { return menu.get_selected_item() != nullptr; }));
    std::function<Gtk::Widget*(Gtk::Widget&)> rowIn = [&](Gtk::Widget& widget) -> Gtk::Widget* {
        if (dynamic_cast<Gtk::Stack*>(&widget) && dynamic_cast<Gtk::Stack&>(widget).get_child_by_name("separator"))
            return &widget;
        for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling()) {
            if (auto* const row = rowIn(*child))
                return row;
        }
        return nullptr;
    };
    auto* const row = rowIn(menu);
    ASSERT_TRUE(row);
    EXPECT_TRUE(showsTooltip(*row));
}

TEST_F(ReaderWindowTest, FontMenuSelectsByTitleAndSendsOnlyChoices)
{
    makeEpubWindow();
    auto& menu = epub->fontMenu();
    int sent = 0;
    menu.setAction([&] { ++sent; });
    menu.addItem("Arial");
    menu.addItem("Georgia");
    menu.addSeparator();
    menu.addItem("Zapfino");
    menu.selectItemWithTitle("Georgia");
    menu.selectItemWithTitle("Missing");
    EXPECT_EQ(menu.titleOfSelectedItem(), "Georgia");
    auto& button = widget<Gtk::DropDown>("fontMenu");
    ASSERT_TRUE(waitUntil([&] { return button.get_selected() == 1; }));
    EXPECT_EQ(sent, 0);
    button.set_selected(3);
    EXPECT_EQ(menu.titleOfSelectedItem(), "Zapfino");
    EXPECT_EQ(sent, 1);
}

TEST_F(ReaderWindowTest, SeparatorOfTheFontMenuCannotBeChosen)
{
    makeEpubWindow();
    auto& menu = epub->fontMenu();
    menu.addItem("Arial");
    menu.addSeparator();
    menu.addItem("Zapfino");
    int sent = 0;
    menu.setAction([&] { ++sent; });
    auto& button = widget<Gtk::DropDown>("fontMenu");
    ASSERT_TRUE(waitUntil([&] { return button.get_model()->get_n_items() == 3; }));
    button.set_selected(1);
    EXPECT_EQ(menu.titleOfSelectedItem(), "Arial");
    EXPECT_EQ(button.get_selected(), 0u);
    EXPECT_EQ(sent, 0);
}

TEST_F(ReaderWindowTest, InstalledFontsAreListedInOrder)
{
    makeEpubWindow();
    const auto families = epub->availableFontFamilies();
    ASSERT_FALSE(families.empty());
    EXPECT_TRUE(std::is_sorted(families.begin(), families.end(), [](const auto& left, const auto& right) {
        return Glib::ustring(left).casefold() < Glib::ustring(right).casefold();
    }));
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
    // Frames follow each other at once while something moves. A caret that blinks is drawn twice a second at most.
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

TEST_F(ReaderWindowTest, HeaderBarComesInFullScreenOnlyWhenCalled)
{
    makeEpubWindow();
    auto& header = epub->parts().header;
    EXPECT_TRUE(header.isRevealed());
    header.setFullScreen(true);
    EXPECT_FALSE(header.isRevealed());
    header.setFullScreen(false);
    EXPECT_TRUE(header.isRevealed());
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
