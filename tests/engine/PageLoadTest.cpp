#include "tests/engine/PageViewTest.hpp"
#include "tests/engine/SilentServer.hpp"

#include <algorithm>

namespace pagora::test {

namespace {

const std::string svg = "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'><rect width='10' "
                        "height='10'/></svg>";

// Records the messages of a page to the program, without the load number.
class SentMessages {
public:
    explicit SentMessages(WebKitWebView* view)
        : _content(webkit_web_view_get_user_content_manager(view))
    {
        const auto received = +[](WebKitUserContentManager*, JSCValue* value, gpointer data) {
            char* const text = jsc_value_to_string(value);
            static_cast<SentMessages*>(data)->_texts.emplace_back(text);
            g_free(text);
        };
        _handler = g_signal_connect(_content, "script-message-received::pagora", G_CALLBACK(received), this);
    }
    ~SentMessages() { g_signal_handler_disconnect(_content, _handler); }
    SentMessages(const SentMessages&) = delete;
    SentMessages& operator=(const SentMessages&) = delete;

    // Returns whether one of them has this prefix.
    bool contain(const std::string& beginning) const
    {
        return std::any_of(_texts.begin(), _texts.end(), [&](const std::string& text) {
            return text.compare(text.find(' ') + 1, beginning.size(), beginning) == 0;
        });
    }

private:
    WebKitUserContentManager* _content;
    gulong _handler = 0;
    std::vector<std::string> _texts;
};

}

class PageLoadTest : public PageViewTest { };

TEST_F(PageLoadTest, LoadsAreNumberedFromOne)
{
    const Url url = write("chapter.xhtml", document("<p>Text</p>"));
    EXPECT_EQ(load(url), 1u);
    EXPECT_EQ(load(url), 2u);
    EXPECT_EQ(_view->currentLoad(), 2u);
}

TEST_F(PageLoadTest, TheDocumentAndEachOfItsImagesReport)
{
    for (const char* name : { "1.svg", "2.svg", "3.svg" })
        write(name, svg);
    const auto number = loadCompletely(
        write("chapter.xhtml", document("<img src='1.svg'/><img src='2.svg'/><img src='3.svg'/>" + paragraphs(3))));
    EXPECT_EQ(_delegate.count(Kind::Finished, number), 4);
    EXPECT_EQ(_delegate.count(Kind::FrameFinished, number), 1);
    EXPECT_EQ(_delegate.count(Kind::Failed, number), 0);
    EXPECT_TRUE(_delegate.reports.front().source.isMainResource);
    EXPECT_FALSE(_delegate.reports[1].source.isMainResource);
}

TEST_F(PageLoadTest, TheDocumentReportsFirstEvenWhenItIsLarge)
{
    write("1.svg", svg);
    const auto number = loadCompletely(write("chapter.xhtml", document("<img src='1.svg'/>" + paragraphs(4000))));
    EXPECT_EQ(_delegate.count(Kind::Finished, number), 2);
    EXPECT_TRUE(_delegate.reports.front().source.isMainResource);
}

TEST_F(PageLoadTest, TheDocumentIsCompleteWhenItReports)
{
    Task<void> counting;
    std::string last;
    _delegate.onFinished = [&](const DataSource&) {
        const auto read = [](WebView& view, std::string* last) -> Task<void> {
            *last = co_await view.evaluateScript("document.body.lastChild.id");
        };
        counting = read(*_view, &last);
    };
    loadDocument(paragraphs(2000));
    _delegate.onFinished = {};
    EXPECT_TRUE(waitUntil([&] { return counting.done(); }));
    EXPECT_EQ(last, "p1999");
}

TEST_F(PageLoadTest, TheDocumentReportsOnceItsStyleSheetsAreThere)
{
    std::string rules;
    for (int i = 0; i < 60000; ++i)
        rules += ".x" + std::to_string(i) + "{color:red}\n";
    write("style.css", rules + "#p0{margin-left:123px}");
    Task<void> reading;
    std::string margin;
    _delegate.onFinished = [&](const DataSource& source) {
        const auto read = [](WebView& view, std::string* margin) -> Task<void> {
            *margin = co_await view.evaluateScript("getComputedStyle(document.getElementById('p0')).marginLeft");
        };
        if (source.isMainResource)
            reading = read(*_view, &margin);
    };
    loadDocument(paragraphs(2), "<link rel='stylesheet' href='style.css'/>");
    _delegate.onFinished = {};
    EXPECT_TRUE(waitUntil([&] { return reading.done(); }));
    EXPECT_EQ(margin, "123px");
}

TEST_F(PageLoadTest, AStyleSheetThatIsMissingDoesNotKeepTheDocumentFromReporting)
{
    const auto number = loadDocument(paragraphs(2), "<link rel='stylesheet' href='missing.css'/>");
    EXPECT_EQ(_delegate.count(Kind::Finished, number), 1);
    EXPECT_TRUE(waitUntil([&] { return evaluate("pagoraAwaitedStyles().length") == "0"; }));
}

TEST_F(PageLoadTest, StylesOfThePagesStartAreThereWhenItIsFirstDrawn)
{
    _view->setPageStart({ "body{padding-top:77px!important}", false });
    loadDocument("<script>requestAnimationFrame(() => {"
                 "document.title = getComputedStyle(document.body).paddingTop; });</script>");
    EXPECT_TRUE(waitUntil([&] { return evaluate("document.title") != "A chapter"; }));
    EXPECT_EQ(evaluate("document.title"), "77px");
    evaluate("document.body.style.setProperty('padding-top', '5px', 'important')");
    EXPECT_EQ(evaluate("getComputedStyle(document.body).paddingTop"), "5px");
}

TEST_F(PageLoadTest, TheMarginsHaveTheGroundOfThePage)
{
    const auto paper = [this] {
        const auto& color = dynamic_cast<PageFrame&>(_view->widget()).paper();
        return color ? color->to_string().raw() : std::string("none");
    };
    loadDocument(paragraphs(2), "<style>body { background: #ffffe6 }</style>");
    EXPECT_TRUE(waitUntil([&] { return paper() == "rgb(255,255,230)"; })) << paper();
    evaluate("document.body.style.backgroundColor = '#000';");
    EXPECT_TRUE(waitUntil([&] { return paper() == "rgb(0,0,0)"; })) << paper();
    loadDocument(paragraphs(2));
    EXPECT_TRUE(waitUntil([&] { return paper() == "none"; })) << paper();
}

TEST_F(PageLoadTest, TheCountOfColumnsThatThePageStartsWithStands)
{
    _view->setPageStart({ "body{column-count:2!important}", false, 2 });
    loadDocument(paragraphs(2), "<style>body { column-count: 5 !important; }</style>");
    EXPECT_EQ(evaluate("getComputedStyle(document.body).columnCount"), "2");
    _view->setPageStart({});
    loadDocument(paragraphs(2), "<style>body { column-count: 5 !important; }</style>");
    EXPECT_EQ(evaluate("getComputedStyle(document.body).columnCount"), "auto");
}

TEST_F(PageLoadTest, ThePageTellsThatItsBeginningIsDrawn)
{
    const SentMessages messages(_view->engineView());
    loadDocument(paragraphs(20));
    EXPECT_TRUE(waitUntil([&] { return messages.contain("begun"); }));
}

TEST_F(PageLoadTest, ThePageTellsOfItsNewSize)
{
    loadDocument(paragraphs(20));
    settle();
    const SentMessages messages(_view->engineView());
    _view->widget().set_size_request(640, 480);
    _window.set_default_size(640, 480);
    EXPECT_TRUE(waitUntil([&] { return messages.contain("size 640 480"); }));
}

TEST_F(PageLoadTest, ReportsCarryThePagesUrlWithItsFragment)
{
    write("1.svg", svg);
    write("chapter.xhtml", document("<img src='1.svg'/>" + paragraphs(9)));
    const Url url = *Url::fromString(Url::file(_book + "/chapter.xhtml").text() + "#p5");
    loadCompletely(url);
    for (const auto& report : _delegate.reports)
        EXPECT_EQ(report.source.url, url);
    EXPECT_TRUE(_delegate.locations.empty());
}

TEST_F(PageLoadTest, ASourceIsLoadingUntilEverythingIsThere)
{
    loadCompletely(write("chapter.xhtml", document("<p>Text</p>")));
    EXPECT_TRUE(_delegate.reports.front().source.isLoading);
    EXPECT_FALSE(_delegate.reports.back().source.isLoading);
}

TEST_F(PageLoadTest, AFixedPageReportsOnceMoreWhenNothingIsLoading)
{
    show(PageKind::Fixed);
    const auto number = loadCompletely(write("page.xhtml", document("<p>Text</p>")));
    ASSERT_EQ(_delegate.count(Kind::Finished, number), 2);
    EXPECT_TRUE(_delegate.reports[0].source.isLoading);
    EXPECT_FALSE(_delegate.reports[1].source.isLoading);
}

TEST_F(PageLoadTest, AnImageThatIsMissingFails)
{
    const auto number = loadCompletely(write("chapter.xhtml", document("<img src='none.png'/><p>Text</p>")));
    EXPECT_EQ(_delegate.count(Kind::Failed, number), 1);
    EXPECT_EQ(_delegate.count(Kind::Finished, number), 1);
}

TEST_F(PageLoadTest, AnImageThatNeverAnswersDoesNotHoldTheDocumentsReport)
{
    const SilentServer server;
    const auto number = loadDocument("<img src='" + server.url("1.png") + "'/><p>Text</p>");
    EXPECT_EQ(_delegate.count(Kind::FrameFinished, number), 0);
    EXPECT_EQ(evaluate("document.body.lastChild.textContent"), "Text");
}

TEST_F(PageLoadTest, AScriptThatNeverAnswersIsLeftOut)
{
    const SilentServer server;
    showWithShortTimeout(PageKind::Columns);
    load(write("chapter.xhtml", document("<p>Text</p>", "<script src='" + server.url("1.js") + "'></script>")));
    EXPECT_EQ(evaluate("document.body.textContent"), "Text");
}

TEST_F(PageLoadTest, AnImageThatNeverAnswersDoesNotHoldAFixedPageForEver)
{
    const SilentServer server;
    showWithShortTimeout(PageKind::Fixed);
    const auto number = loadCompletely(write("page.xhtml", document("<img src='" + server.url("1.png") + "'/>")));
    EXPECT_FALSE(_delegate.reports.back().source.isLoading);
    EXPECT_EQ(_delegate.count(Kind::Finished, number), 2);
}

TEST_F(PageLoadTest, RequestsToServersAreReportedOncePerLoad)
{
    const SilentServer server;
    loadDocument("<img src='" + server.url("1.png") + "'/><img src='" + server.url("1.png")
        + "'/><img src='data:image/gif;base64,R0lGODlhAQABAAAAACw='/><iframe src='about:blank'></iframe>");
    EXPECT_TRUE(waitUntil([&] { return !_delegate.requests.empty(); }));
    settle();
    EXPECT_EQ(_delegate.requests, std::vector<std::string> { server.url("1.png") });
}

TEST_F(PageLoadTest, ReportsOfAnEarlierLoadAreDropped)
{
    const Url one = write("one.xhtml", document(paragraphs(800)));
    const Url two = write("two.xhtml", document("<p>Two</p>"));
    const auto first = _view->loadRequest(one);
    const auto second = loadCompletely(two);
    settle();
    EXPECT_EQ(_delegate.count(Kind::Finished, first) + _delegate.count(Kind::FrameFinished, first), 0);
    EXPECT_EQ(_delegate.count(Kind::Failed, second), 0);
    EXPECT_EQ(_delegate.count(Kind::Finished, second), 1);
    EXPECT_EQ(evaluate("document.body.textContent"), "Two");
}

TEST_F(PageLoadTest, AMissingFileFailsAndThePageStays)
{
    loadDocument("<p>Text</p>");
    const auto number = _view->loadRequest(Url::file(_book + "/none.xhtml"));
    EXPECT_EQ(_delegate.count(Kind::Failed, number), 0);
    EXPECT_TRUE(waitUntil([&] { return _delegate.count(Kind::Failed, number) == 1; }));
    EXPECT_EQ(evaluate("document.body.textContent"), "Text");
}

TEST_F(PageLoadTest, AnotherFragmentOfThePageIsALoadOfItsOwn)
{
    const Url url = write("chapter.xhtml", document(paragraphs(60)));
    loadCompletely(url);
    layOut(2);
    evaluate("var kept = 1;");
    const auto number = loadCompletely(*Url::fromString(url.text() + "#p40"));
    EXPECT_EQ(_delegate.count(Kind::Finished, number), 1);
    EXPECT_EQ(evaluate("typeof kept"), "undefined");
    EXPECT_EQ(evaluate("location.hash"), "#p40");
    EXPECT_TRUE(_delegate.locations.empty());
    loadCompletely(*Url::fromString(url.text() + "#p40"));
    loadCompletely(url);
    EXPECT_EQ(evaluate("location.hash"), "");
}

TEST_F(PageLoadTest, APathWithoutASchemeIsAFile)
{
    write("chapter.xhtml", document("<p>Text</p>"));
    load(*Url::fromString(addingPercentEscapes(_book + "/chapter.xhtml")));
    EXPECT_EQ(evaluate("document.body.textContent"), "Text");
}

TEST_F(PageLoadTest, APathThatWasEscapedTwiceIsFound)
{
    write("the chapter.xhtml", document(paragraphs(3)));
    const Url url = *Url::fromString(addingPercentEscapes(Url::file(_book + "/the chapter.xhtml").text()) + "#p2");
    load(url);
    EXPECT_EQ(evaluate("location.hash"), "#p2");
    EXPECT_EQ(_delegate.reports.front().source.url, url);
}

TEST_F(PageLoadTest, APathInTheOtherUnicodeFormIsFound)
{
    write("caf\x65\xCC\x81.xhtml", document("<p>Decomposed</p>"));
    write("\xC3\xA9t\xC3\xA9.xhtml", document("<p>Composed</p>"));
    load(Url::file(_book + "/caf\xC3\xA9.xhtml"));
    EXPECT_EQ(evaluate("document.body.textContent"), "Decomposed");
    load(Url::file(_book + "/e\xCC\x81t\x65\xCC\x81.xhtml"));
    EXPECT_EQ(evaluate("document.body.textContent"), "Composed");
}

TEST_F(PageLoadTest, EveryUsualExtensionShowsADocument)
{
    for (const char* name : { "a.xhtml", "a.html", "a.htm", "a.xml" }) {
        load(write(name, document("<p>Text</p>")));
        EXPECT_EQ(evaluate("document.body.textContent"), "Text") << name;
    }
}

TEST_F(PageLoadTest, TheTypeOfTheDocumentIsReported)
{
    load(write("chapter.xhtml", document("<p>Text</p>")));
    EXPECT_EQ(_delegate.types, std::vector<std::string> { "application/xhtml+xml" });
}

TEST_F(PageLoadTest, ADeadEngineBringsThePageBackAsAFreshLoad)
{
    const auto first = loadCompletely(write("chapter.xhtml", document("<p>Text</p>")));
    webkit_web_view_terminate_web_process(_view->engineView());
    ASSERT_TRUE(waitUntil([&] { return _delegate.documentIsThere(first + 1); }));
    EXPECT_EQ(evaluate("document.body.textContent"), "Text");
}

TEST_F(PageLoadTest, APageThatKeepsKillingTheEngineIsGivenUp)
{
    loadDocument("<p>Text</p>");
    bool isGivenUp = false;
    for (int times = 0; times < 9 && !isGivenUp; ++times) {
        webkit_web_view_terminate_web_process(_view->engineView());
        const auto next = _view->currentLoad() + 1;
        ASSERT_TRUE(
            waitUntil([&] { return _delegate.documentIsThere(next) || _delegate.count(Kind::Failed, next) == 1; }));
        isGivenUp = _delegate.count(Kind::Failed, next) == 1;
    }
    EXPECT_TRUE(isGivenUp);
    load(write("two.xhtml", document("<p>Two</p>")));
    EXPECT_EQ(evaluate("document.body.textContent"), "Two");
}

TEST_F(PageLoadTest, AnAddressThatIsAScriptOrATextFails)
{
    loadDocument("<p>Text</p>");
    for (const char* const address : { "javascript:document.title='ran'", "data:text/html,x", "about:blank" }) {
        const auto number = _view->loadRequest(*Url::fromString(address));
        EXPECT_TRUE(waitUntil([&] { return _delegate.count(Kind::Failed, number) == 1; })) << address;
    }
    settle();
    EXPECT_EQ(evaluate("document.title + document.body.textContent"), "A chapterText");
}

TEST_F(PageLoadTest, APathThatGoesUpIsLoaded)
{
    write("text/chapter.xhtml", document(paragraphs(3)));
    write("contents/other.xhtml", document("x"));
    const auto above = _book + "/contents/../text/chapter.xhtml";
    loadCompletely(Url::file(above));
    EXPECT_EQ(evaluate("document.getElementById('p2') !== null"), "true");
    const auto again = loadCompletely(*Url::fromString(Url::file(above).text() + "#p2"));
    EXPECT_EQ(_delegate.count(Kind::Failed, again), 0);
    EXPECT_EQ(evaluate("location.hash"), "#p2");
}

}
