// The fixed-layout reader in its real window, with the real engine.

#include "app/gtk/ReaderWindowFactoryGtk.hpp"
#include "base/Log.hpp"
#include "base/Resource.hpp"
#include "desktop/gtk/Toplevel.hpp"
#include "fixed/FixedLayoutWindowController.hpp"
#include "fixed/PreparedPages.hpp"
#include "fixed/gtk/FixedWindowGtk.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/engine/PageFaults.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeReaderHub.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/WitnessServer.hpp"

#include <gtkmm/settings.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

namespace pagora::test {

namespace {

std::string ownScript(const std::string& name)
{
    return resourceBytes("/org/pagora/Pagora/scripts/" + name + ".js").value_or("");
}

// Scripts that tell of a page of 600 by 800 at half its size, in a view of 500 by 500.
std::string statedScript(const std::string& name)
{
    if (name != "rescaling")
        return {};
    return "var Xscale = 0.5; function init() {} function scale() {}"
           "function getWidth(of) { return of === 'win' ? '500' : '600'; }"
           "function getHeight(of) { return of === 'win' ? '500' : '800'; }";
}

std::string page(const std::string& body, const std::string& viewport = "width=600, height=800")
{
    return "<html xmlns='http://www.w3.org/1999/xhtml'><head><title>Page</title><meta name='viewport' content='"
        + viewport + "'/><style>body{margin:0}</style></head><body>" + body + "</body></html>";
}

// The colours that are seen, in the middle of the right half of a widget, with each frame that is drawn.
class SeenColors {
public:
    explicit SeenColors(GtkWidget* widget)
        : _widget(widget)
        , _clock(gtk_widget_get_frame_clock(widget))
        , _handler(g_signal_connect(_clock, "after-paint", G_CALLBACK(&SeenColors::frameDrawn), this))
    {
    }
    ~SeenColors() { g_signal_handler_disconnect(_clock, _handler); }
    SeenColors(const SeenColors&) = delete;
    SeenColors& operator=(const SeenColors&) = delete;

    const std::set<std::uint32_t>& colors() const { return _colors; }

private:
    static void frameDrawn(GdkFrameClock*, gpointer self)
    {
        auto& seen = *static_cast<SeenColors*>(self);
        g_autoptr(GdkPaintable) paintable = gtk_widget_paintable_new(seen._widget);
        const int width = gdk_paintable_get_intrinsic_width(paintable);
        const int height = gdk_paintable_get_intrinsic_height(paintable);
        GtkSnapshot* snapshot = gtk_snapshot_new();
        gdk_paintable_snapshot(paintable, snapshot, width, height);
        GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
        if (!node)
            return;
        std::uint32_t pixel = 0;
        cairo_surface_t* surface = cairo_image_surface_create_for_data(
            reinterpret_cast<unsigned char*>(&pixel), CAIRO_FORMAT_ARGB32, 1, 1, sizeof pixel);
        cairo_t* context = cairo_create(surface);
        cairo_translate(context, -0.75 * width, -0.5 * height);
        gsk_render_node_draw(node, context);
        cairo_destroy(context);
        cairo_surface_destroy(surface);
        gsk_render_node_unref(node);
        seen._colors.insert(pixel & 0xFFFFFF);
    }

    GtkWidget* _widget;
    GdkFrameClock* _clock;
    gulong _handler;
    std::set<std::uint32_t> _colors;
};

// Reads pages that the test writes.
class FixedReadingTest : public ToolkitTest {
protected:
    FixedReadingTest() { std::filesystem::create_directories(_book); }
    ~FixedReadingTest() override
    {
        _seen.reset();
        _controller.reset();
        settle();
    }

    Url write(const std::string& name, const std::string& content)
    {
        std::ofstream(_book + "/" + name, std::ios::binary) << content;
        return Url::file(_book + "/" + name);
    }
    // Pages whose files say their numbers, from 1.
    std::vector<Url> writePages(int count)
    {
        std::vector<Url> pages;
        for (int i = 1; i <= count; ++i)
            pages.push_back(write("page" + std::to_string(i) + ".xhtml", page("<h1>" + std::to_string(i) + "</h1>")));
        return pages;
    }

