#include "tests/engine/MadeBooks.hpp"

#include "base/Unicode.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <algorithm>
#include <functional>
#include <utility>

namespace pagora::test {

namespace {

constexpr auto words = "All happy chapters are alike; each unhappy chapter is unhappy in its own way.";
constexpr auto rightToLeftWords = "كل الفصول السعيدة متشابهة، لكن لكل فصل تعيس طريقته الخاصة في التعاسة.";

std::string paragraph(int number, const char* sentence)
{
    std::string text = "<p id=\"p" + std::to_string(number) + "\">Paragraph " + std::to_string(number) + ".";
    for (int i = 0; i < 3 + number * 7 % 11; ++i)
        text += std::string(" ") + sentence;
    return text + "</p>";
}

std::string document(const std::string& body, const std::string& attributes = {})
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<html xmlns=\"http://www.w3.org/1999/xhtml\"" + attributes
        + "><head><title>A chapter</title></head><body>" + body + "</body></html>";
}

std::string contents(const std::vector<std::string>& targets)
{
    std::string points;
    for (const auto& target : targets)
        points
            += "<navPoint><navLabel><text>" + target + "</text></navLabel><content src=\"" + target + "\"/></navPoint>";
    return "<?xml version=\"1.0\"?><ncx xmlns=\"http://www.daisy.org/z3986/2005/ncx/\"><navMap>" + points
        + "</navMap></ncx>";
}

// Returns a book with these chapters, by their hrefs in the package document.
EpubBuilder bookOf(const std::vector<std::string>& references, const std::string& contentsFile = "toc.ncx")
{
    std::string items;
    std::string spine;
    for (std::size_t i = 0; i < references.size(); ++i) {
        const auto id = "c" + std::to_string(i);
        items += "<item id=\"" + id + "\" href=\"" + references[i] + "\" media-type=\"application/xhtml+xml\"/>";
        spine += "<itemref idref=\"" + id + "\"/>";
    }
    return EpubBuilder().chapters(0).member("OEBPS/content.opf",
        "<?xml version=\"1.0\" encoding=\"utf-8\"?><package xmlns=\"http://www.idpf.org/2007/opf\"><metadata "
        "xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><dc:title>Made</dc:title></metadata><manifest><item id=\"ncx\" "
        "href=\""
            + contentsFile + "\" media-type=\"application/x-dtbncx+xml\"/>" + items + "</manifest><spine toc=\"ncx\">"
            + spine + "</spine></package>");
}

EpubBuilder pictures()
{
    auto book = bookOf({ "a.xhtml", "b.xhtml" });
    std::string illustrated;
    for (int i = 0; i < 6; ++i) {
        const auto n = std::to_string(i);
        book.member("OEBPS/images/" + n + ".png", picture(900 + 200 * i, 1500 - 150 * i, "png"));
        illustrated
            += paragraph(2 * i, words) + "<p><img src=\"images/" + n + ".png\"/></p>" + paragraph(2 * i + 1, words);
    }
    return book.member("OEBPS/a.xhtml", document(illustrated))
        .member("OEBPS/b.xhtml", chapterOf(12, "<img id=\"picture\" src=\"images/3.png\"/>"))
        .member("OEBPS/toc.ncx", contents({ "a.xhtml", "a.xhtml#p4", "a.xhtml#p9", "b.xhtml#picture", "b.xhtml#p11" }));
}

// The second chapter has three columns: one and a half pages of two columns.
EpubBuilder longChapters()
{
    const std::string column = "<p style=\"-webkit-column-break-before: always\">A column.</p>";
    return bookOf({ "a.xhtml", "b.xhtml", "c.xhtml" })
        .member("OEBPS/a.xhtml", chapterOf(90, "<h1 id=\"top\">Top</h1>", "<p id=\"last\">The last line.</p>"))
        .member("OEBPS/b.xhtml", document("<p>A column.</p>" + column + column))
        .member("OEBPS/c.xhtml", chapterOf(40, "<a id=\"empty\"></a>", "<span id=\"end\"/>"))
        .member("OEBPS/toc.ncx",
            contents({ "a.xhtml", "a.xhtml#top", "a.xhtml#p1", "a.xhtml#p30", "a.xhtml#p60", "a.xhtml#p89",
                "a.xhtml#last", "b.xhtml", "c.xhtml#empty", "c.xhtml#p20", "c.xhtml#missing", "c.xhtml#end" }));
}

EpubBuilder names()
{
    return bookOf(
        { "my%20t%C3%A9xt/chapter%20%C3%A9.xhtml", "my%20t%C3%A9xt/100%25.xhtml", "my%20t%C3%A9xt/b%20c.xhtml" })
        .member("OEBPS/my t\u00E9xt/chapter \u00E9.xhtml", chapterOf(20))
        .member("OEBPS/my t\u00E9xt/100%.xhtml", chapterOf(20))
        .member("OEBPS/my t\u00E9xt/b c.xhtml", chapterOf(20))
        .member("OEBPS/toc.ncx",
            contents({ "my%20t%C3%A9xt/chapter%20%C3%A9.xhtml#p15", "my t\u00E9xt/b c.xhtml",
                "my%20t%C3%A9xt/b%20c.xhtml#p12" }));
}

// The chapters are outside the package document's folder, and the NCX is in another folder.
EpubBuilder otherFolders()
{
    return bookOf({ "../text/a.xhtml", "../text/b.xhtml" }, "../navigation/first/toc.ncx")
        .member("text/a.xhtml", chapterOf(20))
        .member("text/b.xhtml", chapterOf(20))
        .member("navigation/first/toc.ncx",
            contents(
                { "../../text/a.xhtml", "../../text/a.xhtml#p15", "../../text/a.xhtml#p2", "../../text/b.xhtml#p19" }));
}

// Names are in NFD in the archive and in NFC in the package document.
EpubBuilder decomposedNames()
{
    return bookOf({ "Ch\u00E2pitre.xhtml", "Fin\u00E9.xhtml" })
        .member("OEBPS/" + decomposedForm("Ch\u00E2pitre.xhtml"), chapterOf(20))
        .member("OEBPS/" + decomposedForm("Fin\u00E9.xhtml"), chapterOf(20))
        .member("OEBPS/toc.ncx", contents({ "Ch\u00E2pitre.xhtml#p12", "Fin%C3%A9.xhtml", "Fin\u00E9.xhtml#p19" }));
}

EpubBuilder rightToLeft()
{
    std::string text;
    for (int i = 0; i < 50; ++i)
        text += paragraph(i, rightToLeftWords);
    return bookOf({ "a.xhtml", "b.xhtml" })
        .member("OEBPS/a.xhtml", document(text, " dir=\"rtl\" lang=\"ar\""))
        .member("OEBPS/b.xhtml", document(text, " dir=\"rtl\" lang=\"ar\""))
        .member("OEBPS/toc.ncx", contents({ "a.xhtml", "a.xhtml#p20", "a.xhtml#p49", "b.xhtml#p33" }));
}

EpubBuilder malformedChapter()
{
    return bookOf({ "a.xhtml", "b.xhtml", "c.xhtml" })
        .member("OEBPS/a.xhtml", chapterOf(8))
        .member("OEBPS/b.xhtml", "<html><body><p>Begun & never <b>ended</p>")
        .member("OEBPS/c.xhtml", chapterOf(8))
        .member("OEBPS/toc.ncx", contents({ "a.xhtml", "b.xhtml", "c.xhtml#p7" }));
}

EpubBuilder missingChapter()
{
    return bookOf({ "a.xhtml", "b.xhtml", "c.xhtml" })
        .member("OEBPS/a.xhtml", chapterOf(8))
        .member("OEBPS/c.xhtml", chapterOf(8))
        .member("OEBPS/toc.ncx", contents({ "a.xhtml#p7", "c.xhtml" }));
}

const std::vector<std::pair<std::string, std::function<EpubBuilder()>>>& makers()
{
    static const std::vector<std::pair<std::string, std::function<EpubBuilder()>>> all = {
        { "Pictures", pictures },
        { "LongChapters", longChapters },
        { "N\u00E4mes & spaces", names },
        { "OtherFolders", otherFolders },
        { "DecomposedNames", decomposedNames },
        { "RightToLeft", rightToLeft },
        { "MalformedChapter", malformedChapter },
        { "MissingChapter", missingChapter },
    };
    return all;
}

}

std::string chapterOf(
    int paragraphs, const std::string& before, const std::string& after, const std::string& attributes)
{
    std::string text;
    for (int i = 0; i < paragraphs; ++i)
        text += paragraph(i, words);
    return document(before + text + after, attributes);
}

std::vector<std::string> madeBookNames()
{
    std::vector<std::string> names;
    for (const auto& [name, make] : makers())
        names.push_back(name);
    return names;
}

std::string writeMadeBook(const std::string& name, const std::string& folder)
{
    const auto found
        = std::find_if(makers().begin(), makers().end(), [&](const auto& maker) { return maker.first == name; });
    return found->second().write(folder + "/" + name + ".epub");
}

}
