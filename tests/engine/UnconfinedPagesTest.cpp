// Pages without confinement of the engine's processes: the reader's scripts run, those of the book do not, by any
// method.

#include "tests/engine/PageViewTest.hpp"

namespace pagora::test {

namespace {

struct Way {
    const char* name;
    const char* head;
    const char* body;
};

// Ways for a book to run a script. Each changes the title of the page.
const Way ways[] = {
    { "a script", "<script>document.title = 'ran'</script>", "" },
    { "a script of the book's folder", "<script src='own.js'></script>", "" },
    { "a module", "<script type='module'>document.title = 'ran'</script>", "" },
    { "a script as data", "<script src='data:text/javascript,document.title=%22ran%22'></script>", "" },
    { "an attribute of an image", "", "<img src='missing.png' onerror='document.title = \"ran\"'/>" },
    { "an attribute of the body", "", "<svg xmlns='http://www.w3.org/2000/svg' onload='document.title = \"ran\"'/>" },
    { "a style that ends", "<style>@keyframes a { from { opacity: 0 } } p { animation: a 0.01s }</style>",
        "<p onanimationend='document.title = \"ran\"'>Text</p>" },
    { "a script in a drawing", "",
        "<svg xmlns='http://www.w3.org/2000/svg'><script>document.title = 'ran'</script></svg>" },
    { "an animation of an attribute", "",
        "<svg xmlns='http://www.w3.org/2000/svg'><image href='missing.png'><set attributeName='onerror' "
        "to='document.title = \"ran\"'/></image></svg>" },
    { "a frame of text", "", "<iframe srcdoc='&lt;script>parent.document.title = \"ran\"&lt;/script>'></iframe>" },
    { "a frame of a script", "", "<iframe src='javascript:parent.document.title = \"ran\"'></iframe>" },
    { "a frame of the book", "", "<iframe src='frame.html' style='width:50px'></iframe>" },
    { "an object of the book", "", "<object data='frame.svg' type='image/svg+xml'></object>" },
    { "an object of a script", "", "<object data='javascript:parent.document.title = \"ran\"'></object>" },
    { "a refresh", "<meta http-equiv='refresh' content='0;url=javascript:document.title=%22ran%22'/>", "" },
    { "a link", "", "<a id='press' href='javascript:document.title=%22ran%22'>Link</a>" },
    { "a form", "",
        "<iframe name='inner'></iframe><form target='inner' "
        "action='javascript:parent.document.title=%22ran%22'><button id='press'>Send</button></form>" },
};

}

class UnconfinedPagesTest : public PageViewTest {
protected:
    void SetUp() override
    {
        _confinement = Confinement::None;
        show(PageKind::Columns);
        write("own.js", "document.title = 'ran'");
        write("frame.html", "<script>parent.document.title = 'ran'</script><p onclick='1'>Frame</p>");
        write("frame.svg",
            "<svg xmlns='http://www.w3.org/2000/svg'><script>parent.document.title = 'ran'</script></svg>");
    }

    // Loads the page completely, clicks its controls, and returns the page's title.
    std::string titleAfter(const Way& way)
    {
        loadCompletely(write("chapter.xhtml",
            "<html xmlns='http://www.w3.org/1999/xhtml'><head><title>Chapter</title>" + std::string(way.head)
                + "</head><body><p>Text</p>" + way.body + "</body></html>"));
        evaluate("document.getElementById('press')?.click()");
        settle();
        // Deferred scripts of the page run before this.
        evaluate("var over = false; setTimeout(() => { over = true; }, 50); 0");
        EXPECT_TRUE(waitUntil([&] { return evaluate("over") == "true"; }));
        return evaluate("document.title");
    }
};

TEST_F(UnconfinedPagesTest, RunNoScriptOfTheBook)
{
    for (const auto& way : ways) {
        SCOPED_TRACE(way.name);
        EXPECT_EQ(titleAfter(way), "Chapter");
    }
}

TEST_F(UnconfinedPagesTest, RunTheReadersScripts)
{
    loadDocument(paragraphs(100));
    layOut(2);
    EXPECT_GT(number("document.body.scrollWidth"), 800);
    evaluate("window.scrollTo(1600, 0);");
    settle();
    EXPECT_EQ(evaluate("window.pageXOffset"), "1600");
    EXPECT_EQ(evaluate("eval('1 + 1')"), "2");
}

TEST_F(UnconfinedPagesTest, ShowTheBooksPicturesAndStyles)
{
    write("red.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='30' height='20'/>");
    write("own.css", "p { font-weight: 900 }");
    loadCompletely(write("chapter.xhtml",
        document("<p id='p'>Text</p><img id='i' src='red.svg'/>", "<link rel='stylesheet' href='own.css'/>")));
    EXPECT_EQ(evaluate("document.getElementById('i').naturalWidth"), "30");
    EXPECT_EQ(evaluate("getComputedStyle(document.getElementById('p')).fontWeight"), "900");
}

TEST_F(UnconfinedPagesTest, StayWithoutScriptsWithAnotherBook)
{
    _view->setBookFolder(_book);
    EXPECT_EQ(titleAfter(ways[0]), "Chapter");
}

TEST_F(UnconfinedPagesTest, ReadNoFileOutsideTheBook)
{
    const auto secret = writeOutside("secret.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='30' height='20'/>");
    loadCompletely(write("chapter.xhtml", document("<img id='i' src='" + secret.text() + "'/>")));
    EXPECT_EQ(evaluate("document.getElementById('i').naturalWidth"), "0");
}

// Shows that the test above can detect scripts.
TEST_F(UnconfinedPagesTest, WouldRunScriptsWhereTheyAreConfined)
{
    _confinement = Confinement::Full;
    show(PageKind::Columns);
    int count = 0;
    for (const auto& way : ways) {
        SCOPED_TRACE(way.name);
        count += titleAfter(way) == "ran" ? 1 : 0;
    }
    EXPECT_GT(count, 8);
}

}
