// A page view that prepares the next page in a second view.

#include "fixed/PreparedPages.hpp"

#include "tests/support/FakeWebView.hpp"

#include <gtest/gtest.h>

using namespace pagora;
using namespace pagora::test;

namespace {

// Records its calls with the load numbers.
class Listener : public WebViewDelegate {
public:
    void resourceDidFinishLoading(const DataSource& source) override { note("finished", source); }
    void didFinishLoadForFrame(const DataSource& source) override { note("frame", source); }
    void resourceDidFailLoading(const DataSource& source) override { note("failed", source); }
    void didCommitLoad(const DataSource& source) override { note("committed", source); }
    void resourceWillSendRequest(const Url& url, RequestedBy) override { heard.push_back("request " + url.text()); }
    void decidePolicyForMIMEType(const std::string& type) override { heard.push_back("type " + type); }
    void didChangeLocationWithinPage(const Url& url) override { heard.push_back("location"); }
    void didResize() override { heard.push_back("size"); }

    std::vector<std::string> heard;

private:
    void note(const std::string& what, const DataSource& source)
    {
        heard.push_back(what + " " + std::to_string(source.load));
    }
};

class PreparedPagesTest : public testing::Test {
protected:
    using Lines = std::vector<std::string>;

    PreparedPagesTest()
    {
        pages.setDelegate(&listener);
        pages.loadRequest(one);
        first->finishDocument();
        first->finishFrame();
        listener.heard.clear();
    }
    static std::unique_ptr<FakeWebView> make(FakeWebView*& kept)
    {
        auto view = std::make_unique<FakeWebView>();
        kept = view.get();
        view->answer = [](const std::string& script) { return "answer to " + script; };
        return view;
    }
    // Loads page two in the second view and completes its scripts.
    void prepareTwo()
    {
        pages.prepareRequest(two, { "a", "b" });
        second->finishDocument();
        second->finishFrame();
    }
    std::string evaluate(const std::string& script)
    {
        std::string result = "none";
        const auto read = [](WebView& view, std::string text, std::string* into) -> Task<void> {
            *into = co_await view.evaluateScript(text);
        };
        const auto task = read(pages, script, &result);
        return result;
    }

    const Url one = Url::file("/book/1.xhtml");
    const Url two = Url::file("/book/2.xhtml");
    const Url three = Url::file("/book/3.xhtml");
    FakeWebView* first = nullptr;
    FakeWebView* second = nullptr;
    Listener listener;
    PreparedPages pages { make(first), make(second) };
};

}

TEST_F(PreparedPagesTest, APageIsPreparedOutOfSightAndUnheard)
{
    prepareTwo();
    EXPECT_EQ(second->loads, std::vector<Url> { two });
    EXPECT_EQ(second->scripts, (Lines { "a", "b" }));
    EXPECT_TRUE(second->hidden);
    EXPECT_TRUE(listener.heard.empty());
    EXPECT_EQ(pages.currentLoad(), 1U);
}

TEST_F(PreparedPagesTest, ThePreparedPageIsShownInsteadOfBeingLoaded)
{
    prepareTwo();
    EXPECT_EQ(pages.loadRequest(two), 2U);
    EXPECT_EQ(first->loads.size() + second->loads.size(), 2U);
    EXPECT_TRUE(first->hidden);
    EXPECT_FALSE(second->hidden);
    EXPECT_EQ(listener.heard, (Lines { "finished 2", "frame 2" }));
}

TEST_F(PreparedPagesTest, APageThatIsHiddenStaysHiddenWhenItIsExchanged)
{
    prepareTwo();
    pages.setHidden(true);
    pages.loadRequest(two);
    EXPECT_TRUE(pages.isHidden());
    pages.setHidden(false);
    EXPECT_TRUE(first->hidden);
    EXPECT_FALSE(second->hidden);
}

TEST_F(PreparedPagesTest, ScriptsThatWereRunAheadAnswerOnce)
{
    prepareTwo();
    pages.loadRequest(two);
    EXPECT_EQ(evaluate("a"), "answer to a");
    EXPECT_EQ(second->scripts.size(), 2U);
    EXPECT_EQ(evaluate("a"), "answer to a");
    EXPECT_EQ(evaluate("c"), "answer to c");
    EXPECT_EQ(second->scripts, (Lines { "a", "b", "a", "c" }));
}

