#include "tests/engine/PageViewTest.hpp"
#include "tests/engine/SilentServer.hpp"

namespace pagora::test {

// Loads and reports of followed links.
class LinkLoadTest : public PageViewTest { };

TEST_F(LinkLoadTest, ALinkWithinTheBookIsALoadOfItsOwn)
{
    const Url two = write("two.xhtml", document("<p>Two</p>"));
    const auto first = loadDocument("<a id='link' href='two.xhtml'>Two</a>");
    evaluate("document.getElementById('link').click()");
    ASSERT_TRUE(waitUntil([&] { return _delegate.documentIsThere(first + 1); }));
    EXPECT_EQ(_view->currentLoad(), first + 1);
    EXPECT_EQ(_delegate.reports.back().source.url, two);
}

TEST_F(LinkLoadTest, ALinkToANewWindowOpensInTheSameView)
{
    const Url two = write("two.xhtml", document("<p>Two</p>"));
    const auto first = loadDocument("<a id='link' target='_blank' href='two.xhtml'>Two</a>");
    evaluate("document.getElementById('link').click()");
    EXPECT_TRUE(waitUntil([&] { return _delegate.documentIsThere(first + 1); }));
    EXPECT_EQ(evaluate("document.body.textContent"), "Two");
}

TEST_F(LinkLoadTest, ALinkToAServerIsReportedAndGoesOn)
{
    const SilentServer server;
    loadDocument("<a id='link' href='" + server.url("page") + "'>Away</a>");
    evaluate("document.getElementById('link').click()");
    EXPECT_TRUE(waitUntil([&] { return !_delegate.requests.empty(); }));
    settle();
    EXPECT_EQ(_delegate.requests, std::vector<std::string> { server.url("page") });
    EXPECT_EQ(evaluate("document.body.textContent"), "Away");
}

TEST_F(LinkLoadTest, ALinkToAnotherProgramIsReported)
{
    const auto number = loadDocument("<a id='link' href='mailto:someone@example.org'>Write</a>");
    evaluate("document.getElementById('link').click()");
    EXPECT_TRUE(waitUntil([&] { return !_delegate.requests.empty(); }));
    EXPECT_EQ(_delegate.requests, std::vector<std::string> { "mailto:someone@example.org" });
    settle();
    EXPECT_EQ(_view->currentLoad(), number);
    EXPECT_EQ(evaluate("document.body.textContent"), "Write");
}

}