    // Opens the pages in a window of this size, and waits for the first one.
    void open(const std::vector<Url>& pages, const ScriptResources& scripts = ownScript, double width = 900,
        double height = 700, const std::optional<std::vector<ContentsEntry>>& contents = std::nullopt)
    {
        auto made = _windows.makeFixedWindow();
        _window = static_cast<FixedWindowGtk*>(made.get());
        _controller = std::make_unique<FixedLayoutWindowController>(std::move(made), _state, _runLoop, _hub, scripts);
        window().setFrame({ 30, 40, width, height });
        window().makeKeyAndOrderFront();
        ASSERT_TRUE(waitUntil([&] { return webView().frame().width > 1; }));
        webView().setBookFolder(_book);
        if (_watchesColors)
            _seen = std::make_unique<SeenColors>(_window->parts().widget<Gtk::Widget>("pagePlace").gobj());
        reader().loadSplits(pages, contents);
        settlePage();
    }
    void settlePage()
    {
        ASSERT_TRUE(waitUntil([&] { return reader().isSettled() && !webView().isHidden(); }));
    }
    // Waits until the page after this one is ready.
    void waitForNextPage()
    {
        ASSERT_TRUE(waitUntil([&] { return dynamic_cast<PreparedPages&>(webView()).isReady(); }));
    }
    void turn(int tag)
    {
        reader().changePage(tag);
        settlePage();
    }

    bool pressInWindow(guint key) { return press(_window->parts().window.window().gobj(), key); }

    Window& window() { return _controller->window(); }
    WebView& webView() { return _controller->webView(); }
    FixedEpubController& reader() { return *_controller->_fixedController(); }
    std::string label() { return _window->locLabel().stringValue(); }
    bool missingPageIsShown() { return _window->parts().widget<Gtk::Widget>("missingPage").get_mapped(); }
    std::string evaluate(const std::string& script)
    {
        auto result = std::make_shared<std::optional<std::string>>();
        const auto read
            = [](WebView& view, std::string text, std::shared_ptr<std::optional<std::string>> into) -> Task<void> {
            *into = co_await view.evaluateScript(text);
        };
        const auto task = read(webView(), script, result);
        EXPECT_TRUE(waitUntil([&] { return result->has_value(); })) << script;
        return result->value_or("no answer");
    }
    // What is wrong with how the page lies in its view.
    std::string faults() { return evaluate(pageFaults); }
    void expectNoFaults()
    {
        EXPECT_TRUE(waitUntil([&] { return faults().empty(); })) << faults();
    }
    void expectThatThePageFillsItsView()
    {
        EXPECT_TRUE(waitUntil([&] {
            const auto view = webView().frame();
            return std::abs(view.width / view.height - 0.75) < 0.01
                && evaluate("innerWidth") == std::to_string(int(view.width));
        })) << webView().frame().width
            << " x " << webView().frame().height;
        expectNoFaults();
    }
    // Resizes the window and waits until the page has followed.
    void resizeTo(double width, double height)
    {
        window().setFrame({ 30, 40, width, height });
        auto* const shown = GTK_WIDGET(_window->parts().window.window().gobj());
        const auto hasFollowed = [&] {
            return hasSize(shown, width, height) && evaluate(innerSize) == sizeText(webView().frame())
                && faults().empty();
        };
        EXPECT_TRUE(waitUntil(hasFollowed)) << faults();
    }

