#include "page_view/gtk/PageView.hpp"
#include "tests/engine/FramesSeen.hpp"
#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <gtkmm/dropdown.h>
#include <gtkmm/togglebutton.h>

#include <algorithm>

namespace pagora::test {

namespace {

class ReadingDisplay : public ReadingTest {
protected:
    void read(const std::string& madeBook)
    {
        import(writeMadeBook(madeBook, _home.path()));
        ASSERT_EQ(bookCount(), 1u);
        open();
    }
    // Opens the book and records the page from its first frame.
    std::unique_ptr<FramesSeen> openWatched(int theme)
    {
        import(writeMadeBook("LongChapters", _home.path()));
        state().settings.curColorOption = theme;
        _program->controller.sendDoubleClick(book());
        auto frames = std::make_unique<FramesSeen>(window().parts().widget<Gtk::Widget>("bgView"));
        settle();
        untilDrawn(*frames);
        return frames;
    }
    // Waits until the current layout is drawn.
    void untilDrawn(FramesSeen& frames)
    {
        evaluate("var drawn = false; requestAnimationFrame(() => requestAnimationFrame(() => "
                 "requestAnimationFrame(() => drawn = true))); 0");
        EXPECT_TRUE(waitUntil([&] { return evaluate("drawn") == "true"; }));
        const auto before = frames.count();
        window().parts().widget<Gtk::Widget>("bgView").queue_draw();
        EXPECT_TRUE(waitUntil([&] { return frames.count() > before; }));
    }
    void chooseTheme(const char* button)
    {
        window().parts().widget<Gtk::ToggleButton>(button).set_active(true);
        settle();
    }
    // Returns whether the offset is a whole number of pages, or the end of the strip.
    bool isOnGrid()
    {
        const auto offset = number("window.pageXOffset");
        const auto width = number("window.innerWidth");
        return offset % width == 0 || offset == number("document.body.scrollWidth") - width;
    }
    void expectOnGrid(const std::string& when)
    {
        ASSERT_EQ(number("window.innerWidth"), static_cast<long long>(webView().frame().width)) << when;
        EXPECT_TRUE(isOnGrid()) << when << ": at " << number("window.pageXOffset") << ", columns of "
                                << reader().pageWidth();
        EXPECT_EQ(number("Math.round(document.body.getBoundingClientRect().top)"), 0) << when;
    }
    // Waits for a change of the page's size.
    void resizeTo(int width, int height)
    {
        const auto before = webView().frame();
        window().parts().window.setFrame({ 0, 0, static_cast<double>(width), static_cast<double>(height) });
        EXPECT_TRUE(waitUntil([&] { return webView().frame() != before; }));
    }
    const SpokenPage& spoken() { return dynamic_cast<PageView&>(webView()).spoken(); }
    std::string visibleEdge() { return evaluate("Math.round(document.body.getBoundingClientRect().right)"); }
};

// Long books, made by the tests or from PAGORA_CORPUS.
class ReadingDisplayOf : public ReadingDisplay, public testing::WithParamInterface<std::string> {
protected:
    void readIt()
    {
        if (GetParam().front() != '/')
            return read(GetParam());
        import(GetParam());
        ASSERT_EQ(bookCount(), 1u);
        open();
    }
};

}

TEST_F(ReadingDisplay, DarkThemeShowsNoWhiteFrameFromOpeningOn)
{
    const auto frames = openWatched(2);
    for (const std::size_t chapter : { 1, 2, 0 }) {
        goToChapter(chapter);
        untilDrawn(*frames);
    }
    turn(1);
    untilDrawn(*frames);
    EXPECT_GE(frames->count(), 5);
    EXPECT_LT(frames->maxWhite(), 0.1);
}

TEST_F(ReadingDisplay, WhiteFramesAreSeenWhereThePageIsWhite)
{
    const auto frames = openWatched(1);
    EXPECT_GT(frames->maxWhite(), 0.9);
}

TEST_F(ReadingDisplay, ThemesChangeWithoutAFlash)
{
    const auto frames = openWatched(2);
    chooseTheme("sepiaTheme");
    untilDrawn(*frames);
    goToChapter(1);
    untilDrawn(*frames);
    chooseTheme("blackTheme");
    untilDrawn(*frames);
    EXPECT_LT(frames->maxWhite(), 0.1);
    chooseTheme("whiteTheme");
    untilDrawn(*frames);
    EXPECT_GT(frames->maxWhite(), 0.9);
}

TEST_F(ReadingDisplay, TheBarsHaveTheBooksOwnPaperInTheOriginalTheme)
{
    EpubBuilder book;
    book.member("OEBPS/chapter1.xhtml", chapterOf(3, "", "", " style='background:#fff6e0'"));
    import(book.write(_home.path("cream.epub")));
    open();
    auto& stage = window().parts().widget<Gtk::Widget>("stage");
    EXPECT_TRUE(waitUntil([&] { return stage.has_css_class("own-paper"); }));
    chooseTheme("blackTheme");
    EXPECT_FALSE(stage.has_css_class("own-paper"));
    chooseTheme("whiteTheme");
    EXPECT_TRUE(waitUntil([&] { return stage.has_css_class("own-paper"); }));
}

TEST_F(ReadingDisplay, FontSizeAndColumnsChangeWithoutAFlash)
{
    const auto frames = openWatched(2);
    window().parts().widget<Gtk::DropDown>("fontMenu").set_selected(0);
    settle();
    window().fontSizeSlider().setFloatValue(1);
    reader().changeFontSize(1);
    settle();
    for (int i = 0; i < 3; ++i) {
        reader().changeWidth();
        settle();
        untilDrawn(*frames);
    }
    resizeTo(900, 600);
    settle();
    untilDrawn(*frames);
    EXPECT_LT(frames->maxWhite(), 0.1);
}

TEST_P(ReadingDisplayOf, StaysOnItsPagesThroughAHundredSizes)
{
    readIt();
    turn(1);
    turn(1);
    for (int i = 0; i < 100; ++i)
        resizeTo(700 + i * 37 % 500, 420 + i * 53 % 380);
    const auto hasLastSize = [this] {
        const auto width = webView().frame().width;
        return reader().pageWidth() == PageGeometry::pageWidthFor(width, 2)
            && number("window.innerWidth") == static_cast<long long>(width);
    };
    ASSERT_TRUE(waitUntil(hasLastSize));
    settle();
    expectOnGrid("after the sizes");
    turn(1);
    expectOnGrid("a page on");
    turn(0);
    expectOnGrid("a page back");
    EXPECT_FALSE(isLogged("fail"));
}

TEST_P(ReadingDisplayOf, StaysOnItsPagesThroughFiftyOptions)
{
    readIt();
    turn(1);
    turn(1);
    constexpr const char* themes[] = { "blackTheme", "sepiaTheme", "whiteTheme" };
    for (int i = 0; i < 50; ++i) {
        if (i % 4 == 0)
            chooseTheme(themes[i / 4 % 3]);
        else if (i % 4 == 1)
            window().parts().widget<Gtk::DropDown>("fontMenu").set_selected(i / 4 % 6);
        else if (i % 4 == 2)
            reader().changeFontSize(0.75F + static_cast<float>(i % 7) / 4);
        else
            reader().changeWidth();
        settle();
        expectOnGrid("after change " + std::to_string(i));
    }
    turn(1);
    expectOnGrid("a page on");
    turn(0);
    expectOnGrid("a page back");
    EXPECT_FALSE(isLogged("fail"));
}

TEST_F(ReadingDisplay, RightToLeftPagesRunToTheLeft)
{
    read("RightToLeft");
    const auto width = number("window.innerWidth");
    EXPECT_EQ(visibleEdge(), std::to_string(width));
    const auto first = place().text;
    turn(1);
    EXPECT_EQ(number("window.pageXOffset"), width);
    EXPECT_EQ(visibleEdge(), std::to_string(2 * width));
    EXPECT_NE(place().text, first);
    turn(0);
    EXPECT_EQ(place().text, first);
}

TEST_F(ReadingDisplay, ArrowKeysGoTheWayOfThePages)
{
    read("RightToLeft");
    auto* const keys = window().parts().window.window().gobj();
    const auto width = number("window.innerWidth");
    press(keys, GDK_KEY_Left);
    EXPECT_TRUE(waitUntil([this] { return reader().readAmount() > 0; }));
    settle();
    EXPECT_EQ(number("window.pageXOffset"), width);
    press(keys, GDK_KEY_Right);
    EXPECT_TRUE(waitUntil([this] { return reader().readAmount() == 0; }));
    settle();
    EXPECT_EQ(number("window.pageXOffset"), 0);
}

TEST_F(ReadingDisplay, SliderSeeksInARightToLeftChapter)
{
    read("RightToLeft");
    const auto width = number("window.innerWidth");
    moveSlider(0.01);
    EXPECT_EQ(number("window.pageXOffset"), width);
    EXPECT_EQ(visibleEdge(), std::to_string(2 * width));
}

TEST_F(ReadingDisplay, TextOfThePageIsOfferedAndFollowsTheTurns)
{
    read("LongChapters");
    ASSERT_TRUE(waitUntil([&] { return spoken().text().starts_with("Top\nParagraph 0. All happy"); }))
        << spoken().text();
    EXPECT_TRUE(waitUntil([&] { return spoken().name() == "Made, a.xhtml"; })) << spoken().name();
    EXPECT_EQ(spoken().text().find("Paragraph 60."), std::string::npos);
    turn(1);
    const auto shown = place().text.substr(0, 20);
    const auto isSpoken
        = [&] { return spoken().text().find(shown) != std::string::npos && !spoken().text().starts_with("Top"); };
    EXPECT_TRUE(waitUntil(isSpoken)) << spoken().text();
    goToChapter(1);
    EXPECT_TRUE(
        waitUntil([&] { return spoken().name() == "Made, b.xhtml" && spoken().text().starts_with("A column."); }));
}

TEST_F(ReadingDisplay, TextOfARightToLeftPageIsOffered)
{
    read("RightToLeft");
    EXPECT_TRUE(waitUntil([&] { return spoken().text().starts_with("Paragraph 0."); })) << spoken().text();
}

TEST_F(ReadingDisplay, SelectedTextIsCopied)
{
    read("LongChapters");
    turn(1);
    const auto before = place();
    webView().makeFirstResponder();
    evaluate("getSelection().selectAllChildren(document.getElementById('last')); 0");
    auto* const view = dynamic_cast<PageView&>(webView()).engineView();
    webkit_web_view_execute_editing_command(view, WEBKIT_EDITING_COMMAND_COPY);
    EXPECT_TRUE(waitUntil([&] { return clipboard() == "The last line."; })) << clipboard();
    EXPECT_EQ(place(), before);
}

namespace {

std::string nameOf(const testing::TestParamInfo<std::string>& book)
{
    return readingTestName(book.param);
}

std::vector<std::string> longCorpusBooks()
{
    auto books = corpusBooks();
    std::erase_if(books, [](const auto& path) { return path.find("childrens-literature") == std::string::npos; });
    return books;
}

INSTANTIATE_TEST_SUITE_P(Made, ReadingDisplayOf, testing::Values("LongChapters", "RightToLeft"), nameOf);
INSTANTIATE_TEST_SUITE_P(Corpus, ReadingDisplayOf, testing::ValuesIn(longCorpusBooks()), nameOf);

}

}