TEST_F(PreparedPagesTest, AnotherPageIsLoadedWhereItIs)
{
    prepareTwo();
    EXPECT_EQ(pages.loadRequest(three), 2U);
    EXPECT_EQ(first->loads.back(), three);
    EXPECT_EQ(evaluate("a"), "answer to a");
    EXPECT_EQ(first->scripts, Lines { "a" });
}

TEST_F(PreparedPagesTest, APageThatIsAskedForWhileItLoadsGoesOnLoading)
{
    pages.prepareRequest(two, { "a" });
    pages.loadRequest(two);
    EXPECT_TRUE(listener.heard.empty());
    second->commit();
    second->finishDocument();
    EXPECT_EQ(listener.heard, (Lines { "committed 2", "finished 2" }));
    EXPECT_EQ(second->loads.size(), 1U);
    EXPECT_EQ(evaluate("a"), "answer to a");
    EXPECT_EQ(second->scripts, Lines { "a" });
}

TEST_F(PreparedPagesTest, WhatAPreparedPageAsksForIsToldWhenItIsShown)
{
    pages.prepareRequest(two, {});
    second->delegate->resourceWillSendRequest(*Url::fromString("https://example.org/"), RequestedBy::Page);
    second->delegate->decidePolicyForMIMEType("text/html");
    EXPECT_TRUE(listener.heard.empty());
    pages.loadRequest(two);
    EXPECT_EQ(listener.heard, (Lines { "request https://example.org/", "type text/html" }));
}

TEST_F(PreparedPagesTest, APreparedPageThatIsMissingFailsWhenItIsAskedFor)
{
    pages.prepareRequest(two, { "a" });
    second->failDocument();
    pages.loadRequest(two);
    EXPECT_EQ(listener.heard, Lines { "failed 2" });
    EXPECT_TRUE(second->scripts.empty());
}

TEST_F(PreparedPagesTest, APreparedPageThatWentOnByItselfIsLoadedAnew)
{
    prepareTwo();
    second->loads.push_back(three);
    EXPECT_EQ(pages.loadRequest(two), 2U);
    EXPECT_EQ(first->loads.back(), two);
}

TEST_F(PreparedPagesTest, PreparingTheSamePageAgainDoesNothing)
{
    prepareTwo();
    pages.prepareRequest(two, { "a", "b" });
    EXPECT_EQ(second->loads.size(), 1U);
}

TEST_F(PreparedPagesTest, PreparingAnotherPageForgetsTheFirst)
{
    prepareTwo();
    pages.prepareRequest(three, { "a" });
    pages.loadRequest(two);
    EXPECT_EQ(first->loads.back(), two);
    EXPECT_EQ(second->loads.back(), three);
}

TEST_F(PreparedPagesTest, LoadsAreCountedOnThroughEveryExchange)
{
    prepareTwo();
    pages.loadRequest(two);
    pages.prepareRequest(three, {});
    first->finishDocument();
    first->finishFrame();
    listener.heard.clear();
    EXPECT_EQ(pages.loadRequest(three), 3U);
    EXPECT_EQ(pages.loadRequest(one), 4U);
    EXPECT_EQ(first->loads, (std::vector<Url> { one, three, one }));
    first->finishDocument();
    EXPECT_EQ(listener.heard, (Lines { "finished 3", "frame 3", "finished 4" }));
}

TEST_F(PreparedPagesTest, OnlyTheShownPageTellsOfItsSize)
{
    prepareTwo();
    second->resizeTo(5, 5);
    EXPECT_TRUE(listener.heard.empty());
    first->resizeTo(5, 5);
    EXPECT_EQ(listener.heard, Lines { "size" });
}

TEST_F(PreparedPagesTest, BothPagesReadTheSameBook)
{
    pages.setBookFolder("/book");
    pages.setTextSizeMultiplier(2);
    EXPECT_EQ(first->bookFolder, "/book");
    EXPECT_EQ(second->bookFolder, "/book");
    EXPECT_EQ(second->textSizeMultiplier, 2);
}

TEST_F(PreparedPagesTest, DroppingThePagesWhileOneIsPreparedIsSafe)
{
    FakeWebView* shown = nullptr;
    FakeWebView* spare = nullptr;
    auto dropped = std::make_unique<PreparedPages>(make(shown), make(spare));
    spare->holdsReplies = true;
    dropped->prepareRequest(two, { "a", "b" });
    spare->finishFrame();
    EXPECT_EQ(spare->scripts, Lines { "a" });
    dropped.reset();
}
