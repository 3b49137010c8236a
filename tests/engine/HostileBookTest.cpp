#include "paging/PageScripts.hpp"
#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/engine/SilentServer.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <set>

namespace pagora::test {

namespace {

std::string chapterWith(const std::string& head, const std::string& body)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><html "
           "xmlns=\"http://www.w3.org/1999/xhtml\"><head><title>x</title>"
        + head + "</head><body>" + body + "</body></html>";
}

// Chapters that are hard to lay out, by a name of the difficulty.
const std::pair<const char*, std::string> chapters[] = {
    { "plain.xhtml", chapterOf(8) },
    { "no-body.xhtml", "<html xmlns=\"http://www.w3.org/1999/xhtml\"><head><title>x</title></head></html>" },
    { "overwrites.xhtml",
        chapterOf(8,
            "<script>window.scrollTo = document.getElementById = Document.prototype.getElementById = () => null;"
            "Object.defineProperty(document, 'all', { value: [] }); Object.prototype.get = 1;"
            "Object.prototype.style = null; for (const name of ['body', 'documentElement', 'getElementsByTagName'])"
            "Object.defineProperty(Document.prototype, name, { value: null });</script>") },
    { "empty.xhtml", "" },
    { "throws.xhtml", chapterOf(8, "<script>onload = onscroll = onresize = () => { throw 1; }; throw 2;</script>") },
    { "frames.html", "<html><frameset cols='50%,50%'><frame src='plain.xhtml'/><frame/></frameset></html>" },
    { "styles.xhtml",
        chapterWith(
            "<style>html,body{margin:3em!important;padding:9em!important;height:auto!important;columns:9!important;"
            "position:fixed!important;writing-mode:vertical-rl!important;overflow:scroll!important;zoom:2}"
            "img{min-width:4000px!important;height:5000px!important}</style>",
            "<p>Before</p><img src='large.svg'/><p>After</p>") },
    { "drawing.svg",
        "<svg xmlns='http://www.w3.org/2000/svg' width='90' height='90'><rect width='9' height='9'/></svg>" },
    { "last.xhtml", chapterOf(8) },
};

EpubBuilder hostileBook()
{
    std::string items;
    std::string spine;
    EpubBuilder book;
    book.chapters(0).member(
        "OEBPS/large.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='5000' height='7000'></svg>");
    for (const auto& [name, text] : chapters) {
        book.member(std::string("OEBPS/") + name, text);
        items += std::string("<item id=\"") + name + "\" href=\"" + name + "\" media-type=\"application/xhtml+xml\"/>";
        spine += std::string("<itemref idref=\"") + name + "\"/>";
    }
    return book.member("OEBPS/content.opf",
        "<?xml version=\"1.0\" encoding=\"utf-8\"?><package xmlns=\"http://www.idpf.org/2007/opf\"><metadata "
        "xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><dc:title>Hostile</dc:title></metadata><manifest>"
            + items + "</manifest><spine>" + spine + "</spine></package>");
}

}

class HostileBook : public ReadingTest {
protected:
    void read(const EpubBuilder& builder)
    {
        import(builder.write(_home.path("hostile.epub")));
        ASSERT_EQ(bookCount(), 1u);
        open();
    }
    void readMade(const std::string& name)
    {
        import(writeMadeBook(name, _home.path()));
        ASSERT_EQ(bookCount(), 1u);
        open();
    }
    void goTo(const std::string& target)
    {
        reader().changeChapter(*Url::fromString(target));
        settle();
    }
    std::string urlOf(std::size_t chapter) { return reader().bookSplits().at(chapter).text(); }
    // Pages are one view width apart. The last page of a chapter ends with its last column.
    bool isOnGrid()
    {
        const auto width = number("window.innerWidth");
        const auto position = number("window.pageXOffset");
        return position % width == 0 || position == number("document.body.scrollWidth") - width;
    }
};

TEST_F(HostileBook, IsTurnedThroughInBothDirections)
{
    read(hostileBook());
    constexpr int maxTurns = 60;
    for (const int tag : { 1, 0 }) {
        std::set<std::uint64_t> seen;
        const auto isAtItsEnd = [&] {
            return tag == 1 ? isAtEnd() : reader().activeSplitIndex() == 0 && number("window.pageXOffset") == 0;
        };
        for (int turns = 0; turns < maxTurns && !isAtItsEnd(); ++turns) {
            seen.insert(reader().activeSplitIndex());
            EXPECT_TRUE(isOnGrid()) << reader().activeSplitIndex() << " at " << number("window.pageXOffset");
            turn(tag);
        }
        EXPECT_TRUE(isAtItsEnd()) << reader().activeSplitIndex();
        EXPECT_GE(seen.size(), std::size(chapters) - 1);
    }
    goToChapter(0);
    EXPECT_EQ(place().text.substr(0, 12), "Paragraph 0.");
}

