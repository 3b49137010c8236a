// The windows that share the program's one window on the desktop.

#include "desktop/gtk/SharedWindow.hpp"
#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/settings.h>

#include <algorithm>
#include <thread>

namespace pagora::test {

namespace {

class ToplevelTest : public ToolkitTest {
protected:
    // A window with a text field. Records its calls.
    struct Shared {
        explicit Shared(Toplevel& toplevel, const std::string& title)
            : window(toplevel, content)
        {
            content.append(field);
            window.setTitle(title);
            window.setFullScreenAction([this](bool isFullScreen) { told.push_back(isFullScreen); });
        }

        Gtk::Box content;
        Gtk::Entry field;
        SharedWindow window;
        std::vector<bool> told;
    };

    Gtk::Window& desktopWindow() { return toplevel.window(); }
    // Simulates the desktop's report that full screen was entered or left. Without a window manager it is never
    // entered.
    void reportFullScreen() { g_object_notify(G_OBJECT(desktopWindow().gobj()), "fullscreened"); }
    bool isShown(const Shared& shared) { return shared.content.get_mapped(); }
    int surfaceWidth() { return gdk_surface_get_width(gtk_native_get_surface(GTK_NATIVE(desktopWindow().gobj()))); }
    bool waitUntilLaidOut(Shared& shared)
    {
        const auto reply = shared.window.laidOut();
        return waitUntil([&] { return reply.await_ready(); });
    }

    int timesHidden = 0;
    Toplevel toplevel;
    Shared library { toplevel, "Library" };
    Shared reader { toplevel, "Reader" };
};

}

TEST_F(ToplevelTest, ShowsNothingOnceItHasEnded)
{
    reader.window.makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&] { return isShown(reader); }));
    toplevel.end();
    library.window.makeKeyAndOrderFront();
    EXPECT_TRUE(library.window.isVisible());
    EXPECT_FALSE(desktopWindow().get_visible());
}

TEST_F(ToplevelTest, ShowsTheWindowThatWasOrderedFrontLast)
{
    library.window.makeKeyAndOrderFront();
    reader.window.makeKeyAndOrderFront();
    library.window.orderOut();
    EXPECT_TRUE(waitUntil([&] { return isShown(reader) && !isShown(library); }));
    EXPECT_TRUE(reader.window.isVisible());
    EXPECT_FALSE(library.window.isVisible());
}

TEST_F(ToplevelTest, ShowsWhatIsBehindAWindowThatIsOrderedOut)
{
    library.window.orderFront();
    reader.window.orderFront();
    EXPECT_TRUE(library.window.isVisible());
    reader.window.orderOut();
    EXPECT_TRUE(waitUntil([&] { return isShown(library) && !isShown(reader); }));
}

TEST_F(ToplevelTest, IsOneWindowOfTheDesktopThroughout)
{
    library.window.orderFront();
    ASSERT_TRUE(waitUntil([&] { return desktopWindow().get_mapped(); }));
    desktopWindow().signal_unmap().connect([&] { ++timesHidden; });
    const auto before = Gtk::Window::list_toplevels().size();
    for (int i = 0; i < 3; ++i) {
        Shared book(toplevel, "Book");
        library.window.orderOut();
        book.window.orderFront();
        EXPECT_TRUE(waitUntil([&] { return isShown(book); }));
        EXPECT_EQ(Gtk::Window::list_toplevels().size(), before);
        book.window.orderOut();
        library.window.orderFront();
    }
    EXPECT_TRUE(waitUntil([&] { return isShown(library); }));
    EXPECT_EQ(timesHidden, 0);
}

TEST_F(ToplevelTest, IsHiddenWhileNoWindowIsOrderedIn)
{
    library.window.orderFront();
    ASSERT_TRUE(waitUntil([&] { return desktopWindow().get_mapped(); }));
    library.window.orderOut();
    EXPECT_FALSE(library.window.isVisible());
    EXPECT_TRUE(waitUntil([&] { return !desktopWindow().get_visible(); }));
    reader.window.orderFront();
    EXPECT_TRUE(waitUntil([&] { return isShown(reader); }));
}

TEST_F(ToplevelTest, WindowThatGoesWhileItIsInFrontLeavesTheOneBehindIt)
{
    library.window.orderFront();
    {
        Shared book(toplevel, "Book");
        book.window.orderFront();
    }
    EXPECT_TRUE(waitUntil([&] { return isShown(library); }));
    EXPECT_EQ(desktopWindow().get_title(), "Library");
}

TEST_F(ToplevelTest, WindowThatIsOrderedFrontElsewhereIsVisible)
{
    std::jthread([this] { library.window.orderFront(); }).join();
    EXPECT_TRUE(library.window.isVisible());
    EXPECT_TRUE(waitUntil([&] { return isShown(library); }));
}

