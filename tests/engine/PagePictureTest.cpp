// The enlarged view of a pressed picture, and pictures in dark themes.

#include "tests/engine/PageViewTest.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <vector>

namespace pagora::test {

namespace {

class PagePictureTest : public PageViewTest {
protected:
    void open(const std::string& around = "{picture}")
    {
        write("picture.png", picture(120, 60, "png", 0));
        const std::string image = "<img id='picture' src='picture.png' alt='A harbour'/>";
        loadCompletely(
            write("chapter.xhtml", document("<p>" + replaced(around, "{picture}", image) + "</p>" + paragraphs(60))));
        layOut(2);
        settle();
    }
    void press() { evaluate("pagoraPressPicture(document.getElementById('picture'))"); }
    bool isShown() { return evaluate("document.querySelectorAll('dialog[data-pagora-picture]').length") == "1"; }
    // Returns the colour in the middle of the picture, as 0xRRGGBB.
    std::uint32_t colorOfPicture()
    {
        const int x = number("(() => { const box = document.getElementById('picture').getBoundingClientRect();"
                             "return Math.round(box.left + box.width / 2); })()");
        const int y = number("(() => { const box = document.getElementById('picture').getBoundingClientRect();"
                             "return Math.round(box.top + box.height / 2); })()");
        settle();
        GdkTexture* taken = nullptr;
        webkit_web_view_get_snapshot(
            _view->engineView(), WEBKIT_SNAPSHOT_REGION_VISIBLE, WEBKIT_SNAPSHOT_OPTIONS_NONE, nullptr,
            [](GObject* view, GAsyncResult* result, gpointer data) {
                *static_cast<GdkTexture**>(data)
                    = webkit_web_view_get_snapshot_finish(reinterpret_cast<WebKitWebView*>(view), result, nullptr);
            },
            &taken);
        EXPECT_TRUE(waitUntil([&] { return taken != nullptr; }));
        if (!taken)
            return 0;
        const auto stride = static_cast<std::size_t>(gdk_texture_get_width(taken));
        std::vector<std::uint32_t> pixels(stride * static_cast<std::size_t>(gdk_texture_get_height(taken)));
        gdk_texture_download(taken, reinterpret_cast<guchar*>(pixels.data()), 4 * stride);
        g_object_unref(taken);
        return pixels.at(static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)) & 0xFFFFFFU;
    }
    // Returns the measures of the page that the reader's arithmetic uses.
    std::string layoutOfPage()
    {
        return evaluate("[document.body.scrollWidth, window.pageXOffset, document.body.innerHTML.length,"
                        "document.getElementById('p30').offsetTop].join()");
    }
};

}

TEST_F(PagePictureTest, APressShowsThePictureAsLargeAsTheView)
{
    open();
    press();
    ASSERT_TRUE(isShown());
    EXPECT_EQ(evaluate("(() => { const box = document.querySelector('dialog img').getBoundingClientRect();"
                       "return [box.left, box.top, box.width, box.height].join(); })()"),
        "0,0,800,600");
}

TEST_F(PagePictureTest, APictureThatIsAFileIsHandedOverWhereTheProgramShowsIt)
{
    std::string file;
    _view->setPictureHandler([&](const std::string& pressed) { file = pressed; });
    open();
    press();
    EXPECT_TRUE(waitUntil([&] { return !file.empty(); }));
    EXPECT_EQ(file, _book + "/picture.png");
    EXPECT_FALSE(isShown());
    evaluate("pagoraShowPictureHere()");
    EXPECT_TRUE(isShown());
}

TEST_F(PagePictureTest, ThePageBelowKeepsItsLayout)
{
    open();
    const auto before = layoutOfPage();
    press();
    EXPECT_EQ(layoutOfPage(), before);
    layOut(2);
    EXPECT_EQ(layoutOfPage(), before);
    EXPECT_TRUE(isShown());
}

TEST_F(PagePictureTest, TheKeyboardIsAtWorkInThePictureUntilItIsClosed)
{
    open();
    _view->makeFirstResponder();
    press();
    EXPECT_TRUE(waitUntil([&] { return _view->pageTakesKeys() && _view->pageTakesEscape(); }));
    evaluate("pagoraClosePicture()");
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(waitUntil([&] { return !_view->pageTakesKeys() && !_view->pageTakesEscape(); }));
}

TEST_F(PagePictureTest, ATurnOfThePageTakesThePictureAway)
{
    open();
    press();
    evaluate("window.scrollTo(800, 0);");
    EXPECT_FALSE(isShown());
    EXPECT_EQ(evaluate("window.pageXOffset"), "800");
}

TEST_F(PagePictureTest, APictureInThePlaceOfAnObjectIsShownLargeToo)
{
    open("<object data='none' type='text/none'>{picture}</object>");
    press();
    EXPECT_TRUE(isShown());
}

TEST_F(PagePictureTest, APictureThatAnObjectShowsIsHandedOver)
{
    std::string file;
    _view->setPictureHandler([&](const std::string& pressed) { file = pressed; });
    open("{picture}<object id='object' data='picture.png' type='image/png' width='200' height='100'></object>");
    evaluate("pagoraPressPicture(document.getElementById('object'))");
    EXPECT_TRUE(waitUntil([&] { return !file.empty(); }));
    EXPECT_EQ(file, _book + "/picture.png");
}

TEST_F(PagePictureTest, APictureThatIsALinkStaysOne)
{
    open("<a href='#p9'>{picture}</a>");
    press();
    EXPECT_FALSE(isShown());
}

TEST_F(PagePictureTest, ThePageItselfCannotShowOne)
{
    open();
    evaluate("document.getElementById('picture').click()");
    EXPECT_FALSE(isShown());
}

TEST_F(PagePictureTest, OnADarkPageACanvasHasALightGround)
{
    open("{picture}<canvas id='canvas' width='100' height='50'></canvas>");
    evaluate("document.body.style.backgroundColor = '#000';");
    const auto shadow = evaluate("getComputedStyle(document.getElementById('canvas')).boxShadow");
    EXPECT_NE(shadow.find("rgb(255, 255, 255)"), std::string::npos) << shadow;
}

TEST_F(PagePictureTest, OnADarkPageAPictureHasALightGround)
{
    open();
    const std::string shadow = "getComputedStyle(document.getElementById('picture')).boxShadow";
    EXPECT_EQ(evaluate(shadow), "none");
    evaluate("var all = document.all;for (var i = 0; i < all.length; i++) {all[i].style.background = 'none';}"
             "document.body.style.backgroundColor = '#000';");
    EXPECT_NE(evaluate(shadow).find("rgb(255, 255, 255)"), std::string::npos);
    EXPECT_EQ(colorOfPicture(), 0xFFFFFFU);
    EXPECT_EQ(evaluate("getComputedStyle(document.getElementById('picture')).backgroundColor"), "rgba(0, 0, 0, 0)");
    evaluate("document.body.style.backgroundColor = '#FBF0D9';");
    EXPECT_EQ(evaluate(shadow), "none");
}

}
