#include "running/Task.hpp"
#include "tests/engine/PageViewTest.hpp"

namespace pagora::test {

class PageScriptsTest : public PageViewTest { };

TEST_F(PageScriptsTest, ResultsAreTexts)
{
    loadDocument("<p>Text</p>");
    EXPECT_EQ(evaluate("1200"), "1200");
    EXPECT_EQ(evaluate("0.5"), "0.5");
    EXPECT_EQ(evaluate("'a' + 'b'"), "ab");
    EXPECT_EQ(evaluate("document.body.style.color = 'red';"), "red");
}

TEST_F(PageScriptsTest, AFontWhoseNameHasAWordOfDigitsIsSet)
{
    // The engine's own reading of a quoted name. Engines differ in whether they write it with quotes.
    const auto quoted = [this](const std::string& name) {
        loadDocument("<p id='quoted' style='font-family: \"" + name + "\"'>Text</p>");
        return evaluate("getComputedStyle(document.getElementById('quoted')).fontFamily");
    };
    const std::string set = "getComputedStyle(document.body).fontFamily";
    for (const std::string family : { "Source Sans 3", "Exo 2", "Times New Roman" }) {
        const auto expected = quoted(family);
        ASSERT_NE(expected.find(family), std::string::npos);
        ASSERT_NE(evaluate(set), expected);
        EXPECT_EQ(evaluate("document.body.style.fontFamily = '" + family + "';"), family);
        EXPECT_EQ(evaluate(set), expected);
    }
    const auto expected = quoted("a\\22 b 1");
    evaluate("document.body.style.fontFamily = 'a\\x22b 1';");
    EXPECT_EQ(evaluate(set), expected);
    EXPECT_EQ(expected, "\"a\\\"b 1\"");
}

TEST_F(PageScriptsTest, NothingIsAnEmptyText)
{
    loadDocument("<p>Text</p>");
    EXPECT_EQ(evaluate("undefined"), "");
    EXPECT_EQ(evaluate("null"), "");
    EXPECT_EQ(evaluate("document.getElementById('none').offsetTop;"), "");
    EXPECT_EQ(evaluate("this is no script"), "");
}

TEST_F(PageScriptsTest, AScriptFindsWhatAnEarlierOneLeft)
{
    loadDocument("<p>Text</p>");
    evaluate("var kept = 7; function twice(x) { return 2 * x; } implied = 5;");
    EXPECT_EQ(evaluate("twice(kept) + implied"), "19");
}

TEST_F(PageScriptsTest, ANewDocumentStartsAfresh)
{
    loadDocument("<p>Text</p>");
    evaluate("var kept = 7;");
    loadDocument("<p>Text</p>");
    EXPECT_EQ(evaluate("typeof kept"), "undefined");
}

TEST_F(PageScriptsTest, ThePageDoesNotSeeTheReadersWorld)
{
    loadDocument("<p>Text</p><script>var fromPage = 1;</script>");
    evaluate("var fromReader = 1;");
    EXPECT_EQ(evaluate("typeof fromPage"), "undefined");
    evaluate("var s = document.createElement('script'); s.textContent = "
             "'document.title = typeof fromReader + typeof (window.webkit || {}).messageHandlers';"
             "document.body.appendChild(s); 0");
    EXPECT_EQ(evaluate("document.title"), "undefinedundefined");
}

TEST_F(PageScriptsTest, ABooksOverridesDoNotReachTheReader)
{
    loadDocument(paragraphs(60),
        "<script>window.scrollTo = document.getElementById = Document.prototype.getElementById = function () { return "
        "null; };"
        "Object.defineProperty(document, 'all', { value: 1 });"
        "Object.prototype.value = Object.prototype.length = Object.prototype.left = 77; Object.prototype.toString = "
        "Function.prototype.call = Array.prototype[Symbol.iterator] = String = Number = parseFloat = null;"
        "Object.defineProperty(Object.prototype, 'configurable', { get() { throw 1; } });"
        "Object.defineProperty(HTMLElement.prototype, 'offsetTop', { get() { return 1; } });"
        "Object.defineProperty(window, 'pageXOffset', { get() { return 1; } });</script>");
    layOut(2);
    evaluate("window.scrollTo(800, 0);");
    EXPECT_EQ(evaluate("window.pageXOffset"), "800");
    EXPECT_GT(number("document.getElementById('p40').offsetTop;"), 600);
    EXPECT_GT(number("document.all.length"), 60);
    EXPECT_EQ(evaluate("({}).value"), "");
}

TEST_F(PageScriptsTest, ScriptsThatThrowLeaveThePageAsItIs)
{
    loadDocument(paragraphs(60),
        "<script>addEventListener('scroll', () => { throw 1; }, true); onresize = onload = () => { throw 2; };"
        "setInterval(() => { throw 3; }, 1); throw 4;</script>");
    layOut(2);
    evaluate("window.scrollTo(800, 0);");
    EXPECT_EQ(evaluate("window.pageXOffset"), "800");
}

TEST_F(PageScriptsTest, NamedElementsDoNotStandForTheDocumentsOwn)
{
    load(write("chapter.html",
        "<!DOCTYPE html><html><body><img name='body'><form name='getElementById'></form><img name='all' id='images'>"
        "<form name='getElementsByTagName'></form><form name='documentElement'></form><form id='pagoraLoad'></form>"
            + paragraphs(60) + "</body></html>"));
    layOut(2);
    EXPECT_EQ(evaluate("document.body.tagName"), "BODY");
    EXPECT_GT(number("document.all.length"), 60);
    EXPECT_EQ(evaluate("document.getElementsByTagName('img').length"), "2");
    EXPECT_GT(number("document.getElementById('p40').offsetTop;"), 600);
}

TEST_F(PageScriptsTest, AnEndlessScriptIsGivenUpAndThePageComesBack)
{
    showWithShortTimeout(PageKind::Columns);
    const auto first = loadDocument("<p id='p'>Text</p>");
    EXPECT_EQ(evaluate("for (;;) { }"), "");
    ASSERT_TRUE(
        waitUntil([&] { return _view->currentLoad() > first && _delegate.documentIsThere(_view->currentLoad()); }));
    EXPECT_EQ(evaluate("document.getElementById('p').textContent"), "Text");
}

TEST_F(PageScriptsTest, ABookThatNeverEndsItsScriptLeavesTheViewUsable)
{
    showWithShortTimeout(PageKind::Columns);
    const auto good = write("good.xhtml", document("<p>Good</p>"));
    _view->loadRequest(write("endless.xhtml", document("<p>Bad</p><script>for (;;) { }</script>")));
    EXPECT_TRUE(waitUntil([&] { return _delegate.terminations > 0; }));
    _view->loadRequest(good);
    EXPECT_TRUE(waitUntil([&] { return _delegate.documentIsThere(_view->currentLoad()); }));
    EXPECT_EQ(evaluate("document.body.textContent"), "Good");
}

TEST_F(PageScriptsTest, AChapterThatNeverEndsItsScriptIsShownWithoutIt)
{
    showWithShortTimeout(PageKind::Columns);
    for (const std::string name : { "chapter.xhtml", "chapter.html" }) {
        load(
            write(name, document("<p id='p'>Text</p><script>document.title = 'ran'; for (;;) { }</script><p>End</p>")));
        EXPECT_EQ(
            evaluate("document.body.textContent.startsWith('Text') && document.body.lastChild.textContent"), "End");
        EXPECT_EQ(evaluate("document.title"), "A chapter");
    }
}

TEST_F(PageScriptsTest, AnotherBookHasItsScriptsAgain)
{
    showWithShortTimeout(PageKind::Columns);
    auto* settings = webkit_web_view_get_settings(_view->engineView());
    load(write("endless.xhtml", document("<p>Text</p><script>for (;;) { }</script>")));
    EXPECT_FALSE(webkit_settings_get_enable_javascript_markup(settings));
    _view->setBookFolder(_book);
    EXPECT_TRUE(webkit_settings_get_enable_javascript_markup(settings));
}

TEST_F(PageScriptsTest, AScriptThatHangsLaterIsTakenOut)
{
    showWithShortTimeout(PageKind::Columns);
    const auto first
        = loadDocument("<p>Text</p><script>document.onclick = () => { for (;;) { } }; document.title = 'ran'</script>");
    EXPECT_EQ(evaluate("document.body.click(); 1"), "");
    ASSERT_TRUE(
        waitUntil([&] { return _view->currentLoad() > first && _delegate.documentIsThere(_view->currentLoad()); }));
    EXPECT_EQ(evaluate("document.title"), "A chapter");
    EXPECT_EQ(evaluate("document.body.click(); 1"), "1");
}

TEST_F(PageScriptsTest, EveryPendingScriptIsAnsweredWhenTheEngineDies)
{
    loadDocument("<p>Text</p>");
    int answers = 0;
    const auto count = [](WebView& view, int* answers) -> Task<void> {
        const std::string answer = co_await view.evaluateScript("1 + 1");
        *answers += answer.empty() ? 1 : 100;
    };
    webkit_web_view_terminate_web_process(_view->engineView());
    const auto one = count(*_view, &answers);
    const auto two = count(*_view, &answers);
    EXPECT_TRUE(waitUntil([&] { return one.done() && two.done(); }));
}

TEST_F(PageScriptsTest, AViewThatGoesResumesNobody)
{
    loadDocument("<p>Text</p>");
    bool isResumed = false;
    const auto wait = [](WebView& view, bool* isResumed) -> Task<void> {
        co_await view.evaluateScript("1");
        *isResumed = true;
    };
    const auto task = wait(*_view, &isResumed);
    embed(nullptr);
    waitUntil([&] { return isResumed; }, 0.2);
    EXPECT_FALSE(isResumed);
}

}