TEST_F(HostileBook, ContentsEntriesThatLeadNowhereLeaveThePage)
{
    readMade("LongChapters");
    turn(1);
    const auto left = place();
    const auto shown = evaluate("location.pathname");
    const auto folder = urlOf(0).substr(0, urlOf(0).rfind('/'));
    for (const auto& target : { folder + "/nowhere.xhtml", folder + "/nowhere.xhtml#p3",
             folder + "/../../other/a.xhtml", std::string("file:///etc/passwd"), folder, std::string("nowhere"),
             std::string("javascript:document.title='ran'") }) {
        goTo(target);
        EXPECT_EQ(place(), left) << target;
        EXPECT_EQ(evaluate("location.pathname"), shown) << target;
    }
    EXPECT_NE(evaluate("document.title"), "ran");
    turn(1);
    EXPECT_EQ(number("window.pageXOffset"), left.offset + number("window.innerWidth"));
}

TEST_F(HostileBook, ContentsEntryToAServerThatNeverAnswersLeavesThePageReadable)
{
    const SilentServer server;
    readMade("LongChapters");
    turn(1);
    const auto left = place();
    reader().changeChapter(*Url::fromString(server.url("page")));
    ASSERT_TRUE(waitUntil([&] { return !_program->workspace.opened.empty(); }));
    EXPECT_EQ(place(), left);
    reader().changePage(1);
    EXPECT_TRUE(waitUntil([&] { return number("window.pageXOffset") == left.offset + number("window.innerWidth"); }));
    goTo(urlOf(2));
    EXPECT_EQ(reader().activeSplitIndex(), 2u);
}

TEST_F(HostileBook, LinkInAPageWorksAfterALoadThatFailed)
{
    readMade("LongChapters");
    turn(1);
    goTo(urlOf(0) + ".nowhere");
    evaluate("var a = document.createElement('a'); a.href = '#p60'; document.body.appendChild(a); a.click(); 0");
    ASSERT_TRUE(waitUntil([&] { return number("window.pageXOffset") == 0; }));
}

TEST_F(HostileBook, FragmentsDoNotRunAsCode)
{
    const std::string fragments[] = {
        "');document.title='ran';('",
        "\");document.title='ran';(\"",
        "\\');document.title='ran';//",
        "a\nb\r\n';document.title='ran'",
        "\u2028';document.title='ran';'\u2029",
        "${document.title='ran'}`;document.title='ran';`",
        "</script><script>document.title='ran'</script>",
        "%27);document.title=%27ran",
    };
    std::string body;
    for (int i = 0; i < 40; ++i)
        body += "<p>Paragraph " + std::to_string(i) + std::string(1500, 'x') + "</p>";
    body += "<p id='target'>Target</p>";
    read(EpubBuilder().chapters(1).member("OEBPS/chapter1.xhtml", chapterWith("", body)));
    for (const auto& fragment : fragments) {
        SCOPED_TRACE(fragment);
        goTo(urlOf(0) + "#" + addingPercentEscapes(fragment));
        EXPECT_EQ(evaluate("document.title"), "x");
        evaluate("document.getElementById('target').id = '" + scriptText(fragment) + "'");
        EXPECT_GT(number(scripts::offsetTopOf(fragment)), 1000);
        goTo(urlOf(0) + "%23" + addingPercentEscapes(addingPercentEscapes(fragment)));
        EXPECT_EQ(evaluate("document.title"), "x");
        EXPECT_EQ(reader().lastAnchor(), fragment);
        evaluate(scripts::textFont(fragment));
        evaluate(scripts::setHash(fragment));
        EXPECT_EQ(evaluate("decodeURIComponent(location.hash.substr(1)).length") != "0", true);
        EXPECT_EQ(evaluate("document.title"), "x");
    }
}

TEST_F(HostileBook, PageThatDiesComesBackWhereItWasRead)
{
    readMade("LongChapters");
    for (int i = 0; i < 3; ++i)
        turn(1);
    const auto left = place();
    for (int round = 1; round <= 2; ++round) {
        const auto load = webView().currentLoad();
        webkit_web_view_terminate_web_process(engineView());
        ASSERT_TRUE(waitUntil([&] { return webView().currentLoad() > load; }));
        settle();
        EXPECT_EQ(place(), left);
    }
    turn(1);
    EXPECT_EQ(number("window.pageXOffset"), left.offset + number("window.innerWidth"));
}

TEST_F(HostileBook, ResourcesThatNeverAnswerDoNotHoldThePagesBack)
{
    const SilentServer server;
    const auto archive = EpubBuilder().chapters(1).member("OEBPS/chapter1.xhtml",
        chapterOf(30,
            "<style>@font-face{font-family:F;src:url('" + server.url("f.otf") + "')} p{font-family:F}</style><img src='"
                + server.url("1.png") + "'/><iframe src='" + server.url("frame")
                + "'></iframe><link rel='stylesheet' href='" + server.url("s.css") + "'/>"));
    import(archive.write(_home.path("hostile.epub")));
    ASSERT_EQ(bookCount(), 1u);
    _program->controller.sendDoubleClick(book());
    ASSERT_TRUE(waitUntil([&] {
        return state().reading._epubWindowController && !reader().bookSplits().empty() && reader().isSettled();
    }));
    reader().changePage(1);
    EXPECT_TRUE(waitUntil([&] { return number("window.pageXOffset") == number("window.innerWidth"); }));
    EXPECT_EQ(evaluate("getComputedStyle(document.body).webkitColumnCount"), "2");
}

}
