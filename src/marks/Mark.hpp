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
// Returns the name that is used in files.
const char* nameOf(MarkColor color);
// Returns yellow for an unknown name.
MarkColor markColorFrom(const std::string& name);

// The stored description of a marked place, from which the place is found again. Positions count Unicode characters.
struct MarkedText {
    // The document: its path relative to the package document's folder, with percent escapes.
    std::string source;
    // The text, empty for a bookmark, and the context before and after it.
    std::string exact;
    std::string before;
    std::string after;
    // The position in characters of the document's text, in which each run of white space counts as one.
    std::optional<std::size_t> start;
    std::optional<std::size_t> end;
    // The identifier of the element from which characters are counted; empty for the body.
    std::string element;
    bool operator==(const MarkedText&) const = default;
};

// A bookmark, a highlight or a note.
struct Mark {
    // A note is a highlight with a text of the user.
    enum class Kind { Bookmark, Highlight, Note };
    Kind kind() const;

    // A URL, "urn:uuid:…".
    std::string id;
    // ISO 8601; in UTC if written by this program. `modified` is empty until the first change.
    std::string created;
    std::string modified;
    bool isBookmark = false;
    MarkColor color = MarkColor::Yellow;
    std::string note;
    std::vector<std::string> tags;
    MarkedText text;
    // The JSON text in the file; empty if it was not read from a file.
    std::string written;
};

// The stored characters of context on each side, the maximum number of shown marks of a book, and the maximum size of a
// note in bytes.
inline constexpr std::size_t marksContext = 32;
inline constexpr std::size_t maxMarks = 100'000;
inline constexpr std::size_t maxMarkNoteBytes = 1u << 20;

// Return an identifier for a new mark, and the current time.
std::string newMarkId();
std::string timeNow();
// Returns the time of the last change in microseconds since 1970; 0 if it is not stored.
std::int64_t timeOfChange(const Mark& mark);

}
