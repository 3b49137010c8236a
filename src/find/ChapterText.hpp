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

// Returns the text of a document's bytes. Thread-safe.
ChapterText chapterText(std::string bytes);

// Returns the text of a file; nullopt if it cannot be read, is larger than `maxChapterBytes` or is outside `folder`
// after resolving links. Thread-safe.
std::optional<ChapterText> chapterTextOf(const std::string& path, const std::string& folder);

// Returns whether the file is in the folder, after resolving links in both paths.
bool isWithinFolder(const std::string& path, const std::string& folder);

inline constexpr std::size_t maxChapterBytes = 32u << 20;

// Returns whether the character is not counted in places.
constexpr bool isBlank(char32_t character)
{
    return character == ' ' || character == '\n' || character == '\t' || character == '\r' || character == '\f';
}

}
