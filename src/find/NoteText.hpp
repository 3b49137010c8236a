#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// The text of a note: of the element with that id, or, if it is an inline element, of the rest of its paragraph. Each
// paragraph ends with a line feed. Scripts and styles are omitted. At most `maxNoteBytes`. Missing if there is no such
// element or no text. Any thread.
std::optional<std::string> noteText(std::string_view document, const std::string& id);

// The same for a file in a folder. Missing also if the file cannot be read or is outside the folder after resolving
// links.
std::optional<std::string> noteTextOf(const std::string& path, const std::string& folder, const std::string& id);

inline constexpr std::size_t maxNoteBytes = 4'000;

}
