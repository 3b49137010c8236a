#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// The text of a note: of the element with that id, or, where the id is on a mark within the text, of the paragraph that
// it is in, from there on. A line feed ends each paragraph. Scripts and styles have no text. At most `maxNoteBytes` are
// taken. Missing where there is no such element or no text. Any thread.
std::optional<std::string> noteText(std::string_view document, const std::string& id);

// The same of a file below a folder. Missing also where the file cannot be read or lies elsewhere, links followed.
std::optional<std::string> noteTextOf(const std::string& path, const std::string& folder, const std::string& id);

inline constexpr std::size_t maxNoteBytes = 4'000;

}
