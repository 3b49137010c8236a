#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// Operations on path strings that do not access the disk. The folder of a path without "/" is empty.

// Returns the part after the last "/", ignoring trailing slashes.
std::string lastPathComponent(std::string_view path);
// Returns the path without its last component and without the trailing "/" ("/" itself stays).
std::string deletingLastPathComponent(std::string_view path);
// Returns the last path component up to its last "."; a leading "." does not count.
std::string deletingPathExtension(std::string_view path);
// Returns the part after the last "." of the last path component; empty if there is none.
std::string pathExtension(std::string_view path);
// Joins both by one "/". If one is empty, returns the other.
std::string appendingPathComponent(std::string_view path, std::string_view component);
// Removes empty and "." components, and each ".." together with the component before it. A ".." that would lead above
// the start is kept. Symbolic links are not resolved.
std::string normalizedPath(std::string_view path);
// Returns whether `path`, normalized, is below `folder`. False for a path with a NUL byte.
bool isPathInside(std::string_view path, std::string_view folder);

std::vector<std::string> split(std::string_view text, char separator);
std::string joined(const std::vector<std::string>& parts, std::string_view separator);
// Removes white space and line breaks at both ends, including Unicode white space.
std::string trimmed(std::string_view text);
// Converts ASCII letters to lower case.
std::string lowercased(std::string_view text);

// Returns whether the text contains "*", "?", "[" or a backslash.
bool hasWildcards(std::string_view text);
// Matches the whole of `text` against `pattern`: "*" matches any bytes ("/" too), "?" one byte, "[…]" a byte of a set
// with ranges, "[!…]" a byte outside the set. A backslash escapes the next character. An unclosed set never matches.
bool matchesWildcards(std::string_view text, std::string_view pattern);

}
