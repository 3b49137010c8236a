#pragma once

#include "base/Value.hpp"
#include "catalogue/BookInfo.hpp"

namespace pagora {

// The stored form of a book: a dictionary with these keys. Readers tolerate any missing key.
namespace entry_keys {
inline constexpr const char* Type = "Type";
inline constexpr const char* ePubPath = "ePubPath";
inline constexpr const char* Title = "Title";
inline constexpr const char* Author = "Author";
inline constexpr const char* ISBN = "ISBN";
inline constexpr const char* CoverImage = "CoverImage";
inline constexpr const char* LastInd = "LastInd";
inline constexpr const char* LastCap = "LastCap";
inline constexpr const char* fixedWidth = "fixedWidth";
inline constexpr const char* fixedHeight = "fixedHeight";
inline constexpr const char* Files = "Files";
inline constexpr const char* Content = "Content";
inline constexpr const char* BookLoc = "BookLoc";
// Fraction of the chapter before the middle of the page last shown.
inline constexpr const char* LastPlace = "LastPlace";
}

// Returns the entry of a record. The first ten keys are written in order up to the first field that is missing in the
// record; the rest of the ten is omitted. Numbers are the low 32 bits, signed.
Value entryFromBook(const BookInfo& book);

// Returns the record of an entry. Fields whose keys are missing are null or 0.
BookInfoPtr bookFromEntry(const Value& entry);

// Returns the entry with a reading position: index of the content document, position in it, and the fraction at the
// middle of the page. If `place` is nullopt, the stored fraction stays.
Value entryWithPosition(
    const Value& entry, std::uint64_t lastIndex, std::uint64_t lastCap, std::optional<double> lastPlace);

}
