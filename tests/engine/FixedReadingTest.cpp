// The fixed-layout reader in its real window, with the real engine.

#include "tests/engine/FixedReadingTest.hpp"

#include "tests/support/WitnessServer.hpp"

namespace pagora::test {

TEST_F(FixedReadingTest, AWindowOf700By560IsFittedTo500By460)
{
    open(writePages(2), statedScript, 700, 560);
    EXPECT_EQ(window().frame(), (Rect { 30, 40, 500, 460 }));
    // The window's decoration is not part of the widget's size. It has the same width on each side.
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
    // The window is wide enough for the contents.
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
    // The page is larger than its view: without scaling only its left half is visible.
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
    // Only a real key press by the user focuses a control.
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
    // Only a real key press by the user focuses a control.
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
