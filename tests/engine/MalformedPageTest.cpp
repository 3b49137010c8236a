#include "tests/engine/PageViewTest.hpp"

#include <algorithm>

namespace pagora::test {

namespace {

const std::string svg = "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'><rect width='10' "
                        "height='10'/></svg>";

}

// Pages that are not well-formed XML and are parsed as HTML.
class MalformedPageTest : public PageViewTest { };

TEST_F(MalformedPageTest, APageIsShownWhole)
{
    const auto url = Url::fromString(
        write("broken.xhtml", document(paragraphs(3) + "<p>An <b>unclosed tag &amp; &nosuch;</p>" + paragraphs(9)))
            .text()
        + "#p1");
    loadCompletely(*url);
    layOut(2);
    EXPECT_EQ(evaluate("document.querySelectorAll('p').length"), "13");
    EXPECT_EQ(evaluate("document.querySelector('parsererror') === null"), "true");
    EXPECT_EQ(evaluate("document.compatMode + document.title"), "CSS1CompatA chapter");
    EXPECT_EQ(evaluate("location.href"), url->text());
}

TEST_F(MalformedPageTest, APageReportsAsAnyOther)
{
    write("1.svg", svg);
    const auto number = loadCompletely(write("broken.xhtml", document("<img src='1.svg'/><p>Not <b>ended</p>")));
    EXPECT_EQ(_delegate.count(Kind::Finished, number), 2);
    EXPECT_EQ(_delegate.count(Kind::FrameFinished, number), 1);
    EXPECT_EQ(_delegate.count(Kind::Failed, number), 0);
    EXPECT_TRUE(_delegate.reports.front().source.isMainResource);
    EXPECT_EQ(_delegate.types.front(), "application/xhtml+xml");
    EXPECT_EQ(std::count(_delegate.types.begin(), _delegate.types.end(), "text/html"), 0);
    EXPECT_TRUE(_delegate.locations.empty());
}

TEST_F(MalformedPageTest, APageReachesTheFilesOfItsBookAndNoOthers)
{
    write("images/1.svg", svg);
    const auto outside = writeOutside("2.svg", svg).text();
    loadCompletely(write("text/broken.xhtml",
        document(
            "<title/><a id='empty'/><img src='../images/1.svg'/><img src='" + outside + "'/><p>Not <b>ended</p>")));
    EXPECT_EQ(evaluate("document.images.length + ' ' + document.images[0].naturalWidth"), "2 10");
    EXPECT_EQ(evaluate("document.images[1].naturalWidth"), "0");
    EXPECT_EQ(evaluate("document.getElementById('empty').textContent"), "");
}

TEST_F(MalformedPageTest, PagesLeadToOneAnother)
{
    const Url two = write("text/two.xhtml", document("<p>Two &nbsp; <b>too</p>"));
    const auto first
        = load(write("one.xhtml", document("<p>Not <b>ended</p><a id='link' href='text/two.xhtml'>Two</a>")));
    evaluate("document.getElementById('link').click()");
    ASSERT_TRUE(waitUntil([&] { return _delegate.documentIsThere(first + 1); }));
    EXPECT_EQ(_delegate.reports.back().source.url, two);
    EXPECT_EQ(evaluate("document.body.textContent"), "Two \xC2\xA0 too");
}

TEST_F(MalformedPageTest, APageIsLoadedAnewAtAnotherPlace)
{
    const auto text = write("broken.xhtml", document(paragraphs(3) + "<p>Not <b>ended</p>")).text();
    load(*Url::fromString(text + "#p1"));
    write("broken.xhtml", document(paragraphs(2) + "<p>Not <b>ended either</p>"));
    load(*Url::fromString(text + "#p0"));
    EXPECT_EQ(evaluate("location.hash + document.querySelectorAll('p').length"), "#p03");
    evaluate("location.hash = '#p1'");
    EXPECT_TRUE(waitUntil([&] { return !_delegate.locations.empty(); }));
    EXPECT_EQ(_delegate.locations.back(), text + "#p1");
}

TEST_F(MalformedPageTest, AFixedPageReportsAtItsEndToo)
{
    show(PageKind::Fixed);
    const auto number = loadCompletely(write("page.xhtml", document("<p>Not <b>ended</p><p>Last</p>")));
    EXPECT_EQ(evaluate("document.body.lastElementChild.textContent"), "Last");
    EXPECT_EQ(_delegate.count(Kind::Finished, number), 2);
    EXPECT_EQ(_delegate.count(Kind::FrameFinished, number), 1);
}

TEST_F(MalformedPageTest, APictureStaysWhatItIs)
{
    load(write("page.svg", "<svg xmlns='http://www.w3.org/2000/svg'><rect width='9'></svg>"));
    EXPECT_EQ(evaluate("document.contentType"), "image/svg+xml");
}

}
