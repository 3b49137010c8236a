#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// Path strings, taken apart and put together without looking at the disk. A path without "/" has an empty folder.

// What follows the last "/", trailing slashes aside.
std::string lastPathComponent(std::string_view path);
// What comes before the last path component, without the trailing "/" ("/" itself stays).
std::string deletingLastPathComponent(std::string_view path);
// The last path component up to its last "."; a leading "." does not count.
std::string deletingPathExtension(std::string_view path);
// What follows the last "." of the last path component; empty when there is none.
std::string pathExtension(std::string_view path);
// Both joined by one "/"; the other when one is empty.
std::string appendingPathComponent(std::string_view path, std::string_view component);
// Without empty and "." components, and each ".." together with the component before it; what would lead above the
// start is kept. Links are not looked at.
std::string normalizedPath(std::string_view path);
// Whether `path`, normalized, lies below the folder `folder`. A NUL byte never does.
bool isPathInside(std::string_view path, std::string_view folder);

std::vector<std::string> split(std::string_view text, char separator);
std::string joined(const std::vector<std::string>& parts, std::string_view separator);
// Without white space and line breaks at both ends, those beyond ASCII included.
std::string trimmed(std::string_view text);
// ASCII letters in lower case, all else as it is.
std::string lowercased(std::string_view text);

// Whether the text holds one of "*", "?", "[" and the backslash.
bool hasWildcards(std::string_view text);
// Whether the whole of `text` fits `pattern`: "*" stands for any bytes ("/" too), "?" for one, "[…]" for one of a set
// with ranges, "[!…]" for one that is not in it. A backslash takes the meaning of the character after it. A set that
// nothing closes stands for nothing.
bool matchesWildcards(std::string_view text, std::string_view pattern);

}
