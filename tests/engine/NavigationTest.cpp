// Books without an NCX, whose contents are in a navigation document.

#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/EpubBuilder.hpp"

namespace pagora::test {

namespace {

constexpr const char* packageDocument = R"(<?xml version="1.0"?>
<package xmlns="http://www.idpf.org/2007/opf" version="3.0" unique-identifier="id">
<metadata xmlns:dc="http://purl.org/dc/elements/1.1/"><dc:title>A Title</dc:title><dc:identifier id="id">1</dc:identifier>
</metadata>
<manifest><item id="nav" href="nav.xhtml" media-type="application/xhtml+xml" properties="nav"/>
<item id="c1" href="chapter1.xhtml" media-type="application/xhtml+xml"/>
<item id="c2" href="chapter2.xhtml" media-type="application/xhtml+xml"/>
<item id="c3" href="chapter3.xhtml" media-type="application/xhtml+xml"/></manifest>
<spine><itemref idref="c1"/><itemref idref="c2"/><itemref idref="c3"/></spine></package>)";

class Navigation : public ReadingTest {
protected:
    // A book with a navigation document instead of an NCX.
    void read(const std::string& lists, bool isFixed = false)
    {
        EpubBuilder book;
        book.chapters(3).without("OEBPS/toc.ncx");
        if (isFixed)
            book.fixedLayout(600, 800);
        book.member(
            "OEBPS/nav.xhtml", "<html xmlns:epub='http://www.idpf.org/2007/ops'><body>" + lists + "</body></html>");
        book.member("OEBPS/content.opf", packageDocument);
        import(book.write(_home.path("book.epub")));
        ASSERT_EQ(bookCount(), 1u);
        open();
    }
    std::vector<std::string> links(ContentsPane& pane)
    {
        std::vector<std::string> result;
        for (const auto& link : pane.links())
            result.push_back(link->text() + (link->isActive() ? " *" : ""));
        return result;
    }

    const std::string contents
        = "<nav epub:type='toc'><ol><li><a href='chapter1.xhtml'>First</a></li>"
          "<li><span>Part</span><ol><li><a href='chapter2.xhtml'>Second</a></li></ol></li></ol></nav>";
};

using Lines = std::vector<std::string>;

}

TEST_F(Navigation, FillsThePaneAndIsNotStored)
{
    read(contents);
    EXPECT_EQ(links(reader().contentsPane()), (Lines { "First *", "Part", "Second" }));
    EXPECT_EQ(book()->content()->size(), 0u);
    EXPECT_DOUBLE_EQ(reader().contentsPane().links()[2]->firstLineHeadIndent(), 15);
    reader().contentsPane().links()[2]->mouseDown();
    settle();
    EXPECT_EQ(reader().activeSplitIndex(), 1u);
    EXPECT_EQ(links(reader().contentsPane()), (Lines { "First", "Part", "Second *" }));
    close();
    open();
    EXPECT_EQ(reader().contentsPane().links().size(), 3u);
    restart();
    open();
    EXPECT_EQ(reader().contentsPane().links().size(), 3u);
}

TEST_F(Navigation, FillsThePaneOfABookWithFixedPages)
{
    read(contents, true);
    EXPECT_EQ(links(fixedReader().contentsPane()).size(), 3u);
    fixedReader().contentsPane().links()[2]->mouseDown();
    settleFixed();
    EXPECT_EQ(fixedReader().activeSplitIndex(), 1u);
    fixedReader().goBack();
    settleFixed();
    EXPECT_EQ(fixedReader().activeSplitIndex(), 0u);
    fixedReader().goToPageNumber(3);
    settleFixed();
    EXPECT_EQ(fixedReader().activeSplitIndex(), 2u);
}

TEST_F(Navigation, NeedsNoDocumentThatIsThere)
{
    EpubBuilder book;
    book.chapters(2).without("OEBPS/toc.ncx");
    import(book.write(_home.path("book.epub")));
    open();
    EXPECT_TRUE(reader().contentsPane().links().empty());
}

}
