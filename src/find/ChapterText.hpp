#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// The text of a document as a reader sees it: the text of its body without scripts, styles and the readings above
// characters. A blank stands for each run of ASCII white space and each line break, a line feed for the end of a
// paragraph, a cell or another block. Within the text, a place is the number of UTF-16 units before it, blanks and line
// feeds left out: the page script counts the same in the page's own nodes.
struct ChapterText {
    std::string text;
};

// The text of a document's bytes. Any thread.
ChapterText chapterText(std::string bytes);

// The text of a file, missing when it cannot be read, is larger than `maxChapterBytes` or lies outside `folder`, links
// followed. Any thread.
std::optional<ChapterText> chapterTextOf(const std::string& path, const std::string& folder);

// Whether the file lies below the folder, links followed on both sides.
bool isWithinFolder(const std::string& path, const std::string& folder);

inline constexpr std::size_t maxChapterBytes = 32u << 20;

// Whether that character is left out of the count of places.
constexpr bool isBlank(char32_t character)
{
    return character == ' ' || character == '\n' || character == '\t' || character == '\r' || character == '\f';
}

}