TEST_F(ToplevelTest, HasTheTitleOfTheWindowInFront)
{
    library.window.orderFront();
    EXPECT_EQ(desktopWindow().get_title(), "Library");
    reader.window.setTitle("A book");
    EXPECT_EQ(desktopWindow().get_title(), "Library");
    reader.window.orderFront();
    EXPECT_EQ(desktopWindow().get_title(), "A book");
    reader.window.setTitle("Another book");
    EXPECT_EQ(desktopWindow().get_title(), "Another book");
}

TEST_F(ToplevelTest, HasTheKeysOfTheWindowInFront)
{
    std::vector<std::string> pressed;
    for (auto* const shared : { &library, &reader }) {
        const auto keys = Gtk::EventControllerKey::create();
        keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
        keys->signal_key_pressed().connect(
            [&pressed, title = shared->window.title()](guint, guint, Gdk::ModifierType) {
                pressed.push_back(title);
                return false;
            },
            false);
        shared->window.addController(keys);
    }
    library.window.orderFront();
    press(desktopWindow().gobj(), GDK_KEY_Right);
    reader.window.orderFront();
    press(desktopWindow().gobj(), GDK_KEY_Right);
    EXPECT_EQ(pressed, (std::vector<std::string> { "Library", "Reader" }));
}

TEST_F(ToplevelTest, AsksTheWindowInFrontBeforeItCloses)
{
    std::vector<std::string> asked;
    for (auto* const shared : { &library, &reader }) {
        shared->window.setCloseAction([&asked, title = shared->window.title()] {
            asked.push_back(title);
            return false;
        });
    }
    library.window.orderFront();
    desktopWindow().close();
    reader.window.orderFront();
    desktopWindow().close();
    EXPECT_EQ(asked, (std::vector<std::string> { "Library", "Reader" }));
    EXPECT_TRUE(desktopWindow().get_visible());
}

TEST_F(ToplevelTest, EachWindowKeepsItsFocus)
{
    library.window.orderFront();
    ASSERT_TRUE(waitUntil([&] { return isShown(library); }));
    library.field.grab_focus();
    reader.window.orderFront();
    EXPECT_FALSE(library.window.focus());
    reader.field.grab_focus();
    EXPECT_TRUE(reader.window.focus());
    library.window.orderFront();
    EXPECT_TRUE(library.window.focus() && library.window.focus()->is_ancestor(library.field));
    EXPECT_FALSE(reader.window.focus());
}

TEST_F(ToplevelTest, FocusThatAWindowIsGivenBehindAnotherWaitsForIt)
{
    library.window.orderFront();
    reader.window.orderFront();
    ASSERT_TRUE(waitUntil([&] { return isShown(reader); }));
    reader.field.grab_focus();
    library.field.grab_focus();
    EXPECT_TRUE(reader.window.focus() && reader.window.focus()->is_ancestor(reader.field));
    reader.window.orderOut();
    EXPECT_TRUE(library.window.focus() && library.window.focus()->is_ancestor(library.field));
}

TEST_F(ToplevelTest, WindowBringsItsFrame)
{
    library.window.setFrame({ 10, 20, 800, 600 });
    library.window.orderFront();
    ASSERT_TRUE(waitUntilLaidOut(library));
    reader.window.setFrame(library.window.frame());
    reader.window.orderFront();
    EXPECT_EQ(reader.window.frame(), (Rect { 10, 20, 800, 600 }));
    reader.window.setFrame({ 10, 20, 640, 480 });
    EXPECT_TRUE(waitUntil([&] { return desktopWindow().get_width() <= 640; }));
    EXPECT_EQ(library.window.frame(), (Rect { 10, 20, 800, 600 }));
    reader.window.orderOut();
    EXPECT_EQ(library.window.frame(), (Rect { 10, 20, 800, 600 }));
    EXPECT_TRUE(waitUntil([&] { return desktopWindow().get_width() > 640; }));
}

TEST_F(ToplevelTest, WindowTakesTheLastOfItsFrames)
{
    reader.window.setFrame({ 0, 0, 400, 300 });
    reader.window.makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntilLaidOut(reader));
    // Each change is requested before the previous one has taken effect.
    for (int round = 0; round < 5; ++round) {
        for (const int width : { 600, 450, 700, 500 }) {
            reader.window.setFrame({ 0, 0, double(width), 300 });
            for (int i = 0; i < round; ++i)
                g_main_context_iteration(nullptr, FALSE);
        }
        EXPECT_TRUE(waitUntil([&] { return surfaceWidth() == 500; })) << round;
        settle();
        EXPECT_EQ(reader.window.frame().width, 500);
    }
}

