#pragma once

#include "catalogue/BookInfo.hpp"

#include <cstddef>
#include <optional>
#include <string>

namespace pagora {

// Whether the text stands for one that the book does not have: "<unknown>" for an author, "<not found>" for a title or
// an identifier, or no text at all.
bool standsForNone(const std::optional<std::string>& text);

// Whether the text is of use to programs alone: a URN, or one that stands for none.
bool saysLittle(const std::optional<std::string>& text);

// How much of the book was read, from 0 to 1, as its stored place tells; documents of the book count alike. Missing for
// a book without a place, such as one that was never read or has a fixed layout. Reads the list of the book's files
// where there is a place.
std::optional<double> readFraction(const BookInfo& book);

}
