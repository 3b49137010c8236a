#include "xml/ForgivingPage.hpp"

#include <gtest/gtest.h>

using namespace pagora;

namespace {

const std::string type = "<!DOCTYPE html>\n";

std::string html(const std::string& xhtml)
{
    const auto page = forgivingPage(xhtml);
    return page ? page->html : "unreadable";
}

}

TEST(ForgivingPage, WhatComesBeforeTheRootMakesWayForAPlainDocumentType)
{
    EXPECT_EQ(html("\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- <p> -->\n<!DOCTYPE html [<!ENTITY a '>'><!ENTITY b "
                   "'b'>]>\n<html><p>"),
        type + "<html><p>");
    EXPECT_EQ(
        html("<!DOCTYPE html PUBLIC '-//W3C//DTD XHTML 1.1//EN' 'http://x/y.dtd'><html/>"), type + "<html></html>");
}

TEST(ForgivingPage, EmptyElementsEndWhereTheyBegin)
{
    EXPECT_EQ(html("<head><title/></head><a id='x' />b<SCRIPT src=\"y\"/>"),
        type + "<head><title></title></head><a id='x' ></a>b<SCRIPT src=\"y\"></SCRIPT>");
}

TEST(ForgivingPage, ElementsWithoutContentStayAsTheyAre)
{
    EXPECT_EQ(html("<p>a<br/>b<img src='c'/><hr /></p>"), type + "<p>a<br/>b<img src='c'/><hr /></p>");
}

TEST(ForgivingPage, ATagEndsBehindItsValues)
{
    EXPECT_EQ(html("<p title=\"a/>b\" lang = 'c>'>d</p>"), type + "<p title=\"a/>b\" lang = 'c>'>d</p>");
    EXPECT_EQ(html("<p title=\"a/>b\" id='c'/>d"), type + "<p title=\"a/>b\" id='c'></p>d");
}

TEST(ForgivingPage, CharacterDataIsText)
{
    EXPECT_EQ(html("<p><![CDATA[a < b && c]]>!</p>"), type + "<p>a &lt; b &amp;&amp; c!</p>");
    EXPECT_EQ(html("<p><![CDATA[never ended"), type + "<p>never ended");
}

TEST(ForgivingPage, ScriptsAndStylesKeepTheirTextWithoutTheMarks)
{
    EXPECT_EQ(html("<style><![CDATA[a > b {}]]></style><script>if (a</b/.c<d/>e) f</SCRIPT><i/>"),
        type + "<style>a > b {}</style><script>if (a</b/.c<d/>e) f</SCRIPT><i></i>");
    EXPECT_EQ(html("<style>]]>a[0]<b]]]><![CDATA[<![CDATA[c]]></style>"), type + "<style>a[0]<b]c</style>");
    EXPECT_EQ(html("<style></style><i/>"), type + "<style></style><i></i>");
    EXPECT_EQ(html("<script>never ended <i/>"), type + "<script>never ended <i/>");
}

TEST(ForgivingPage, CommentsAreNotLookedInto)
{
    EXPECT_EQ(html("<p><!-- <a/> --><?php <b/> ?></p>"), type + "<p><!-- <a/> --></p>");
    EXPECT_EQ(html("<p><!-- <a/>"), type + "<p><!-- <a/>");
}

TEST(ForgivingPage, WhatIsCutOffStaysCutOff)
{
    EXPECT_EQ(html("<p>a <b class=\"c"), type + "<p>a <b class=\"c");
    EXPECT_EQ(html("<p>a <"), type + "<p>a <");
    EXPECT_EQ(html("a & b"), type + "a & b");
    EXPECT_EQ(html(""), type);
}

TEST(ForgivingPage, EachPartIsReadOnce)
{
    // Each of these would take hours with a scan of the rest of the text for each occurrence.
    for (const std::string part : { "<!x>", "<?x?>", "<!---->" }) {
        std::string text;
        for (int i = 0; i < 1'000'000; ++i)
            text += part;
        EXPECT_EQ(html(text + "<p>"), type + "<p>") << part;
    }
    std::string marks;
    for (int i = 0; i < 1'000'000; ++i)
        marks += "]]>";
    EXPECT_EQ(html("<style>" + marks + "</style>"), type + "<style></style>");
}

TEST(ForgivingPage, TheEncodingIsTheDeclaredOne)
{
    EXPECT_EQ(forgivingPage("<?xml version='1.0' encoding=\"ISO-8859-2\"?><p>\xE6</p>")->encoding, "iso-8859-2");
    EXPECT_EQ(forgivingPage("<?xml version='1.0'?><p>\xC3\xA9</p>")->encoding, "utf-8");
}

TEST(ForgivingPage, BytesThatAreNoUnicodeAreReadAsWesternEuropean)
{
    EXPECT_EQ(forgivingPage("<?xml version='1.0' encoding='UTF-8'?><p>\xE9</p>")->encoding, "windows-1252");
}

TEST(ForgivingPage, WideCharactersBecomeNarrowOnes)
{
    const std::string wide("\xFF\xFE<\0p\0>\0\xE9\0", 10);
    EXPECT_EQ(html(wide), type + "<p>\xC3\xA9");
    EXPECT_EQ(forgivingPage(wide)->encoding, "utf-8");
    EXPECT_FALSE(forgivingPage(std::string("\xFE\xFF\xD8", 3)));
}
