#pragma once

#include "catalogue/BookInfo.hpp"

#include <cstddef>
#include <optional>
#include <string>

namespace pagora {

// Returns whether the text is a placeholder for a missing one: "<unknown>" for an author, "<not found>" for a title or
// an identifier, or empty.
bool standsForNone(const std::optional<std::string>& text);

// Returns whether the text tells the user nothing: a URN or a placeholder.
bool saysLittle(const std::optional<std::string>& text);

// Returns the fraction of the book that was read, computed from the stored place; all documents have the same weight.
// Nullopt for a book without a stored place: one that was never read or has a fixed layout. Reads the list of the
// book's files only if there is a place.
std::optional<double> readFraction(const BookInfo& book);

}
