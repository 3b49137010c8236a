#include "marks/AnnotationSet.hpp"

#include "marks/AnnotationJson.hpp"
#include "marks/JsonScanner.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

// A set as written by another program.
constexpr const char* other = R"json({
  "@context": "https://www.w3.org/ns/epub-anno.jsonld",
  "id": "urn:uuid:123-123-123-123",
  "type": "AnnotationSet",
  "generator": "https://example.org/reader",
  "generated": "2025-09-01T10:00:00Z",
  "title": "My marks",
  "x:colour-scheme": {"of": ["another", "program"]},
  "about": {
    "dc:identifier": ["urn:isbn:123456789", "urn:uuid:9"],
    "dc:title": "A Book",
    "dc:creator": ["An Author"],
    "dc:date": "2024"
  },
  "items": [
    {
      "id": "urn:uuid:1", "type": "Annotation", "created": "2025-09-01T10:00:00Z", "motivation": "highlighting",
      "creator": {"id": "urn:uuid:p", "type": "Person", "name": "A Reader"},
      "body": {"type": "TextualBody", "value": "", "color": "pink", "highlight": "underline", "tags": ["a", "b"]},
      "target": {
        "source": "Text/one%201.xhtml",
        "selector": [
          {"type": "FragmentSelector", "conformsTo": "http://www.idpf.org/epub/linking/cfi/epub-cfi.html",
           "value": "epubcfi(/6/4!/4/2,/1:3,/1:9)"
},
          {"type": "CssSelector", "value": "#p4", "refinedBy": {"type": "TextPositionSelector", "start": 3, "end": 9}},
          {"type": "TextQuoteSelector", "exact": "quoted", "prefix": "it was ", "suffix": " by all"}
        ],
        "meta":
{
    "headings" : [ { "level" : 1, "txt" : "One" } ], "progression" : 0.25
}
}
},
    {"id": "urn:uuid:2", "type": "Annotation", "created": "2025-09-02T10:00:00+02:00",
     "target": {"source": "Text/two.xhtml", "selector": {"type": "FragmentSelector", "value": "note7"}}},
    {"id": "urn:uuid:3", "created": "2025-09-03T10:00:00Z", "body": "a plain text",
     "target": {"source": "two.xhtml", "selector": [{"type": "FragmentSelector", "value": ":~:text=before-,this%20text,-after"}]}},
    {"id": "urn:uuid:4", "type": "Something", "of": "theirs"},
    "nothing"
  ]
})json";
}

TEST(AnnotationSet, ReadsTheMarksOfAnotherProgram)
{
    const auto set = annotationSetFrom(other);
    ASSERT_TRUE(set);
    ASSERT_EQ(set->marks.size(), 3u);
    const auto& highlight = set->marks[0];
    EXPECT_EQ(highlight.kind(), Mark::Kind::Highlight);
    EXPECT_EQ(highlight.color, MarkColor::Pink);
    EXPECT_EQ(highlight.tags, (std::vector<std::string> { "a", "b" }));
    EXPECT_EQ(highlight.text.source, "Text/one%201.xhtml");
    EXPECT_EQ(highlight.text.exact, "quoted");
    EXPECT_EQ(highlight.text.element, "p4");
    EXPECT_EQ(highlight.text.start, 3u);
    EXPECT_EQ(set->marks[1].kind(), Mark::Kind::Bookmark);
    EXPECT_EQ(set->marks[1].text.element, "note7");
    EXPECT_EQ(set->marks[2].kind(), Mark::Kind::Note);
    EXPECT_EQ(set->marks[2].note, "a plain text");
    EXPECT_EQ(set->marks[2].text.before, "before");
    EXPECT_EQ(set->marks[2].text.exact, "this text");
    EXPECT_EQ(set->others.size(), 2u);
    EXPECT_EQ(identifiersOf(*set), (std::vector<std::string> { "urn:isbn:123456789", "urn:uuid:9" }));
    EXPECT_EQ(titleOf(*set), "A Book");
}

TEST(AnnotationSet, WritesAgainWhatAnotherProgramWrote)
{
    const auto before = *jsonNodeFrom(other);
    const auto after = *jsonNodeFrom(annotationText(*annotationSetFrom(other)));
    EXPECT_EQ(jsonText(after), jsonText(before));
}

TEST(AnnotationSet, KeepsUnknownMembersOfAMarkThatChanges)
{
    auto set = *annotationSetFrom(other);
    auto& mark = set.marks[0];
    mark.note = "mine";
    mark.color = MarkColor::Green;
    mark.modified = "2026-01-01T00:00:00Z";
    mark.written = markText(mark);
    const auto items = *jsonNodeFrom(annotationText(set))->find("items");
    const auto& item = items.elements[0];
    EXPECT_EQ(item.textOf("motivation"), "commenting");
    EXPECT_EQ(item.find("creator")->textOf("name"), "A Reader");
    EXPECT_EQ(item.find("body")->textOf("highlight"), "underline");
    EXPECT_EQ(item.find("body")->textOf("color"), "green");
    EXPECT_EQ(item.find("body")->textOf("value"), "mine");
    EXPECT_EQ(
        jsonText(*item.find("target")), jsonText(*jsonNodeFrom(other)->find("items")->elements[0].find("target")));
}

