#include "tests/engine/PageViewTest.hpp"

#include <filesystem>

namespace pagora::test {

// Tests what a page of a book can access. The canaries are outside the book's folder.
class PageConfinementTest : public PageViewTest {
protected:
    // Returns whether `script` returns "reached" in a loaded page with this body and head.
    std::string outcome(const std::string& body, const std::string& head, const std::string& script)
    {
        loadCompletely(write("chapter.xhtml", document(body, head)));
        return evaluate(script);
    }
    std::string image() const { return "<svg xmlns='http://www.w3.org/2000/svg' width='77' height='7'></svg>"; }
};

TEST_F(PageConfinementTest, ABookHasItsOwnStylesImagesAndScripts)
{
    write("parts/style.css", "p{color:rgb(1,2,3)}");
    write("parts/code.js", "document.title = 'ran'");
    write("parts/an image.svg", image());
    loadCompletely(write("text/chapter.xhtml",
        document("<p>x</p><img src='../parts/an%20image.svg'/>",
            "<link rel='stylesheet' href='../parts/style.css'/><script src='../parts/code.js'></script>")));
    EXPECT_EQ(evaluate("getComputedStyle(document.querySelector('p')).color"), "rgb(1, 2, 3)");
    EXPECT_EQ(evaluate("document.title"), "ran");
    EXPECT_EQ(evaluate("document.querySelector('img').naturalWidth"), "77");
}

// A critical message of the engine aborts the tests.
TEST_F(PageConfinementTest, AFolderForBooksThatCannotBeMadeIsLeftOut)
{
    const auto file = writeOutside("file", "x").path();
    PageEngine engine({ file + "/books", _folder.path("other-caches") });
    EXPECT_TRUE(engine.makePageView(PageKind::Columns));
}

TEST_F(PageConfinementTest, NoImageFromOutside)
{
    const auto url = writeOutside("canary.svg", image()).text();
    EXPECT_EQ(outcome("<img src='" + url + "'/>", {}, "document.querySelector('img').naturalWidth"), "0");
}

TEST_F(PageConfinementTest, NoImageFromOutsideThroughStepsUp)
{
    writeOutside("canary.svg", image());
    for (const std::string up : { "../../outside/canary.svg", "..%2f..%2foutside/canary.svg",
             "%2e%2e/%2E%2e/outside/canary.svg", "..%2F..%2Foutside%2Fcanary.svg", ".%2e\\..\\outside\\canary.svg" })
        EXPECT_EQ(outcome("<img src='" + up + "'/>", {}, "document.querySelector('img').naturalWidth"), "0") << up;
}

TEST_F(PageConfinementTest, NoImageOfAnotherBook)
{
    std::filesystem::create_directories(_folder.path("books/a book 2"));
    write("../a book 2/canary.svg", image());
    EXPECT_EQ(
        outcome("<img src='../a%20book%202/canary.svg'/>", {}, "document.querySelector('img').naturalWidth"), "0");
}

TEST_F(PageConfinementTest, ABookThatIsOpenedAgainIsConfinedToItsOwnFolderToo)
{
    std::filesystem::create_directories(_folder.path("books/another"));
    write("picture.svg", image());
    write("../another/picture.svg", image());
    const std::string pictures = "<img src='../a%20book/picture.svg'/><img src='../another/picture.svg'/>";
    for (int opening = 0; opening < 2; ++opening) {
        for (const std::string book : { "a book", "another" }) {
            _view->setBookFolder(_folder.path("books/" + book));
            loadCompletely(write("../" + book + "/page.xhtml", document(pictures)));
            EXPECT_EQ(evaluate("Array.from(document.images, (image) => image.naturalWidth).join()"),
                book == "another" ? "0,77" : "77,0");
        }
    }
}

TEST_F(PageConfinementTest, NoScriptFromOutside)
{
    const auto url = writeOutside("canary.js", "document.title = 'reached'").text();
    EXPECT_EQ(outcome("<p>x</p>", "<script src='" + url + "'></script>", "document.title"), "A chapter");
}

TEST_F(PageConfinementTest, NoStyleSheetFromOutside)
{
    const auto url = writeOutside("canary.css", "p{color:rgb(1,2,3)}").text();
    EXPECT_NE(
        outcome("<p>x</p>", "<link rel='stylesheet' href='" + url + "'/><style>@import url('" + url + "');</style>",
            "getComputedStyle(document.querySelector('p')).color"),
        "rgb(1, 2, 3)");
}

TEST_F(PageConfinementTest, NoFontFromOutside)
{
    const auto url = writeOutside("canary.otf", "no font").text();
    loadDocument(
        "<p style='font-family:Canary'>x</p>", "<style>@font-face{font-family:Canary;src:url('" + url + "')}</style>");
    evaluate(
        "var state = ''; document.fonts.load('10px Canary').then(() => state = 'loaded', () => state = 'refused'); 0");
    EXPECT_TRUE(waitUntil([&] { return evaluate("state") != ""; }));
    EXPECT_NE(evaluate("Array.from(document.fonts)[0].status"), "loaded");
}

TEST_F(PageConfinementTest, NoFrameFromOutside)
{
    const auto url = writeOutside("canary.html", "<script>parent.postMessage('reached', '*')</script>").text();
    loadDocument("<iframe id='frame' src='" + url + "'></iframe>",
        "<script>window.onmessage = event => document.title = event.data</script>");
    settle();
    settle();
    EXPECT_EQ(evaluate("document.title"), "A chapter");
}

TEST_F(PageConfinementTest, NoFileThroughFetchOrXmlHttpRequest)
{
    const auto url = writeOutside("canary.txt", "reached").text();
    write("own.txt", "own");
    for (const std::string& target : { url, std::string("own.txt") }) {
        loadDocument("<p>x</p>",
            "<script>document.title = '';"
            "fetch('"
                + target
                + "').then(r => r.text()).then(t => document.title += t, () => document.title += 'F');"
                  "var x = new XMLHttpRequest(); x.onload = () => document.title += x.responseText;"
                  "x.onerror = () => document.title += 'X'; x.open('GET', '"
                + target
                + "'); try { x.send() } catch (e) { }"
                  "</script>");
        EXPECT_TRUE(waitUntil([&] { return evaluate("document.title").size() >= 2; }));
        EXPECT_EQ(evaluate("document.title").find("reached"), std::string::npos);
    }
}

TEST_F(PageConfinementTest, ALinkOutOfTheBookLeadsNowhere)
{
    const auto url = writeOutside("canary.html", "<p>reached</p>").text();
    const auto number = loadDocument(
        "<a id='link' href='" + url + "'>Out</a><a id='up' href='..%2f..%2foutside/canary.html'>Out</a>");
    evaluate("document.getElementById('link').click()");
    settle();
    evaluate("document.getElementById('up').click()");
    settle();
    evaluate("location.href = '" + url + "'; 0");
    settle();
    EXPECT_EQ(_view->currentLoad(), number);
    EXPECT_EQ(evaluate("document.getElementById('link').textContent"), "Out");
}

TEST_F(PageConfinementTest, ALoadOfAFileOutsideTheBookFails)
{
    const auto number = _view->loadRequest(writeOutside("canary.html", "<p>reached</p>"));
    EXPECT_TRUE(waitUntil([&] { return _delegate.count(Kind::Failed, number) == 1; }));
}

TEST_F(PageConfinementTest, ALinkOnTheDiskDoesNotLeadOutOfTheBook)
{
    const auto target = writeOutside("canary.html", "<p>reached</p>").path();
    std::filesystem::create_symlink(target, _book + "/inside.html");
    const auto number = _view->loadRequest(Url::file(_book + "/inside.html"));
    EXPECT_TRUE(waitUntil([&] { return _delegate.count(Kind::Failed, number) == 1; }));
}

TEST_F(PageConfinementTest, APageKeepsNothing)
{
    const Url url = write("chapter.xhtml",
        document("<p>x</p>",
            "<script>document.title = localStorage.getItem('kept') || 'nothing';"
            "localStorage.setItem('kept', 'kept')</script>"));
    load(url);
    EXPECT_EQ(evaluate("document.title"), "nothing");
    show(PageKind::Columns);
    load(url);
    EXPECT_EQ(evaluate("document.title"), "nothing");
}

TEST_F(PageConfinementTest, DialogsAreAnsweredSilently)
{
    loadDocument("<p>x</p>",
        "<script>document.title = alert('a') + ' ' + confirm('b') + ' ' + prompt('c'); print();"
        "window.onbeforeunload = () => 'stay'</script>");
    EXPECT_EQ(evaluate("document.title"), "undefined false null");
    loadDocument("<p>y</p>");
    EXPECT_EQ(evaluate("document.body.textContent"), "y");
}

TEST_F(PageConfinementTest, AFileThatCannotBeShownIsNotDownloaded)
{
    write("data.bin", std::string(100, '\1'));
    const auto number = loadDocument("<a id='link' href='data.bin'>Data</a>");
    evaluate("document.getElementById('link').click()");
    settle();
    settle();
    EXPECT_EQ(_view->currentLoad(), number);
    EXPECT_EQ(evaluate("document.body.textContent"), "Data");
}

}
