#include "xml/Xml.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using test::makeFile;
using test::TemporaryFolder;

// Records its calls, one line each.
class Recorder : public XmlDelegate {
public:
    std::vector<std::string> lines;
    std::string characters;
    int errors = 0;
    int ends = 0;

    void didStartElement(const std::string& name, const XmlAttributes& attributes) override
    {
        auto line = "<" + name;
        for (const auto& attribute : attributes)
            line += " " + attribute.name + "=" + attribute.value;
        lines.push_back(line);
    }
    void didEndElement(const std::string& name) override { lines.push_back("/" + name); }
    void foundCharacters(const std::string& text) override
    {
        characters += text;
        lines.push_back(text);
    }
    void foundCDATA(const std::string& text) override { lines.push_back("cdata " + text); }
    void didEndDocument() override { ++ends; }
    void parseErrorOccurred(const std::string&) override
    {
        ++errors;
        lines.push_back("error");
    }
};

Recorder parsed(const std::string& document, const XmlLimits& limits = {})
{
    TemporaryFolder folder;
    Recorder recorder;
    const bool whole = parseXml(makeFile(folder.path("x.xml"), document), recorder, limits) == XmlOutcome::Whole;
    EXPECT_EQ(whole, recorder.errors == 0);
    EXPECT_EQ(recorder.ends, whole ? 1 : 0);
    EXPECT_LE(recorder.errors, 1);
    return recorder;
}

using Lines = std::vector<std::string>;

}

TEST(Xml, NamesAreQualifiedNamesAndDeclarationsAreAttributes)
{
    EXPECT_EQ(parsed("<a:x xmlns:a='u' xmlns='v' a:b='1'/>").lines, (Lines { "<a:x xmlns:a=u xmlns=v a:b=1", "/a:x" }));
}

TEST(Xml, UndeclaredPrefixIsNoError)
{
    EXPECT_EQ(parsed("<opf:x dc:y='1'/>").errors, 0);
}

TEST(Xml, CharacterPiecesEndAtLineBreaks)
{
    EXPECT_EQ(
        parsed("<a>one\ntwo\r\n<b/>three</a>").lines, (Lines { "<a", "one\n", "two\n", "<b", "/b", "three", "/a" }));
}

TEST(Xml, EntityReferencesDoNotSplitCharacters)
{
    EXPECT_EQ(parsed("<a>Tom &amp; Jerry &#38; Co</a>").lines, (Lines { "<a", "Tom & Jerry & Co", "/a" }));
}

