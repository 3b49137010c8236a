#include "find/ChapterText.hpp"
#include "find/NoteText.hpp"
#include "find/TextPattern.hpp"
#include "tests/support/ResourceUse.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace pagora {

namespace {

constexpr std::size_t chapterBytes = 4'000'000;

std::string repeated(const std::string& text)
{
    std::string all;
    all.reserve(chapterBytes + text.size());
    while (all.size() < chapterBytes)
        all += text;
    return all;
}

// A chapter, and the searched text or the requested note.
struct Attack {
    const char* name;
    std::function<std::string()> chapter;
    std::string wanted;
};

const std::vector<Attack>& searches()
{
    static const std::vector<Attack> attacks {
        { "a match for each character", [] { return repeated("a"); }, "a" },
        { "matches that nearly come", [] { return repeated("a"); }, std::string(100'000, 'a') + "b" },
        { "matches within words", [] { return repeated("aa"); }, "a" },
        { "a letter with 2,000,000 accents", [] { return "a" + repeated("\xCC\x81"); }, "a" },
        { "2,000,000 letters with an accent each", [] { return repeated("a\xCC\x81"); }, "a\xCC\x81" },
        { "ligatures that become longer", [] { return repeated("\xEF\xB7\xBA" + std::string(12, 'x')); },
            "\xD8\xB5\xD9\x84\xD9\x89 x" },
        { "characters that are not seen", [] { return "a" + repeated("\xC2\xAD") + "b"; }, "ab" },
        { "2,000,000 blanks", [] { return "a" + repeated("\xC2\xA0") + "b"; }, "a b" },
        { "references without an end", [] { return repeated("&amp"); }, "&" },
        { "references of every kind", [] { return repeated("&#65;&eacute;&#x1F600;"); }, "e" },
        { "comments without an end", [] { return repeated("<!-- "); }, "a" },
        { "elements that are left out in each other", [] { return repeated("<rt>a"); }, "a" },
        { "tags that do not end", [] { return repeated("<p a='"); }, "a" },
        { "tags of quotation marks", [] { return "<p " + repeated("= \""); }, "a" },
        { "500,000 paragraphs", [] { return repeated("<p>a</p>"); }, "a" },
    };
    return attacks;
}

const std::vector<Attack>& notes()
{
    static const std::vector<Attack> attacks {
        { "a long name in a long attribute", [] { return "<p a='" + repeated("a") + "'>x</p>"; },
            std::string(2'000'000, 'a') + "b" },
        { "long names in long attributes", [] { return repeated("<p a='" + std::string(1'500'000, 'a') + "'>x</p>"); },
            std::string(2'000'000, 'a') + "b" },
        { "a note that does not end", [] { return "<p id='n'>" + repeated("a <b>") + "</p>"; }, "n" },
        { "a note of references", [] { return "<p id='n'>" + repeated("&#65;") + "</p>"; }, "n" },
        { "a note of blanks", [] { return "<p id='n'>" + repeated(" ") + "</p>"; }, "n" },
        { "a note of paragraphs in each other", [] { return "<p id='n'>" + repeated("<p>") + "a"; }, "n" },
    };
    return attacks;
}

class HostileChapters : public testing::TestWithParam<std::size_t> { };
class HostileNotes : public testing::TestWithParam<std::size_t> { };

}

// One attack on the search in a book.
TEST_P(HostileChapters, TakeNoMoreThanTheyMay)
{
    const auto& attack = searches().at(GetParam());
    auto chapter = attack.chapter();
    std::size_t last = 0;
    const auto used = test::usedBy([&] {
        const auto text = chapterText(chapter).text;
        for (const auto words : { WholeWords::No, WholeWords::Yes }) {
            last = 0;
            TextPattern(attack.wanted, words).search(text, [&](const TextMatch& match) {
                EXPECT_TRUE(match.firstByte < match.endByte && match.start >= last && match.endByte <= text.size());
                last = match.end;
                return !testing::Test::HasFailure();
            });
        }
    });
    test::expectLittleWork(attack.name, chapter.size(), used, "is read");
}

// One attack on a note beside its reference.
TEST_P(HostileNotes, TakeNoMoreThanTheyMay)
{
    const auto& attack = notes().at(GetParam());
    const auto chapter = attack.chapter();
    std::optional<std::string> note;
    const auto used = test::usedBy([&] { note = noteText(chapter, attack.wanted); });
    EXPECT_LE(note.value_or("").size(), maxNoteBytes + 3) << attack.name;
    test::expectLittleWork(attack.name, chapter.size(), used, "is read");
}

INSTANTIATE_TEST_SUITE_P(Searched, HostileChapters, testing::Range(std::size_t { 0 }, searches().size()));
INSTANTIATE_TEST_SUITE_P(Shown, HostileNotes, testing::Range(std::size_t { 0 }, notes().size()));

}
