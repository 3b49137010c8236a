#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

enum class MarkColor { Yellow, Orange, Pink, Purple, Blue, Green };
inline constexpr std::array markColors { MarkColor::Yellow, MarkColor::Orange, MarkColor::Pink, MarkColor::Purple,
    MarkColor::Blue, MarkColor::Green };
// The name that files have for it.
const char* nameOf(MarkColor color);
// Yellow for a name that is none of them.
MarkColor markColorFrom(const std::string& name);

// What a mark says of the place that it marks, so that the place is found again. Characters are those of Unicode.
struct MarkedText {
    // The document, as the package names it: a path from the package document's folder, with percent escapes.
    std::string source;
    // The text, empty at a bookmark, and what stands before and after it.
    std::string exact;
    std::string before;
    std::string after;
    // Where it is, in characters of the document's text with each run of white space as one.
    std::optional<std::size_t> start;
    std::optional<std::size_t> end;
    // The identifier of the element from whose text on the characters count; empty for the body.
    std::string element;
    bool operator==(const MarkedText&) const = default;
};

// What a person leaves in a book.
struct Mark {
    // A bookmark marks a place; a highlight text; a note is a highlight with a text of the person.
    enum class Kind { Bookmark, Highlight, Note };
    Kind kind() const;

    // A URL, "urn:uuid:…".
    std::string id;
    // By ISO 8601, in UTC where it was made here; `modified` is empty until it is changed.
    std::string created;
    std::string modified;
    bool isBookmark = false;
    MarkColor color = MarkColor::Yellow;
    std::string note;
    std::vector<std::string> tags;
    MarkedText text;
    // How the file has it, as JSON; empty while it is in no file.
    std::string written;
};

// How many characters around a text are kept, how many marks of a book are shown, how long a note may be, in bytes.
inline constexpr std::size_t marksContext = 32;
inline constexpr std::size_t maxMarks = 100'000;
inline constexpr std::size_t maxMarkNoteBytes = 1u << 20;

// A new mark's identifier, and the time now.
std::string newMarkId();
std::string timeNow();
// When the mark was changed last, in microseconds since 1970; 0 where it does not say.
std::int64_t timeOfChange(const Mark& mark);

}
