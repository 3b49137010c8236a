#include "epub/OPFParser.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using Dictionary = std::map<std::string, std::string>;
using List = std::vector<std::string>;

OPFParser parsed(const std::string& document)
{
    test::TemporaryFolder folder;
    OPFParser parser(Url::file(test::makeFile(folder.path("content.opf"), document)));
    parser.parse();
    return parser;
}

std::string package(
    const std::string& metadata, const std::string& manifest = {}, const std::string& spine = "<spine/>")
{
    return "<package><metadata>" + metadata + "</metadata><manifest>" + manifest + "</manifest>" + spine + "</package>";
}

Dictionary metadataOf(const std::string& metadata, const std::string& manifest = {})
{
    return parsed(package(metadata, manifest)).metaDict();
}

}

TEST(OPFParser, UuidIsPassedOverForTheIsbn)
{
    const std::string uuid = "<dc:identifier opf:scheme='UUID'>urn:uuid:1</dc:identifier>";
    const std::string isbn = "<dc:identifier opf:scheme='ISBN'>978</dc:identifier>";
    EXPECT_EQ(metadataOf(isbn + uuid), (Dictionary { { "isbn", "978" } }));
    EXPECT_EQ(metadataOf(uuid), Dictionary {});
}

TEST(OPFParser, IdentifierOfAnyOtherSchemeIsTaken)
{
    EXPECT_EQ(metadataOf("<dc:identifier>1</dc:identifier>"), (Dictionary { { "isbn", "1" } }));
    EXPECT_EQ(metadataOf("<dc:identifier opf:scheme='DOI'>2</dc:identifier>"), (Dictionary { { "isbn", "2" } }));
}

TEST(OPFParser, LastTitleWins)
{
    EXPECT_EQ(metadataOf("<dc:title>One</dc:title><dc:title>Two</dc:title>"), (Dictionary { { "title", "Two" } }));
}

TEST(OPFParser, EmptyLastTitleRemovesTheTitle)
{
    EXPECT_EQ(metadataOf("<dc:title>One</dc:title><dc:title></dc:title>"), Dictionary {});
}

TEST(OPFParser, TitleKeepsItsWhiteSpace)
{
    EXPECT_EQ(
        metadataOf("<dc:title> A\n Title &amp; more </dc:title>"), (Dictionary { { "title", " A\n Title & more " } }));
}

TEST(OPFParser, MarkedSectionsAreNoTitle)
{
    EXPECT_EQ(metadataOf("<dc:title>A<![CDATA[B]]></dc:title>"), (Dictionary { { "title", "A" } }));
}

TEST(OPFParser, CoverThatIsNoImageIsNone)
{
    EXPECT_EQ(metadataOf("<meta name='cover' content='c'/>", "<item id='c' href='c.xhtml' media-type='text/html'/>"),
        Dictionary {});
}

TEST(OPFParser, CoverIsFoundWhateverTheOrder)
{
    const auto document = "<package><manifest><item id='c' href='c.jpg' media-type='image/jpeg'/></manifest>"
                          "<metadata><meta content='c' name='COVER'/></metadata></package>";
    EXPECT_EQ(parsed(document).metaDict(), (Dictionary { { "cover", "c.jpg" } }));
}

TEST(OPFParser, LastCoverWins)
{
    EXPECT_EQ(
        metadataOf("<meta name='cover' content='a'/><meta name='cover' content='b'/>",
            "<item id='b' href='b.jpg' media-type='image/jpeg'/><item id='a' href='a.jpg' media-type='image/jpeg'/>"),
        (Dictionary { { "cover", "b.jpg" } }));
}

TEST(OPFParser, AnEmptyNameOfTheContentsIsKeptAndThatOfACoverIsNot)
{
    EXPECT_EQ(metadataOf("<meta name='cover' content='c'/>",
                  "<item id='ncx' href=''/><item id='c' href='' media-type='image/jpeg'/>"),
        (Dictionary { { "tocfile", "" } }));
}

TEST(OPFParser, SpineWithoutTocLooksForTheItemNcx)
{
    const std::string item = "<item id='ncx' href='toc.ncx'/><item id='other' href='other.ncx'/>";
    EXPECT_EQ(parsed(package("", item)).metaDict(), (Dictionary { { "tocfile", "toc.ncx" } }));
    EXPECT_EQ(parsed(package("", item, "<spine toc=''/>")).metaDict(), (Dictionary { { "tocfile", "toc.ncx" } }));
    EXPECT_EQ(
        parsed(package("", item, "<spine toc='other'/>")).metaDict(), (Dictionary { { "tocfile", "other.ncx" } }));
}

TEST(OPFParser, SvgCountsAsAnImage)
{
    const auto parser = parsed(package("",
        "<item id='a' href='a.svg' media-type='image/svg+xml'/>"
        "<item id='b' href='b' media-type='image'/>"
        "<item id='c' href='c' media-type='Image/png'/>"));
    EXPECT_EQ(parser.imageList(), (List { "a.svg" }));
}