TEST_F(ToplevelTest, WindowIsAnimatedToAFrameWhereAnimationsAreOn)
{
    const auto settings = Gtk::Settings::get_default();
    const bool before = settings->property_gtk_enable_animations();
    for (const bool moves : { true, false }) {
        settings->property_gtk_enable_animations() = moves;
        reader.window.setFrame({ 5, 6, 400, 300 });
        reader.window.makeKeyAndOrderFront();
        ASSERT_TRUE(waitUntilLaidOut(reader));
        std::vector<int> widths;
        auto watch = desktopWindow().property_default_width().signal_changed().connect(
            [&] { widths.push_back(desktopWindow().property_default_width()); });
        reader.window.animateToFrame({ 7, 8, 600, 500 });
        EXPECT_EQ(reader.window.frame(), (Rect { 7, 8, 600, 500 }));
        ASSERT_TRUE(waitUntilLaidOut(reader));
        EXPECT_TRUE(waitUntil([&] { return surfaceWidth() == 600; }));
        watch.disconnect();
        EXPECT_EQ(widths.back(), 600);
        const auto isOnTheWay = [](int width) { return width > 400 && width < 600; };
        EXPECT_EQ(std::any_of(widths.begin(), widths.end(), isOnTheWay), moves);
    }
    settings->property_gtk_enable_animations() = before;
}

TEST_F(ToplevelTest, WindowThatIsOrderedOutOnTheWayToAFrameHasThatFrame)
{
    Gtk::Settings::get_default()->property_gtk_enable_animations() = true;
    library.window.setFrame({ 0, 0, 400, 300 });
    library.window.orderFront();
    reader.window.setFrame({ 0, 0, 400, 300 });
    reader.window.makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntilLaidOut(reader));
    reader.window.animateToFrame({ 0, 0, 600, 500 });
    reader.window.orderOut();
    EXPECT_EQ(reader.window.frame(), (Rect { 0, 0, 600, 500 }));
    ASSERT_TRUE(waitUntilLaidOut(library));
    EXPECT_EQ(library.window.frame(), (Rect { 0, 0, 400, 300 }));
}

TEST_F(ToplevelTest, FrameOfTheWindowInFrontFollowsTheDesktop)
{
    library.window.orderFront();
    desktopWindow().set_default_size(700, 500);
    EXPECT_EQ(library.window.frame().width, 700);
    reader.window.orderFront();
    EXPECT_EQ(library.window.frame().width, 700);
}

TEST_F(ToplevelTest, WindowIsLaidOutOnceItsContentHasItsSize)
{
    // The toolkit loads its renderer with the first window, which may take longer than the timeout for a layout.
    library.window.orderFront();
    ASSERT_TRUE(waitUntil([&] { return library.content.get_width() > 0; }));
    reader.window.setFrame({ 0, 0, 640, 480 });
    reader.window.orderFront();
    ASSERT_TRUE(waitUntilLaidOut(reader));
    EXPECT_GT(reader.content.get_width(), 0);
    EXPECT_LE(reader.content.get_width(), 640);
}

TEST_F(ToplevelTest, WindowThatDoesNotGetItsSizeIsLaidOutAllTheSame)
{
    reader.content.set_size_request(700, 500);
    reader.window.setFrame({ 0, 0, 300, 200 });
    reader.window.orderFront();
    ASSERT_TRUE(waitUntilLaidOut(reader));
    EXPECT_GE(reader.content.get_width(), 700);
}

TEST_F(ToplevelTest, FullScreenIsReportedToTheWindowInFront)
{
    library.window.orderFront();
    reader.window.orderFront();
    reportFullScreen();
    EXPECT_EQ(reader.told, std::vector<bool> { false });
    EXPECT_TRUE(library.told.empty());
}

TEST_F(ToplevelTest, FullScreenIsReportedToTheWindowThatAskedForIt)
{
    reader.window.orderFront();
    reader.window.toggleFullScreen();
    EXPECT_TRUE(reader.window.isFullScreen());
    reader.window.toggleFullScreen();
    EXPECT_FALSE(reader.window.isFullScreen());
    library.window.orderFront();
    reportFullScreen();
    EXPECT_EQ(reader.told, std::vector<bool> { false });
    EXPECT_TRUE(library.told.empty());
}

TEST_F(ToplevelTest, FullScreenThatAWindowAskedForThatIsGoneIsReportedToNone)
{
    {
        Shared book(toplevel, "Book");
        book.window.orderFront();
        book.window.toggleFullScreen();
        book.window.toggleFullScreen();
    }
    library.window.orderFront();
    reportFullScreen();
    EXPECT_TRUE(library.told.empty());
}

TEST_F(ToplevelTest, ReportThatIsNotTheOneAskedForIsReportedToNone)
{
    reader.window.orderFront();
    reader.window.toggleFullScreen();
    reportFullScreen();
    EXPECT_TRUE(reader.told.empty());
    EXPECT_TRUE(reader.window.isFullScreen());
}

TEST_F(ToplevelTest, OnlyTheWindowInFrontIsTheKeyWindow)
{
    library.window.makeKeyAndOrderFront();
    reader.window.orderFront();
    EXPECT_FALSE(library.window.isKeyWindow());
    EXPECT_EQ(reader.window.isKeyWindow(), desktopWindow().is_active());
}

}