TEST(AnnotationSet, ReadsEachKindOfMarkAsItWasWritten)
{
    auto set = annotationSetAbout({ "urn:isbn:1", "Title", "Author" });
    for (const char* note : { "", "", "a note" }) {
        Mark mark;
        mark.id = newMarkId();
        mark.created = timeNow();
        mark.isBookmark = set.marks.empty();
        mark.note = note;
        mark.color = mark.isBookmark ? MarkColor::Yellow : MarkColor::Blue;
        mark.text
            = { "one.xhtml", mark.isBookmark ? "" : "exact", "before ", " after", 7, mark.isBookmark ? 7 : 12, "" };
        set.marks.push_back(mark);
    }
    const auto again = annotationSetFrom(annotationText(set));
    ASSERT_TRUE(again);
    ASSERT_EQ(again->marks.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(again->marks[i].kind(), set.marks[i].kind());
        EXPECT_EQ(again->marks[i].text, set.marks[i].text);
        EXPECT_EQ(again->marks[i].color, set.marks[i].color);
        EXPECT_EQ(again->marks[i].note, set.marks[i].note);
        EXPECT_EQ(again->marks[i].id, set.marks[i].id);
        EXPECT_EQ(again->marks[i].created, set.marks[i].created);
    }
    EXPECT_EQ(identifiersOf(*again), std::vector<std::string> { "urn:isbn:1" });
}

TEST(AnnotationSet, KeepsMarkupAndControlCharactersOfANoteAsText)
{
    Mark mark;
    mark.note = "<b onclick='x'>bold</b>\x01 \xE2\x80\xAE turned \" \\ \n end";
    mark.text.source = "one.xhtml";
    const auto again = markFrom(markText(mark));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->note, mark.note);
}

TEST(AnnotationSet, TakesNotesOfAMegabyteAndLeavesLongerOnesAmongTheOthers)
{
    const auto item = [](std::size_t size) {
        return R"({"id": "urn:uuid:1", "target": {"source": "a"}, "body": {"value": ")" + std::string(size, 'x')
            + "\"}}";
    };
    EXPECT_EQ(markFrom(item(maxMarkNoteBytes))->note.size(), maxMarkNoteBytes);
    EXPECT_FALSE(markFrom(item(maxMarkNoteBytes + 1)));
    const auto set = annotationSetFrom("{\"items\": [" + item(maxMarkNoteBytes + 1) + "]}");
    EXPECT_EQ(set->others.size(), 1u);
    EXPECT_NE(annotationText(*set).find(std::string(maxMarkNoteBytes + 1, 'x')), std::string::npos);
}

TEST(AnnotationSet, TakesAHundredThousandMarksAndKeepsWhatIsMore)
{
    std::string text = "{\"about\": {}, \"items\": [";
    for (std::size_t i = 0; i <= maxMarks; ++i)
        text += (i ? ",{\"id\": \"urn:uuid:" : "{\"id\": \"urn:uuid:") + std::to_string(i)
            + R"(", "target": {"source": "a"}})";
    const auto set = annotationSetFrom(text + "]}");
    ASSERT_TRUE(set);
    EXPECT_EQ(set->marks.size(), maxMarks);
    EXPECT_EQ(set->others.size(), 1u);
    EXPECT_EQ(annotationSetFrom(annotationText(*set))->others, set->others);
}

TEST(AnnotationSet, GivesAMarkWithoutAnIdentifierOneThatStays)
{
    const auto set = annotationSetFrom(R"({"items": [{"target": {"source": "a"}}]})");
    ASSERT_EQ(set->marks.size(), 1u);
    EXPECT_TRUE(set->marks[0].id.starts_with("urn:uuid:"));
    EXPECT_EQ(annotationSetFrom(annotationText(*set))->marks[0].id, set->marks[0].id);
}

TEST(AnnotationSet, RefusesWhatIsNoSet)
{
    for (const char* text : { "", "[]", "{}", "{\"items\": 1}", "{\"items\": [}", "null", "{\"items\": [], \"a\": }" })
        EXPECT_FALSE(annotationSetFrom(text)) << text;
}

TEST(AnnotationSet, ComparesTimesOfDifferentZones)
{
    Mark mark;
    mark.created = "2025-09-02T10:00:00+02:00";
    Mark later = mark;
    later.modified = "2025-09-02T08:00:01Z";
    EXPECT_GT(timeOfChange(later), timeOfChange(mark));
    mark.created = "yesterday";
    EXPECT_EQ(timeOfChange(mark), 0);
}
}
