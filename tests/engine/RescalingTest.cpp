// The scripts that scale fixed-layout pages, in the real engine.

#include "base/Resource.hpp"
#include "tests/engine/PageFaults.hpp"
#include "tests/engine/PageViewTest.hpp"
#include "tests/support/EpubBuilder.hpp"

namespace pagora::test {

namespace {

constexpr auto mark = "<div style='position:absolute;left:0;top:0;width:100%;height:100%;background:#def'></div>";

std::string viewport(const std::string& content)
{
    return "<meta name='viewport' content='" + content + "'/><style>body{margin:0}</style>";
}

class RescalingTest : public PageViewTest {
protected:
    RescalingTest() { show(PageKind::Fixed); }

    // Loads the page and scales it as the reader does.
    void showPage(const Url& url)
    {
        loadCompletely(url);
        for (const char* name : { "jquery-1.7.1.min", "rescaling" })
            evaluate(resourceBytes(std::string("/org/pagora/Pagora/scripts/") + name + ".js").value_or("missing"));
        evaluate("init()");
        evaluate("scale()");
    }
    void showDocument(const std::string& body, const std::string& head = {}, const std::string& attributes = {})
    {
        showPage(write("page.xhtml", document(body, head, attributes)));
    }
    // Loads a file with this content. Its type follows from the name.
    void showFile(const std::string& name, const std::string& content) { showPage(write(name, content)); }

    double real(const std::string& script) { return std::atof(evaluate(script).c_str()); }
    std::string ownSize() { return evaluate("getWidth() + ' x ' + getHeight()"); }

