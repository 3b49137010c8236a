#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Returns the text of a note: of the element with that id, or, if it is an inline element, of the rest of its
// paragraph. Each paragraph ends with a line feed. Scripts and styles are omitted. The text is truncated to
// `maxNoteBytes`. Returns nullopt if there is no such element or no text. Thread-safe.
std::optional<std::string> noteText(std::string_view document, const std::string& id);

// Returns the text of a note in a file. Also returns nullopt if the file cannot be read or is outside the folder after
// resolving links.
std::optional<std::string> noteTextOf(const std::string& path, const std::string& folder, const std::string& id);

inline constexpr std::size_t maxNoteBytes = 4'000;

}
