#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace pagora {

// The visible text of a document: the text of its body without scripts, styles and ruby annotations. Each run of ASCII
// white space and each line break is a space. The end of a paragraph, cell or other block is a line feed. A place in
// the text is the number of UTF-16 units before it, without spaces and line feeds. The page script counts places in the
// page's nodes in the same way.
struct ChapterText {
    std::string text;
};

// The text of a document's bytes. Any thread.
ChapterText chapterText(std::string bytes);

// The text of a file. Missing if it cannot be read, is larger than `maxChapterBytes` or is outside `folder` after
// resolving links. Any thread.
std::optional<ChapterText> chapterTextOf(const std::string& path, const std::string& folder);

// Whether the file is in the folder, after resolving links in both paths.
bool isWithinFolder(const std::string& path, const std::string& folder);

inline constexpr std::size_t maxChapterBytes = 32u << 20;

// Whether that character does not count as a place.
constexpr bool isBlank(char32_t character)
{
    return character == ' ' || character == '\n' || character == '\t' || character == '\r' || character == '\f';
}

}
