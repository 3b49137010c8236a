#include "tests/engine/PageViewTest.hpp"

#include <filesystem>

namespace pagora::test {

// Page views that are prepared before a book is opened.
class WarmViewTest : public PageViewTest { };

TEST_F(WarmViewTest, AWarmViewShowsItsFirstPageLikeAnyOther)
{
    _engine->prepareWarmView();
    embed(_engine->makePageView(PageKind::Columns));
    EXPECT_EQ(loadDocument(paragraphs(60)), 1u);
    layOut(2);
    evaluate("window.scrollTo(800, 0);");
    EXPECT_EQ(evaluate("window.pageXOffset"), "800");
}

TEST_F(WarmViewTest, AWarmViewHasNothingToStyleAnew)
{
    _engine->prepareWarmView();
    auto view = _engine->makePageView(PageKind::Columns);
    ASSERT_TRUE(waitUntil([engineView = view->engineView()] {
        const char* const title = webkit_web_view_get_title(engineView);
        return title && title == std::string_view("Pagora") && !webkit_web_view_is_loading(engineView);
    }));
    embed(std::move(view));
    EXPECT_EQ(evaluate("document.body.textContent.trim()"), "");
}

TEST_F(WarmViewTest, AViewThatIsStillWarmingUpShowsTheBooksPage)
{
    const Url page = write("chapter.xhtml", document("<p>The book</p>"));
    for (int opening = 0; opening < 3; ++opening) {
        embed(nullptr);
        _engine->prepareWarmView();
        embed(_engine->makePageView(PageKind::Columns));
        const auto number = load(page);
        EXPECT_EQ(evaluate("document.body.textContent"), "The book");
        EXPECT_EQ(_delegate.count(Kind::Finished, number), 1);
        EXPECT_EQ(_delegate.reports.front().source.url, page);
    }
}

TEST_F(WarmViewTest, AViewWhoseEngineEndedWhileItWarmedUpShowsTheBooksPage)
{
    _engine->prepareWarmView();
    auto view = _engine->makePageView(PageKind::Columns);
    webkit_web_view_terminate_web_process(view->engineView());
    embed(std::move(view));
    loadDocument("<p>The book</p>");
    EXPECT_EQ(evaluate("document.body.textContent"), "The book");
}

TEST_F(WarmViewTest, AViewThatNeverGetsWarmShowsTheBooksPage)
{
    auto cold = _engine->makePageView(PageKind::Columns);
    auto engineView = GObjectPtr<WebKitWebView>::share(cold->engineView());
    cold.reset();
    BookFilter filter(_folder.path("filters"));
    embed(std::make_unique<PageView>(std::move(engineView), PageKind::Columns, filter, 2, PageView::Start::WarmingUp));
    loadDocument("<p>The book</p>");
    EXPECT_EQ(evaluate("document.body.textContent"), "The book");
    embed(nullptr);
}

TEST_F(WarmViewTest, ABookIsShownAfterAllTemporaryFilesWereRemoved)
{
    _engine->prepareWarmView();
    embed(_engine->makePageView(PageKind::Columns));
    loadDocument("<p>Before</p>");
    _engine->prepareWarmView();
    std::filesystem::remove_all(_folder.path("books"));
    std::filesystem::remove_all(_folder.path("caches"));
    _book = _folder.path("books/another book");
    std::filesystem::create_directories(_book);
    embed(_engine->makePageView(PageKind::Columns));
    write("picture.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'/>");
    loadCompletely(write("chapter.xhtml", document("<p>After</p><img src='picture.svg'/>")));
    EXPECT_EQ(evaluate("document.body.textContent + document.images[0].naturalWidth"), "After10");
}

}