    TemporaryFolder _home;
    std::string _book = _home.path("cache/_books/book");
    std::vector<std::string> _logged;
    LogCapture _capture { [this](const std::string& line) { _logged.push_back(line); } };
    GLibRunLoop _runLoop;
    FakeReaderHub _hub;
    ReaderState _state;
    Toplevel _toplevel;
    ReaderWindowFactoryGtk _windows { _home.path("cache"), _toplevel };
    bool _watchesColors = false;
    std::unique_ptr<SeenColors> _seen;
    FixedWindowGtk* _window = nullptr;
    std::unique_ptr<FixedLayoutWindowController> _controller;
};

}

TEST_F(FixedReadingTest, AWindowOf700By560IsFittedTo500By460)
{
    open(writePages(2), statedScript, 700, 560);
    EXPECT_EQ(window().frame(), (Rect { 30, 40, 500, 460 }));
    // What the toolkit draws around the window is left out of the widget's own size, the same on each side.
    auto& shown = _window->parts().window.window();
    EXPECT_TRUE(waitUntil([&] { return shown.get_width() <= 500 && shown.get_width() - shown.get_height() == 40; }));
    turn(1);
    EXPECT_EQ(window().frame(), (Rect { 30, 40, 500, 460 }));
}

TEST_F(FixedReadingTest, TheWindowIsFittedSoThatThePageFillsItsView)
{
    open(writePages(1));
    expectThatThePageFillsItsView();
    EXPECT_LT(window().frame().width, 900);
}

TEST_F(FixedReadingTest, TheWindowIsFittedWhereTheDesktopEnlargesText)
{
    const auto settings = Gtk::Settings::get_default();
    const int before = settings->property_gtk_xft_dpi();
    settings->property_gtk_xft_dpi() = 96 * 1024 * 3 / 2;
    open(writePages(1));
    expectThatThePageFillsItsView();
    EXPECT_LT(window().frame().width, 900);
    settings->property_gtk_xft_dpi() = before;
}

TEST_F(FixedReadingTest, ThePageFollowsTheWindow)
{
    open(writePages(2));
    resizeTo(1100, 500);
    resizeTo(500, 800);
    turn(1);
    expectNoFaults();
}

TEST_F(FixedReadingTest, TheDividerScalesNothingUntilTheNextPage)
{
    // Wide enough for the contents to be shown.
    open(writePages(2), ownScript, 1200, 700);
    resizeTo(1200, 700);
    const auto before = evaluate("Xscale");
    const auto width = webView().frame().width;
    _window->parts().mainSplitView.dragDivider(450);
    ASSERT_TRUE(waitUntil([&] { return webView().frame().width < width; }));
    ASSERT_TRUE(waitUntil([&] { return evaluate("innerWidth") == std::to_string(int(webView().frame().width)); }));
    settlePage();
    EXPECT_EQ(evaluate("Xscale"), before);
    turn(1);
    expectNoFaults();
}

TEST_F(FixedReadingTest, APageThatIsReadyIsShownAtOnce)
{
    open(writePages(4));
    for (int number = 2; number <= 4; ++number) {
        waitForNextPage();
        reader().changePage(1);
        EXPECT_FALSE(webView().isHidden());
        EXPECT_EQ(label(), std::to_string(number) + " of 4");
        EXPECT_EQ(evaluate("$('h1').text()"), std::to_string(number));
        EXPECT_EQ(faults(), "");
        if (number == 4)
            break;
    }
    turn(0);
    EXPECT_EQ(evaluate("$('h1').text()"), "3");
}

TEST_F(FixedReadingTest, APageIsNeverSeenUnscaled)
{
    // A page that is several times larger than its view: only its left half is seen where it is not scaled.
    constexpr std::uint32_t red = 0xFF0000;
    constexpr std::uint32_t blue = 0x0000FF;
    const auto halves
        = page("<a id='link' href='page5.xhtml'>Five</a><div style='position:absolute;width:1500px;"
               "height:4000px;background:#f00'></div><div style='position:absolute;left:1500px;width:1500px;"
               "height:4000px;background:#00f'></div>",
            "width=3000, height=4000");
    std::vector<Url> pages;
    for (int i = 1; i <= 6; ++i)
        pages.push_back(write("page" + std::to_string(i) + ".xhtml", halves));
    _watchesColors = true;
    open(pages);
    const auto blueIsSeenOnly = [&](const char* when) {
        SCOPED_TRACE(when);
        EXPECT_TRUE(waitUntil([&] { return _seen->colors().contains(blue); }));
        EXPECT_FALSE(_seen->colors().contains(red));
        _seen = std::make_unique<SeenColors>(_window->parts().widget<Gtk::Widget>("pagePlace").gobj());
        _window->parts().widget<Gtk::Widget>("pagePlace").queue_draw();
    };
    blueIsSeenOnly("at the first page");
    waitForNextPage();
    turn(1);
    blueIsSeenOnly("after a turn");
    turn(1);
    blueIsSeenOnly("after another turn");
    reader().goToLastPage();
    settlePage();
    blueIsSeenOnly("at the last page");
    turn(0);
    blueIsSeenOnly("after a turn back");
    evaluate("document.getElementById('link').click()");
    EXPECT_TRUE(waitUntil([&] { return webView().isHidden(); }));
    settlePage();
    blueIsSeenOnly("after a link");
}

TEST_F(FixedReadingTest, AFieldInThePageGetsItsKeys)
{
    open({ write("page1.xhtml", page("<input id='field'/>")), write("page2.xhtml", page("")) });
    const auto takesKeys = [this] { return _window->parts().page.takesKeys(); };
    // Only what the person does gives a control the keys.
    ASSERT_EQ(std::system("xdotool mousemove 400 300 key Tab"), 0);
    ASSERT_TRUE(waitUntil(takesKeys));
    EXPECT_FALSE(pressInWindow(GDK_KEY_Right));
    evaluate("document.getElementById('field').blur()");
    ASSERT_TRUE(waitUntil([&] { return !takesKeys(); }));
    EXPECT_TRUE(pressInWindow(GDK_KEY_Right));
    EXPECT_TRUE(waitUntil([&] { return label() == "2 of 2"; }));
}

TEST_F(FixedReadingTest, AFieldInAPageThatWasReadyGetsItsKeys)
{
    open({ write("page1.xhtml", page("")), write("page2.xhtml", page("<input id='field'/>")) });
    const auto takesKeys = [this] { return _window->parts().page.takesKeys(); };
    waitForNextPage();
    turn(1);
    EXPECT_FALSE(takesKeys());
    // Only what the person does gives a control the keys.
    ASSERT_EQ(std::system("xdotool mousemove 400 300 key Tab"), 0);
    ASSERT_TRUE(waitUntil(takesKeys));
    EXPECT_FALSE(pressInWindow(GDK_KEY_Left));
    turn(0);
    EXPECT_FALSE(takesKeys());
    EXPECT_TRUE(pressInWindow(GDK_KEY_Right));
}

TEST_F(FixedReadingTest, FastTurnsEndOnTheirPage)
{
    open(writePages(12));
    for (int i = 0; i < 8; ++i)
        reader().changePage(1);
    for (int i = 0; i < 3; ++i)
        reader().changePage(0);
    settlePage();
    EXPECT_EQ(label(), "6 of 12");
    EXPECT_EQ(evaluate("$('h1').text()"), "6");
    expectNoFaults();
}

TEST_F(FixedReadingTest, ALastPageThatIsMissingSaysSo)
{
    auto pages = writePages(2);
    pages.push_back(Url::file(_book + "/none.xhtml"));
    open(pages);
    reader().goToLastPage();
    EXPECT_TRUE(waitUntil([&] { return missingPageIsShown(); }));
    EXPECT_EQ(label(), "3 of 3");
    EXPECT_TRUE(webView().isHidden());
    turn(0);
    EXPECT_FALSE(missingPageIsShown());
    EXPECT_EQ(evaluate("$('h1').text()"), "2");
    waitForNextPage();
}

TEST_F(FixedReadingTest, AMissingFirstPageSaysSoAndTheNextOneIsShown)
{
    auto pages = writePages(2);
    pages.insert(pages.begin(), Url::file(_book + "/none.xhtml"));
    auto made = _windows.makeFixedWindow();
    _window = static_cast<FixedWindowGtk*>(made.get());
    _controller = std::make_unique<FixedLayoutWindowController>(std::move(made), _state, _runLoop, _hub, ownScript);
    window().setFrame({ 0, 0, 900, 700 });
    window().makeKeyAndOrderFront();
    webView().setBookFolder(_book);
    reader().loadSplits(pages, std::nullopt);
    EXPECT_TRUE(waitUntil([&] { return missingPageIsShown(); }));
    turn(1);
    EXPECT_EQ(evaluate("$('h1').text()"), "1");
    expectNoFaults();
}

TEST_F(FixedReadingTest, ABookOfTwoThousandPagesIsReadToItsEnd)
{
    open(writePages(2000));
    reader().goToLastPage();
    settlePage();
    EXPECT_EQ(label(), "2000 of 2000");
    EXPECT_EQ(evaluate("$('h1').text()"), "2000");
    turn(1);
    turn(0);
    EXPECT_EQ(label(), "1999 of 2000");
    expectNoFaults();
}

TEST_F(FixedReadingTest, ALinkInThePageShowsItsPageScaled)
{
    auto pages = writePages(3);
    write("page1.xhtml", page("<a id='link' href='page3.xhtml#top'>Three</a>"));
    open(pages);
    evaluate("document.getElementById('link').click()");
    EXPECT_TRUE(waitUntil([&] { return label() == "3 of 3"; }));
    settlePage();
    expectNoFaults();
    turn(0);
    EXPECT_EQ(evaluate("$('h1').text()"), "2");
}

TEST_F(FixedReadingTest, ALinkWithinThePageLeavesItInPlace)
{
    write("page1.xhtml",
        page("<a id='link' href='#far'>Far</a><div id='far' style='position:absolute;top:4000px'>Far</div>"));
    open({ Url::file(_book + "/page1.xhtml") });
    evaluate("document.getElementById('link').click()");
    const auto line
        = "didChangeLocationWithinPageForFrame--> URL: " + Url::file(_book + "/page1.xhtml").text() + "#far";
    EXPECT_TRUE(waitUntil([&] { return std::find(_logged.begin(), _logged.end(), line) != _logged.end(); }));
    EXPECT_TRUE(waitUntil([&] { return faults().empty() && evaluate("scrollY") == "0"; }));
}

TEST_F(FixedReadingTest, ALinkToAServerOpensInTheBrowserAndGoesOn)
{
    const WitnessServer server;
    auto pages = writePages(2);
    write("page1.xhtml", page("<a id='link' href='" + server.url("far") + "'>Far</a>"));
    open(pages);
    evaluate("document.getElementById('link').click()");
    EXPECT_TRUE(waitUntil([&] { return !_hub.opened.empty(); }));
    EXPECT_EQ(_hub.opened, std::vector<Url> { *Url::fromString(server.url("far")) });
    EXPECT_TRUE(waitUntil([&] { return server.heard("GET /far "); }));
    turn(1);
    EXPECT_EQ(label(), "2 of 2");
}

TEST_F(FixedReadingTest, WithoutTheScriptsThePageIsShownAndTheWindowKeepsItsSize)
{
    open(writePages(2), [](const std::string&) { return std::string(); });
    EXPECT_EQ(window().frame(), (Rect { 30, 40, 900, 700 }));
    turn(1);
    EXPECT_EQ(label(), "2 of 2");
}

TEST_F(FixedReadingTest, DrawingsAndImagesArePages)
{
    std::vector<Url> pages = writePages(1);
    pages.push_back(write("two.svg",
        "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 300 900'><rect width='300' "
        "height='900' fill='#abc'/></svg>"));
    pages.push_back(write("three.svg", "<svg xmlns='http://www.w3.org/2000/svg'><circle r='90'/></svg>"));
    pages.push_back(write("four.xhtml", "no & XML <"));
    open(pages);
    for (int number = 2; number <= 4; ++number) {
        turn(1);
        EXPECT_EQ(label(), std::to_string(number) + " of 4");
        expectNoFaults();
    }
}

}