    // Expects that the page has this size and is positioned correctly in the view.
    void expectPage(int pageWidth, int pageHeight)
    {
        EXPECT_EQ(ownSize(), std::to_string(pageWidth) + " x " + std::to_string(pageHeight));
        expectFitted();
    }
    void expectFitted() { EXPECT_EQ(evaluate(pageFaults), ""); }
    void resizeTo(int newWidth, int newHeight)
    {
        _view->widget().set_size_request(newWidth, newHeight);
        _window.set_default_size(newWidth, newHeight);
        EXPECT_TRUE(waitUntil([&] { return number("innerWidth") == newWidth && number("innerHeight") == newHeight; }));
        settle();
    }
};

}

TEST_F(RescalingTest, ThePageIsAsLargeAsItsViewport)
{
    showDocument(mark, viewport("width=600, height=800"));
    expectPage(600, 800);
    EXPECT_EQ(evaluate("Xscale"), "0.75");
    EXPECT_EQ(evaluate("getWidth( 'win' ) + ' x ' + getHeight( 'win' )"), "800 x 600");
}

TEST_F(RescalingTest, TheViewportIsReadInAnyOrderUnitAndSpelling)
{
    const std::pair<const char*, const char*> spellings[] = {
        { "height=800,width=600", "600 x 800" },
        { "initial-scale=1; HEIGHT = 800px ; Width = 600px", "600 x 800" },
        { "width=600 height=800", "600 x 800" },
        { "width=600height=800", "600 x 800" },
        { "width:6in, height:600pt", "576 x 800" },
        { "width=600.4,height=1e3,min-width=3,device-height=5", "600 x 1000" },
    };
    for (const auto& [content, size] : spellings) {
        showDocument(mark, viewport(content));
        EXPECT_EQ(ownSize(), size) << content;
    }
}

TEST_F(RescalingTest, AMissingHeightIsTakenFromTheLayout)
{
    showDocument("<div style='height:300px'>Text</div>", viewport("width=600"));
    expectPage(600, 300);
}

TEST_F(RescalingTest, AMissingWidthIsTakenFromTheLayout)
{
    showDocument("<div style='width:1600px'>Text</div>", viewport("height=500"));
    expectPage(1600, 500);
}

TEST_F(RescalingTest, AnUnusableViewportCountsAsNone)
{
    for (const char* content :
        { "width=0, height=0", "width=1e9, height=1e9", "width=device-width, height=device-height",
            "width=-5, height=-7", "width=100%,height=100%", "nonsense", "" }) {
        showDocument("<div style='width:1200px;height:400px'>Text</div>", viewport(content));
        EXPECT_EQ(ownSize(), "1200 x 600") << content;
        expectFitted();
    }
}

TEST_F(RescalingTest, APageWithoutAViewportIsAsLargeAsItsLayout)
{
    showDocument("<div style='width:500px;height:2400px'>Text</div>", "<style>body{margin:0}</style>");
    expectPage(800, 2400);
}

TEST_F(RescalingTest, AnEmptyPageFillsTheView)
{
    showDocument("");
    expectPage(800, 600);
}

TEST_F(RescalingTest, AnHtmlPageIsScaledToo)
{
    showFile("page.html",
        "<!DOCTYPE html><meta name=VIEWPORT content='width=400,height=1000'><p id=init>Text<img name=body>");
    expectPage(400, 1000);
}

TEST_F(RescalingTest, ADrawingIsAsLargeAsItsViewBox)
{
    showFile("page.svg",
        "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10' viewBox='0,0 300 900'><rect "
        "width='300' height='900'/></svg>");
    expectPage(300, 900);
}

TEST_F(RescalingTest, ADrawingWithoutAViewBoxIsAsLargeAsItSays)
{
    showFile("page.svg",
        "<svg xmlns='http://www.w3.org/2000/svg' width='3in' height='96pt'><rect id='r' width='288' "
        "height='128'/></svg>");
    expectPage(288, 128);
    EXPECT_NEAR(real("document.getElementById('r').getBoundingClientRect().width"), 800, 0.5);
}

TEST_F(RescalingTest, ADrawingWithoutASizeFillsTheView)
{
    showFile("page.svg", "<svg xmlns='http://www.w3.org/2000/svg'><rect width='30' height='30'/></svg>");
    expectPage(800, 600);
}

TEST_F(RescalingTest, APageOfOneDrawingIsAsLargeAsTheDrawing)
{
    showDocument(
        "<div><svg id='s' xmlns='http://www.w3.org/2000/svg' viewBox='0 0 700 1400' width='100%'><rect width='9' "
        "height='9'/></svg></div><script></script>");
    expectPage(700, 1400);
    EXPECT_NEAR(real("document.getElementById('s').getBoundingClientRect().height"), 600, 0.5);
}

TEST_F(RescalingTest, APageOfOneImageIsAsLargeAsTheImage)
{
    write("picture.png", picture(1500, 500, "png"));
    showDocument("<p><img id='i' src='picture.png' width='40'/></p>");
    expectPage(1500, 500);
    EXPECT_NEAR(real("document.getElementById('i').getBoundingClientRect().width"), 800, 0.5);
}

TEST_F(RescalingTest, AnImageFileIsAPage)
{
    showFile("picture.png", picture(500, 1500, "png"));
    expectPage(500, 1500);
    EXPECT_NEAR(real("document.images[0].getBoundingClientRect().height"), 600, 0.5);
    resizeTo(1000, 900);
    expectFitted();
    EXPECT_NEAR(real("document.images[0].getBoundingClientRect().height"), 900, 0.5);
}

TEST_F(RescalingTest, APageThatIsNoXmlIsShownAsFarAsItGoes)
{
    showFile("page.xhtml", "This is < no XML & never was");
    EXPECT_GT(number("getWidth()"), 0);
    expectFitted();
}

TEST_F(RescalingTest, AnotherSizeOfTheViewScalesThePageAgainBeforeItIsDrawn)
{
    showDocument(mark, viewport("width=600, height=800"));
    for (const auto& [newWidth, newHeight] : { std::pair(1000, 400), std::pair(300, 900), std::pair(640, 640) }) {
        resizeTo(newWidth, newHeight);
        expectPage(600, 800);
    }
    // A resize event precedes the drawing in the new size.
    evaluate("var unfitted = 0; (function look() { const box = document.documentElement.getBoundingClientRect();"
             "if (Math.abs(box.height - Math.min(innerHeight, innerWidth * 4 / 3)) > 0.5) ++unfitted;"
             "requestAnimationFrame(look); })();");
    resizeTo(900, 700);
    resizeTo(420, 500);
    settle();
    EXPECT_EQ(number("unfitted"), 0);
}

TEST_F(RescalingTest, TextSizeLeavesThePageItsProportion)
{
    _view->setTextSizeMultiplier(2.5);
    showDocument("<p>Text</p>", viewport("width=600, height=800"));
    expectPage(600, 800);
    _view->setTextSizeMultiplier(0.5);
    evaluate("scale()");
    expectPage(600, 800);
}

TEST_F(RescalingTest, LengthsInThePageCountFromThePage)
{
    showDocument("<div id='a' style='position:fixed;right:0;bottom:0;width:50%;height:25%'></div>",
        viewport("width=600, height=800"));
    evaluate("var part = document.getElementById('a').getBoundingClientRect()");
    EXPECT_NEAR(real("part.width"), 225, 0.5);
    EXPECT_NEAR(real("part.height"), 150, 0.5);
    EXPECT_NEAR(real("part.bottom"), 600, 0.5);
}

TEST_F(RescalingTest, AStyledRootIsPlacedLikeAnyOther)
{
    showDocument(mark,
        viewport("width=600, height=800")
            + "<style>html{margin:40px auto!important;max-width:99px!important;position:relative;left:9px;zoom:3;"
              "transform:rotate(20deg)!important;direction:rtl;writing-mode:vertical-rl}</style>");
    expectPage(600, 800);
}

TEST_F(RescalingTest, APageThatResizesAndScrollsItselfStaysInPlace)
{
    showDocument("<div style='width:3000px;height:3000px'>Text</div><script>function play() {"
                 "document.documentElement.style.cssText = 'transform: scale(4); width: 9000px';"
                 "document.body.style.width = '5000px'; window.resizeTo(10, 10); window.scrollTo(700, 700); }"
                 "window.addEventListener('message', play); </script>",
        viewport("width=600, height=800"));
    evaluate("window.postMessage('play', '*')");
    EXPECT_TRUE(waitUntil([&] { return evaluate("document.body.style.width") == "5000px"; }));
    settle();
    expectPage(600, 800);
    EXPECT_EQ(number("window.scrollY"), 0);
}

TEST_F(RescalingTest, ABookKeepsItsOwnScriptLibrary)
{
    showDocument("<script>var $ = 'mine', jQuery = 'mine', scale = 'mine', Xscale = 'mine';</script><p id='p'>Text</p>"
                 "<script>addEventListener('message', () => document.body.lastChild.previousSibling.textContent = [$, "
                 "jQuery, scale, Xscale].join());</script>",
        viewport("width=600, height=800"));
    EXPECT_EQ(evaluate("$.fn.jquery"), "1.7.1");
    evaluate("window.postMessage('', '*')");
    EXPECT_TRUE(waitUntil([&] { return evaluate("$('#p').text()") == "mine,mine,mine,mine"; }));
}

}
