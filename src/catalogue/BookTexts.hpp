#pragma once

#include "catalogue/BookInfo.hpp"

#include <cstddef>
#include <optional>
#include <string>

namespace pagora {

// Whether the text is a placeholder for a missing one: "<unknown>" for an author, "<not found>" for a title or an
// identifier, or empty.
bool standsForNone(const std::optional<std::string>& text);

// Whether the text means nothing to a reader: a URN or a placeholder.
bool saysLittle(const std::optional<std::string>& text);

// The part of the book that was read, from 0 to 1, by the stored place; all documents have the same weight. Missing for
// a book without a stored place: one that was never read or has a fixed layout. Reads the list of the book's files only
// if there is a place.
std::optional<double> readFraction(const BookInfo& book);

}
