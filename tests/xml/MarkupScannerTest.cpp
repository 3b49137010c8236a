#include "xml/MarkupScanner.hpp"

#include <gtest/gtest.h>

using namespace pagora;

namespace {

// Returns the tokens, one per line: texts in brackets, tags by name.
std::string pieces(std::string_view document)
{
    MarkupScanner scanner(document);
    std::string result;
    while (const auto token = scanner.next()) {
        if (token->kind == MarkupToken::Kind::Text)
            result += "[" + std::string(token->text) + "]";
        else
            result += (token->kind == MarkupToken::Kind::EndTag ? "/"
                              : token->isEmpty                  ? "="
                                                                : "+")
                + std::string(token->name);
        result += ' ';
    }
    return result;
}

std::optional<std::string> attribute(std::string_view tag, std::string_view name)
{
    return MarkupScanner(tag).next()->attribute(name);
}

}

TEST(MarkupScanner, ReadsTagsAndTextsInOrder)
{
    EXPECT_EQ(pieces("<p>a<b>c</b><br/>d</p>"), "+p [a] +b [c] /b =br [d] /p ");
}

TEST(MarkupScanner, LeavesPrefixesOut)
{
    EXPECT_EQ(pieces("<h:p>a</h:p>"), "+p [a] /p ");
}

TEST(MarkupScanner, PassesOverWhatIsNoText)
{
    EXPECT_EQ(pieces("<?xml version='1.0'?><!DOCTYPE html [<!ENTITY a '>'> <!-- don't -->]><!-- <p> --><p>a</p>"),
        "+p [a] /p ");
    EXPECT_EQ(pieces("<script>if (a<b) '</p>'</script>x<style>p>q</style>"), "=script [x] =style ");
}

TEST(MarkupScanner, TakesCharacterDataAsText)
{
    EXPECT_EQ(pieces("a<![CDATA[b<c>]]>d"), "[a] [b<c>] [d] ");
}

TEST(MarkupScanner, ReadsWhatIsBroken)
{
    EXPECT_EQ(pieces("a < b <"), "[a ] [<] [ b ] [<] ");
    EXPECT_EQ(pieces("<p title='never"), "+p ");
    EXPECT_EQ(pieces("<!-- never"), "");
    EXPECT_EQ(pieces("<script>never"), "=script ");
    EXPECT_EQ(pieces("<![CDATA[never"), "[never] ");
}

TEST(MarkupScanner, ReadsAttributesInEachForm)
{
    EXPECT_EQ(attribute("<a href='b&amp;c' id = \"d e\" epub:type=noteref hidden>", "href"), "b&c");
    EXPECT_EQ(attribute("<a href='b&amp;c' id = \"d e\" epub:type=noteref hidden>", "id"), "d e");
    EXPECT_EQ(attribute("<a href='b' epub:type=noteref hidden>", "epub:type"), "noteref");
    EXPECT_EQ(attribute("<a HREF='b' hidden>", "hidden"), "");
    EXPECT_EQ(attribute("<a HREF='b'/>", "href"), "b");
    EXPECT_EQ(attribute("<a title='href=x'>", "href"), std::nullopt);
}

TEST(MarkupScanner, ReplacesCharacterReferences)
{
    std::string text;
    appendReplacingReferences(text, "&amp;&lt;&#233;&#xE9;&nbsp;&eacute;&unknown;&;& &#x110000;&#0;");
    EXPECT_EQ(text, "&<éé\u00A0é&unknown;&;& \uFFFD\uFFFD");
}

TEST(MarkupScanner, ReadsOtherEncodings)
{
    EXPECT_EQ(
        markupFrom("<?xml version='1.0' encoding='iso-8859-1'?>\xE9"), "<?xml version='1.0' encoding='iso-8859-1'?>é");
    EXPECT_EQ(markupFrom("\xEF\xBB\xBF<p>é"), "<p>é");
    EXPECT_EQ(markupFrom(std::string("\xFF\xFE<\0p\0>\0\xE9\0", 10)), "<p>é");
    EXPECT_EQ(markupFrom("a\xFFz"), "a\uFFFDz");
    EXPECT_EQ(markupFrom("<?xml encoding='no-such-encoding'?>a\xFF"), "<?xml encoding='no-such-encoding'?>a\uFFFD");
}
