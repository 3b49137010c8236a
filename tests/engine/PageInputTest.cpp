#include "base/Log.hpp"
#include "page/gtk/PageGestures.hpp"
#include "tests/engine/PageViewTest.hpp"

#include <gtkmm/eventcontrollerkey.h>

#include <cstdlib>

namespace pagora::test {

// No input and no script moves the page away from the position set by the reader.
class PageInputTest : public PageViewTest {
protected:
    void openThirdPage(const std::string& extra = {}, const std::string& head = {})
    {
        loadDocument(paragraphs(100) + extra, head);
        layOut(2);
        evaluate("window.scrollTo(1600, 0);");
        settle();
    }
    void expectThirdPage()
    {
        settle();
        // Records the position of the text in each frame. Reading the scroll position would reset it.
        evaluate("var seen = []; function look() { const box = document.body.getBoundingClientRect();"
                 "seen.push(Math.round(box.left) + ' ' + Math.round(box.top));"
                 "if (seen.length < 3) requestAnimationFrame(look); } requestAnimationFrame(look); 0");
        EXPECT_TRUE(waitUntil([&] { return evaluate("seen.length") == "3"; }));
        EXPECT_EQ(evaluate("seen.join()"), "-1600 0,-1600 0,-1600 0");
        EXPECT_EQ(evaluate("window.pageXOffset"), "1600");
    }
    template <typename Type>
    Type* controller(GType type)
    {
        GListModel* controllers = gtk_widget_observe_controllers(_view->widget().gobj());
        Type* found = nullptr;
        for (guint i = 0; i < g_list_model_get_n_items(controllers); ++i) {
            auto* item = static_cast<GObject*>(g_list_model_get_item(controllers, i));
            if (g_type_is_a(G_OBJECT_TYPE(item), type))
                found = reinterpret_cast<Type*>(item);
            g_object_unref(item);
        }
        g_object_unref(controllers);
        return found;
    }
    bool isKeySwallowed(guint key)
    {
        gboolean swallowed = FALSE;
        g_signal_emit_by_name(controller<GtkEventController>(GTK_TYPE_EVENT_CONTROLLER_KEY), "key-pressed", key, 0u,
            static_cast<GdkModifierType>(0), &swallowed);
        return swallowed;
    }
    // Clicks the middle of an element with the real pointer.
    void press(const std::string& id)
    {
        // The window is the only one, at the origin of the display.
        const auto middle = evaluate("var box = document.getElementById('" + id
            + "').getBoundingClientRect(); Math.round(box.left + box.width / 2) + ' ' + Math.round(box.top + "
              "box.height / 2)");
        ASSERT_EQ(std::system(("xdotool mousemove " + middle + " click 1").c_str()), 0);
    }
    // A two-finger scroll on a touchpad by these distances, in ten steps, with this final velocity.
    void scroll(double x, double y, double speedX, double speedY)
    {
        auto* const scrolling = controller<GtkEventController>(GTK_TYPE_EVENT_CONTROLLER_SCROLL);
        // Without a current event, the unit of the signal is wheel steps.
        constexpr double pointsPerStep = 15;
        g_signal_emit_by_name(scrolling, "scroll-begin");
        gboolean swallowed = FALSE;
        for (int i = 0; i < 10; ++i)
            g_signal_emit_by_name(scrolling, "scroll", x / 10 / pointsPerStep, y / 10 / pointsPerStep, &swallowed);
        g_signal_emit_by_name(scrolling, "scroll-end");
        g_signal_emit_by_name(scrolling, "decelerate", speedX / pointsPerStep, speedY / pointsPerStep);
    }
    // A drag of one finger on a touchscreen.
    void drag(double x, double y)
    {
        auto* const dragging = controller<GtkEventController>(GTK_TYPE_GESTURE_DRAG);
        g_signal_emit_by_name(dragging, "drag-begin", 400.0, 300.0);
        for (int i = 1; i <= 10; ++i)
            g_signal_emit_by_name(dragging, "drag-update", x * i / 10, y * i / 10);
        g_signal_emit_by_name(dragging, "drag-end", x, y);
    }
    std::vector<double> flicks;
    void noteFlicks()
    {
        _view->setFlickHandler([this](double dx) { flicks.push_back(dx); });
    }
};

TEST_F(PageInputTest, TheWheelIsSwallowedBeforeTheEngineSeesIt)
{
    auto* scrolling = controller<GtkEventController>(GTK_TYPE_EVENT_CONTROLLER_SCROLL);
    ASSERT_NE(scrolling, nullptr);
    EXPECT_EQ(gtk_event_controller_get_propagation_phase(scrolling), GTK_PHASE_CAPTURE);
    gboolean swallowed = FALSE;
    g_signal_emit_by_name(scrolling, "scroll", 3.0, 5.0, &swallowed);
    EXPECT_TRUE(swallowed);
}

TEST_F(PageInputTest, AFlickIsReportedOnceWithTheFingersDirection)
{
    noteFlicks();
    scroll(120, 30, 900, 200);
    scroll(-80, 0, -600, 0);
    ASSERT_EQ(flicks.size(), 2u);
    EXPECT_LT(flicks[0], 0);
    EXPECT_GT(flicks[1], 0);
}

TEST_F(PageInputTest, WhatFollowsAFlickByItselfTurnsNothing)
{
    noteFlicks();
    scroll(120, 0, 900, 0);
    auto* const scrolling = controller<GtkEventController>(GTK_TYPE_EVENT_CONTROLLER_SCROLL);
    g_signal_emit_by_name(scrolling, "decelerate", 0.0, 0.0);
    g_signal_emit_by_name(scrolling, "decelerate", 60.0, 0.0);
    EXPECT_EQ(flicks.size(), 1u);
}

TEST_F(PageInputTest, AVerticalScrollThatDriftsAndABrushTurnNothing)
{
    noteFlicks();
    scroll(0, 600, 0, 3000);
    // The angle is 5 degrees.
    scroll(52.5, 600, 262, 3000);
    scroll(0.8, 0, 100, 0);
    EXPECT_TRUE(flicks.empty());
}

TEST_F(PageInputTest, ASwipeOfThreeFingersIsOnlyLogged)
{
    std::vector<std::string> logged;
    const LogCapture capture([&](const std::string& line) { logged.push_back(line); });
    noteFlicks();
    for (const auto phase : { GDK_TOUCHPAD_GESTURE_PHASE_BEGIN, GDK_TOUCHPAD_GESTURE_PHASE_UPDATE,
             GDK_TOUCHPAD_GESTURE_PHASE_END, GDK_TOUCHPAD_GESTURE_PHASE_CANCEL })
        PageGestures::swipeWithEvent(phase, 3);
    EXPECT_EQ(logged, std::vector<std::string> { "Pagora -> swipeEvent: 3 fingers" });
    EXPECT_TRUE(flicks.empty());
}

TEST_F(PageInputTest, AFingersDragAcrossTheScreenIsReportedOnce)
{
    noteFlicks();
    drag(-200, 20);
    drag(150, -10);
    EXPECT_EQ(flicks, (std::vector<double> { -200, 150 }));
}

TEST_F(PageInputTest, AFingersTapAndDragDownAreNot)
{
    noteFlicks();
    drag(3, 2);
    drag(60, 300);
    EXPECT_TRUE(flicks.empty());
}

TEST_F(PageInputTest, AFingerThatRestsAndThenDragsSelectsText)
{
    noteFlicks();
    auto* const dragging = controller<GtkEventController>(GTK_TYPE_GESTURE_DRAG);
    g_signal_emit_by_name(dragging, "drag-begin", 400.0, 300.0);
    g_signal_emit_by_name(controller<GtkEventController>(GTK_TYPE_GESTURE_LONG_PRESS), "pressed", 400.0, 300.0);
    g_signal_emit_by_name(dragging, "drag-update", 200.0, 0.0);
    g_signal_emit_by_name(dragging, "drag-end", 200.0, 0.0);
    EXPECT_TRUE(flicks.empty());
}

TEST_F(PageInputTest, ScrollingKeysAreSwallowed)
{
    loadDocument(paragraphs(3));
    for (const guint key : { GDK_KEY_Left, GDK_KEY_Down, GDK_KEY_Page_Down, GDK_KEY_End, GDK_KEY_space, GDK_KEY_KP_Up })
        EXPECT_TRUE(isKeySwallowed(key)) << gdk_keyval_name(key);
    for (const guint key : { GDK_KEY_Tab, GDK_KEY_Return, GDK_KEY_c })
        EXPECT_FALSE(isKeySwallowed(key)) << gdk_keyval_name(key);
}

TEST_F(PageInputTest, ATextFieldThatIsPressedGetsItsKeys)
{
    _view->makeFirstResponder();
    loadDocument("<input id='field'/>" + paragraphs(3));
    settle();
    press("field");
    EXPECT_TRUE(waitUntil([&] { return !isKeySwallowed(GDK_KEY_Left); }));
    evaluate("document.getElementById('field').blur()");
    EXPECT_TRUE(waitUntil([&] { return isKeySwallowed(GDK_KEY_Left); }));
}

TEST_F(PageInputTest, ATextFieldThatHasTheFocusAlreadyGetsItsKeysWhenItIsPressed)
{
    _view->makeFirstResponder();
    loadDocument("<input id='field'/>" + paragraphs(3));
    evaluate("document.getElementById('field').focus()");
    settle();
    EXPECT_TRUE(isKeySwallowed(GDK_KEY_Left));
    press("field");
    EXPECT_TRUE(waitUntil([&] { return !isKeySwallowed(GDK_KEY_Left); }));
}

TEST_F(PageInputTest, ATextFieldBehindItsLabelGetsItsKeys)
{
    _view->makeFirstResponder();
    loadDocument("<label id='label' for='field'>Answer</label> <input id='field'/>" + paragraphs(3));
    settle();
    press("label");
    EXPECT_TRUE(waitUntil([&] { return !isKeySwallowed(GDK_KEY_Left); }));
}

TEST_F(PageInputTest, EscapeTakesTheKeysFromATextField)
{
    _view->makeFirstResponder();
    loadDocument("<input id='field'/>" + paragraphs(3));
    settle();
    press("field");
    EXPECT_TRUE(waitUntil([&] { return !isKeySwallowed(GDK_KEY_Left); }));
    EXPECT_EQ(std::system("xdotool key Escape"), 0);
    EXPECT_TRUE(waitUntil([&] { return isKeySwallowed(GDK_KEY_Left); }));
}

TEST_F(PageInputTest, ATextFieldThatTabReachesGetsItsKeys)
{
    _view->makeFirstResponder();
    loadDocument("<input id='field'/>" + paragraphs(3));
    settle();
    EXPECT_EQ(std::system("xdotool mousemove 400 500 key Tab"), 0);
    EXPECT_TRUE(waitUntil([&] { return !isKeySwallowed(GDK_KEY_Left); }));
}

TEST_F(PageInputTest, AFieldThatThePageFocusesAgainAndAgainTakesNoKeys)
{
    _view->makeFirstResponder();
    loadDocument("<input id='field'/><p id='text'>Text</p>"
                 "<script>setInterval(() => document.getElementById('field').focus(), 1)</script>");
    EXPECT_TRUE(waitUntil([&] { return evaluate("document.activeElement.id") == "field"; }));
    settle();
    EXPECT_TRUE(isKeySwallowed(GDK_KEY_Right));
    press("text");
    EXPECT_TRUE(waitUntil([&] { return evaluate("document.activeElement.id") == "field"; }));
    settle();
    EXPECT_TRUE(isKeySwallowed(GDK_KEY_Right));
}

TEST_F(PageInputTest, AHashMovesNothing)
{
    openThirdPage();
    evaluate("window.location.hash = \"#p70\";");
    expectThirdPage();
    ASSERT_EQ(_delegate.locations.size(), 1u);
    EXPECT_EQ(Url::fromString(_delegate.locations[0])->fragment(), "p70");
    evaluate("window.location.hash = \"#p70\";");
    expectThirdPage();
    EXPECT_EQ(_delegate.locations.size(), 1u);
}

TEST_F(PageInputTest, ALinkWithinThePageIsReportedAndMovesNothing)
{
    openThirdPage("<a id='link' href='#p5'>There</a>");
    const auto number = _view->currentLoad();
    evaluate("document.getElementById('link').click()");
    EXPECT_TRUE(waitUntil([&] { return _delegate.locations.size() == 1; }));
    expectThirdPage();
    EXPECT_EQ(_view->currentLoad(), number);
}

TEST_F(PageInputTest, TheFragmentThatIsLoadedMovesNothing)
{
    const Url url = write("chapter.xhtml", document(paragraphs(100)));
    loadCompletely(*Url::fromString(url.text() + "#p70"));
    layOut(2);
    settle();
    settle();
    EXPECT_EQ(evaluate("Math.round(document.body.getBoundingClientRect().left)"), "0");
    EXPECT_EQ(evaluate("window.pageXOffset"), "0");
}

TEST_F(PageInputTest, FocusMovesNothing)
{
    openThirdPage("<a id='last' href='#p1'>Last</a>");
    evaluate("document.getElementById('last').focus()");
    expectThirdPage();
}

TEST_F(PageInputTest, ASearchMovesNothing)
{
    openThirdPage("<p>Needle</p>");
    auto* find = webkit_web_view_get_find_controller(_view->engineView());
    bool isFound = false;
    const auto found = [](WebKitFindController*, guint, gpointer data) { *static_cast<bool*>(data) = true; };
    const auto handler = g_signal_connect(
        find, "found-text", G_CALLBACK(static_cast<void (*)(WebKitFindController*, guint, gpointer)>(found)), &isFound);
    webkit_find_controller_search(find, "Needle", WEBKIT_FIND_OPTIONS_WRAP_AROUND, 10);
    EXPECT_TRUE(waitUntil([&] { return isFound; }));
    g_signal_handler_disconnect(find, handler);
    expectThirdPage();
}

TEST_F(PageInputTest, EditingCommandsMoveNothing)
{
    openThirdPage();
    for (const char* command : { "ScrollToEndOfDocument", "ScrollPageForward", "SelectAll", "MoveToEndOfDocument",
             "MoveToEndOfDocumentAndModifySelection", "ScrollLineDown" })
        webkit_web_view_execute_editing_command(_view->engineView(), command);
    expectThirdPage();
}

TEST_F(PageInputTest, ASelectionMovesNothing)
{
    openThirdPage();
    evaluate("getSelection().collapse(document.getElementById('p90').firstChild, 3);"
             "getSelection().modify('extend', 'forward', 'documentboundary'); 0");
    expectThirdPage();
}

TEST_F(PageInputTest, TheBooksOwnScriptsMoveNothing)
{
    openThirdPage("<script>setInterval(() => { window.scrollTo(37, 11); "
                  "document.getElementById('p90').scrollIntoView(); }, 5)</script>",
        "<style>html{overflow:auto!important}body{overflow:scroll!important}</style>");
    expectThirdPage();
}

}