TEST(Xml, LongTextIsOnePiece)
{
    const std::string text(300'000, 'x');
    EXPECT_EQ(parsed("<a>" + text + "</a>").lines, (Lines { "<a", text, "/a" }));
}

TEST(Xml, MarkedSectionsAreToldApart)
{
    EXPECT_EQ(parsed("<a>x<![CDATA[<y>]]>z</a>").lines, (Lines { "<a", "x", "cdata <y>", "z", "/a" }));
}

TEST(Xml, InternalEntitiesAreReplaced)
{
    EXPECT_EQ(
        parsed("<!DOCTYPE a [<!ENTITY e 'text'>]><a b='&e;'>a &e;</a>").lines, (Lines { "<a b=text", "a text", "/a" }));
}

TEST(Xml, ErrorIsToldOnceAndNothingAfterIt)
{
    EXPECT_EQ(parsed("<a><b/></c><d/></a>").lines, (Lines { "<a", "<b", "/b", "error" }));
}

TEST(Xml, CutOffDocumentIsAnError)
{
    EXPECT_EQ(parsed("<a><b/>").lines, (Lines { "<a", "<b", "/b", "error" }));
}

TEST(Xml, EmptyDocumentIsAnError)
{
    EXPECT_EQ(parsed("").errors, 1);
    EXPECT_EQ(parsed("   \n\n  ").errors, 1);
}

TEST(Xml, MissingFileAndFolderAreErrors)
{
    TemporaryFolder folder;
    Recorder missing;
    EXPECT_EQ(parseXml(folder.path("nothing.xml"), missing), XmlOutcome::NotWellFormed);
    EXPECT_EQ(missing.errors, 1);
    Recorder asFolder;
    EXPECT_EQ(parseXml(folder.path(), asFolder), XmlOutcome::NotWellFormed);
    EXPECT_EQ(asFolder.errors, 1);
}

TEST(Xml, EncodingsAreConverted)
{
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>").characters, "\u00E9");
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>").characters, "\u20AC");
    EXPECT_EQ(parsed("\xEF\xBB\xBF<a>\u00E9</a>").characters, "\u00E9");
}

TEST(Xml, Utf16IsConverted)
{
    const std::string ascii = "<?xml version='1.0' encoding='UTF-16'?><a b='1'>" + std::string(70'000, 'x') + "</a>";
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char c : ascii) {
        little.append({ c, '\0' });
        big.append({ '\0', c });
    }
    EXPECT_EQ(parsed(little).characters.size(), 70'000u);
    EXPECT_EQ(parsed(big).characters.size(), 70'000u);
}

TEST(Xml, WrongEncodingIsAnError)
{
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='UTF-8'?><a>\xE9 caf\xE9</a>").errors, 1);
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='no-such-one'?><a>x</a>").errors, 1);
}

TEST(Xml, ExternalEntitiesAreNotRead)
{
    TemporaryFolder folder;
    const auto canary = "file://" + makeFile(folder.path("canary"), "canary");
    const auto recorder = parsed(
        "<!DOCTYPE a [<!ENTITY e SYSTEM '" + canary + "'><!ENTITY % p SYSTEM '" + canary + "'> %p;]><a>x&e;y</a>");
    EXPECT_EQ(recorder.characters, "xy");
    EXPECT_EQ(recorder.errors, 0);
}

TEST(Xml, ExternalDtdIsNotRead)
{
    TemporaryFolder folder;
    const auto dtd = "file://" + makeFile(folder.path("x.dtd"), "<!ENTITY e 'canary'>");
    const auto recorder = parsed("<!DOCTYPE a SYSTEM '" + dtd + "'><a>x&e;y</a>");
    EXPECT_EQ(recorder.characters.find("canary"), std::string::npos);
}

TEST(Xml, EntityBombIsAnError)
{
    std::string document = "<!DOCTYPE a [<!ENTITY e0 'lol lol lol lol lol '>";
    for (int i = 1; i < 12; ++i) {
        const auto before = "&e" + std::to_string(i - 1) + ";";
        document += "<!ENTITY e" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j)
            document += before;
        document += "'>";
    }
    const auto inText = parsed(document + "]><a>&e11;</a>");
    EXPECT_EQ(inText.errors, 1);
    EXPECT_LT(inText.characters.size(), 100u << 20);
    EXPECT_EQ(parsed(document + "]><a b='&e11;'/>").errors, 1);
}

TEST(Xml, OneLargeEntityUsedOftenIsAnError)
{
    std::string document = "<!DOCTYPE a [<!ENTITY e '" + std::string(100'000, 'x') + "'>]><a>";
    for (int i = 0; i < 20'000; ++i)
        document += "&e;";
    EXPECT_EQ(parsed(document + "</a>").errors, 1);
}

TEST(Xml, EntityThatHoldsItselfIsAnError)
{
    EXPECT_EQ(parsed("<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>").errors, 1);
}

TEST(Xml, DeepNestingIsToldUpToTheBound)
{
    const auto nested = [](int depth) {
        std::string document;
        for (int i = 0; i < depth; ++i)
            document += "<a>";
        for (int i = 0; i < depth; ++i)
            document += "</a>";
        return document;
    };
    EXPECT_EQ(parsed(nested(10'000)).errors, 0);
    EXPECT_EQ(parsed(nested(20'001)).errors, 1);
}

TEST(Xml, BoundsAreErrors)
{
    EXPECT_EQ(parsed("<a><b/><b/></a>", { .elements = 2 }).errors, 1);
    EXPECT_EQ(parsed("<a>" + std::string(100, 'x') + "</a>", { .bytes = 50 }).errors, 1);
    EXPECT_EQ(parsed("<a b='' c='' d=''/>", { .attributes = 2 }).errors, 1);
    EXPECT_EQ(parsed("<a b='' c=''><b b='' c=''/></a>", { .attributes = 2 }).errors, 0);
}

TEST(Xml, ManyAttributesEndTheParseEarly)
{
    std::string document = "<a";
    for (int i = 0; i < 300'000; ++i)
        document += " b" + std::to_string(i) + "=''";
    EXPECT_EQ(parsed(document + "/>").errors, 1);
}

TEST(Xml, ExceptionOfADelegateEndsTheParse)
{
    struct Thrower : Recorder {
        void didEndElement(const std::string&) override { throw std::runtime_error("no"); }
    } thrower;
    TemporaryFolder folder;
    EXPECT_EQ(parseXml(makeFile(folder.path("x.xml"), "<a><b/><c/></a>"), thrower), XmlOutcome::NotWellFormed);
    EXPECT_EQ(thrower.lines, (Lines { "<a", "<b", "error" }));
}

}