TEST(OPFParser, AttributesAreMatchedExactly)
{
    const std::string item = "<item id='c' href='c.jpg' media-type='image/jpeg'/>";
    ASSERT_EQ(metadataOf("<meta name='cover' content='c'/>", item), (Dictionary { { "cover", "c.jpg" } }));
    EXPECT_EQ(metadataOf("<meta Name='cover' content='c'/>", item), Dictionary {});
    EXPECT_EQ(metadataOf("<meta name='cover' CONTENT='c'/>", item), Dictionary {});
    for (const auto* other :
        { "<item ID='c' href='c.jpg' media-type='image/jpeg'/>", "<item id='c' Href='c.jpg' media-type='image/jpeg'/>",
            "<item id='c' href='c.jpg' Media-type='image/jpeg'/>" })
        EXPECT_EQ(metadataOf("<meta name='cover' content='c'/>", other), Dictionary {}) << other;
}

TEST(OPFParser, FilesFollowTheSpineAsWritten)
{
    const auto parser = parsed(package("", "<item id='a' href='a%20b.xhtml'/><item id='b' href='../b.xhtml'/>",
        "<spine><itemref idref='b'/><itemref idref='a'/><itemref idref='b'/></spine>"));
    EXPECT_EQ(parser.fileList(), (List { "../b.xhtml", "a%20b.xhtml", "../b.xhtml" }));
    EXPECT_FALSE(parser.tocFileID());
}

TEST(OPFParser, SpineEntryWithoutAUsableItemIsSkipped)
{
    const auto parser = parsed(package("",
        "<item id='i' href='i.png' media-type='image/png'/><item id='ncx' href='toc.ncx'/>"
        "<item id='a' href='a.xhtml'/><item id='h'/>",
        "<spine><itemref idref='missing'/><itemref idref='i'/><itemref idref='ncx'/>"
        "<itemref linear='no'/><itemref idref='h'/><itemref idref='a'/></spine>"));
    EXPECT_EQ(parser.fileList(), (List { "a.xhtml" }));
}

TEST(OPFParser, LaterItemOfAnIdReplacesTheEarlierOne)
{
    const auto parser
        = parsed(package("", "<item id='a' href='1'/><item id='a' href='2'/>", "<spine><itemref idref='a'/></spine>"));
    EXPECT_EQ(parser.fileList(), (List { "2" }));
}

TEST(OPFParser, PrefixesAndCaseOfElementsDoNotMatter)
{
    const auto parser
        = parsed("<opf:package><OPF:Metadata><DC:Title>T</DC:Title></OPF:Metadata><opf:MANIFEST>"
                 "<opf:item id='a' href='a'/></opf:MANIFEST><opf:Spine><x idref='a'/></opf:Spine></opf:package>");
    EXPECT_EQ(parser.metaDict(), (Dictionary { { "title", "T" } }));
    EXPECT_EQ(parser.fileList(), (List { "a" }));
}

TEST(OPFParser, TextOfAnElementCutByAnotherGoesToTheNext)
{
    EXPECT_EQ(
        metadataOf("<dc:title>A<b/>B</dc:title><dc:creator>C</dc:creator>"), (Dictionary { { "creator", "AC" } }));
}

TEST(OPFParser, DocumentThatBreaksOffGivesNothing)
{
    const auto parser = parsed("<package><metadata><dc:title>T</dc:title></metadata><manifest>");
    EXPECT_EQ(parser.metaDict(), Dictionary {});
    EXPECT_TRUE(parser.fileList().empty());
}

TEST(OPFParser, ResultsOfAFinishedPackageOutliveALaterError)
{
    EXPECT_EQ(parsed(package("<dc:title>T</dc:title>") + "<more/>").metaDict(), (Dictionary { { "title", "T" } }));
}

TEST(OPFParser, ParseThatBrokeOffLeavesNoTraceForTheNext)
{
    parsed("<package><metadata><dc:title>T");
    EXPECT_EQ(parsed("<package><x><dc:title>U</dc:title></x></package>").metaDict(), Dictionary {});
}

TEST(OPFParser, ManyItemsAreRead)
{
    constexpr int count = 10'000;
    std::string manifest;
    std::string spine = "<spine>";
    for (int i = 0; i < count; ++i) {
        const auto n = std::to_string(i);
        manifest += "<item id='i" + n + "' href='f" + n + "'/>";
        spine += "<itemref idref='i" + n + "'/>";
    }
    const auto parser = parsed(package("", manifest, spine + "</spine>"));
    ASSERT_EQ(parser.fileList().size(), static_cast<std::size_t>(count));
    EXPECT_EQ(parser.fileList().back(), "f9999");
}

}
