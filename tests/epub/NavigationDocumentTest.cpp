#include "epub/NavigationDocument.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <filesystem>
#include <gtest/gtest.h>

using namespace pagora;
using namespace pagora::test;

namespace {

// Returns the entries as lines: level, label and target within the book.
std::vector<std::string> lines(const std::vector<NavigationPoint>& points)
{
    std::vector<std::string> result;
    for (const auto& point : points)
        result.push_back(
            std::to_string(point.level) + " " + point.text + " " + replaced(point.target.text(), "file:///book/", ""));
    return result;
}

NavigationLists read(const std::string& body)
{
    return navigationLists("<html><body>" + body + "</body></html>", "/book/text/nav.xhtml", "/book");
}

std::vector<std::string> contents(const std::string& list)
{
    return lines(read("<nav epub:type='toc'><h1>Contents</h1>" + list + "</nav>").contents);
}

using Lines = std::vector<std::string>;

}

TEST(NavigationDocument, GivesLevelsLabelsAndFragments)
{
    EXPECT_EQ(contents("<ol><li><a href='a.xhtml'>A</a><ol><li><a href='a.xhtml#s%201'>A <i>one</i></a></li></ol></li>"
                       "<li><a href='../b.xhtml'>B</a></li></ol>"),
        (Lines { "1 A text/a.xhtml", "2 A one text/a.xhtml#s%201", "1 B b.xhtml" }));
}

TEST(NavigationDocument, TakesALabelFromPicturesToo)
{
    EXPECT_EQ(contents("<ol><li><a href='a.xhtml'><img src='i' alt='One'/> &amp; two\n  lines</a></li></ol>"),
        (Lines { "1 One & two lines text/a.xhtml" }));
}

TEST(NavigationDocument, APictureWithoutATextAddsNone)
{
    EXPECT_EQ(contents("<ol><li><a href='a.xhtml'>A<img src='i'/><img src='i'></img></a></li></ol>"),
        (Lines { "1 A text/a.xhtml" }));
    EXPECT_EQ(contents("<ol><li><a href='a.xhtml'>A</a><img src='i'/></li></ol>"), (Lines { "1 A text/a.xhtml" }));
}

TEST(NavigationDocument, KnowsItsListsByTheirRolesToo)
{
    const auto lists = read("<nav epub:type='landmarks'><ol><li><a href='x'>X</a></li></ol></nav>"
                            "<nav role='doc-pagelist'><ol><li><a href='p'>1</a></li></ol></nav>"
                            "<nav role='navigation doc-toc'><ol><li><a href='a'>A</a></li></ol></nav>");
    EXPECT_EQ(lines(lists.contents), (Lines { "1 A text/a" }));
    EXPECT_EQ(lines(lists.pages), (Lines { "1 1 text/p" }));
}

TEST(NavigationDocument, AHeadingLeadsWhereItsFirstEntryDoes)
{
    EXPECT_EQ(
        contents("<ol><li><span>Part</span><ol><li><a href='a.xhtml'>A</a></li></ol></li><li><span>End</span></li>"
                 "</ol>"),
        (Lines { "1 Part text/a.xhtml", "2 A text/a.xhtml" }));
}

TEST(NavigationDocument, LeavesOutWhatLeadsOutOfTheBook)
{
    EXPECT_EQ(contents("<ol><li><a href='../../etc/passwd'>x</a></li><li><a href='/etc/passwd'>x</a></li>"
                       "<li><a href='https://example.org'>x</a></li><li><a href='%2e%2e/%2e%2e/x'>x</a></li>"
                       "<li><a>x</a></li><li><a href='#here'>here</a></li></ol>"),
        (Lines { "1 x text/nav.xhtml#here", "1 here text/nav.xhtml#here" }));
}

TEST(NavigationDocument, ReadsThePagesOfThePrintedEdition)
{
    const auto lists = read("<nav epub:type='page-list'><ol><li><a href='a.xhtml#p1'>1</a></li></ol></nav>"
                            "<nav epub:type='landmarks'><ol><li><a href='c.xhtml'>Cover</a></li></ol></nav>"
                            "<nav role='doc-toc'><ol><li><a href='a.xhtml'>A</a></li></ol></nav>");
    EXPECT_EQ(lines(lists.pages), (Lines { "1 1 text/a.xhtml#p1" }));
    EXPECT_EQ(lines(lists.contents), (Lines { "1 A text/a.xhtml" }));
}

TEST(NavigationDocument, TakesAListThatDoesNotSayWhatItIs)
{
    EXPECT_EQ(
        lines(read("<nav><ol><li><a href='a.xhtml'>A</a></li></ol></nav>").contents), (Lines { "1 A text/a.xhtml" }));
}

TEST(NavigationDocument, ReadsWhatIsNotWellFormed)
{
    EXPECT_EQ(contents("<ol><li><a href='a.xhtml'>A<li><a href='b.xhtml'>B"),
        (Lines { "1 A text/a.xhtml", "1 B text/b.xhtml" }));
    EXPECT_TRUE(contents("</ol></ol></ol>").empty());
}

TEST(NavigationDocument, TakesTheFirstTenThousandEntries)
{
    std::string list = "<ol>";
    for (int i = 0; i < 100'000; ++i)
        list += "<li><a href='a.xhtml'>A</a></li>";
    EXPECT_EQ(contents(list + "</ol>").size(), 10'000u);
    std::string headings = "<ol>";
    for (int i = 0; i < 100'000; ++i)
        headings += "<li><span>A</span></li>";
    EXPECT_EQ(contents(headings + "<li><a href='a.xhtml'>A</a></li></ol>").size(), 10'000u);
}

TEST(NavigationDocument, IsFoundByThePackageDocument)
{
    const TemporaryFolder folder;
    makeFile(folder.path("META-INF/container.xml"),
        "<container><rootfiles><rootfile full-path='OEBPS/a%20b/p.opf'/></rootfiles></container>");
    makeFile(folder.path("OEBPS/a b/p.opf"),
        "<package><manifest><item href='x.xhtml'/><opf:item properties='scripted nav' href='../n%C3%A4v.xhtml'/>"
        "</manifest></package>");
    makeFile(folder.path("OEBPS/näv.xhtml"), "<nav epub:type='toc'><ol><li><a href='c.xhtml'>C</a></li></ol></nav>");
    const auto lists = navigationListsOf(folder.path());
    ASSERT_EQ(lists.contents.size(), 1u);
    EXPECT_EQ(lists.contents[0].target, Url::file(folder.path("OEBPS/c.xhtml")));
}

TEST(NavigationDocument, IsNotReadOutsideTheBook)
{
    const TemporaryFolder folder;
    const auto book = folder.path("book");
    makeFile(book + "/META-INF/container.xml", "<rootfile full-path='p.opf'/>");
    makeFile(folder.path("nav.xhtml"), "<nav epub:type='toc'><ol><li><a href='c.xhtml'>C</a></li></ol></nav>");
    makeFile(book + "/p.opf", "<item properties='nav' href='../nav.xhtml'/>");
    EXPECT_TRUE(navigationListsOf(book).contents.empty());
    makeFile(book + "/p.opf", "<item properties='nav' href='link.xhtml'/>");
    std::filesystem::create_symlink(folder.path("nav.xhtml"), book + "/link.xhtml");
    EXPECT_TRUE(navigationListsOf(book).contents.empty());
    EXPECT_TRUE(navigationListsOf(folder.path("none")).contents.empty());
}
