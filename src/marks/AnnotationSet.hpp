#pragma once

#include "marks/JsonNode.hpp"
#include "marks/Mark.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// The book of an annotation set. Unknown texts are empty.
struct MarkedBook {
    std::string identifier;
    std::string title;
    std::string author;
};

// The marks of a book in the format EPUB Annotations 1.0. Unknown members of the set and of its marks are kept, as are
// items that are not marks.
struct AnnotationSet {
    // The set without its items.
    JsonNode head;
    std::vector<Mark> marks;
    // The JSON texts of items that are not marks or exceed the limits.
    std::vector<std::string> others;
};

// Returns a new set about a book.
AnnotationSet annotationSetAbout(const MarkedBook& book);
// Parses a file. Returns nullopt if it is not a JSON object with items. Marks without an identifier get one. Marks with
// a repeated identifier are put into `others`. Thread-safe.
std::optional<AnnotationSet> annotationSetFrom(std::string_view json);
// Returns the bytes of the set's file.
std::string annotationText(const AnnotationSet& set);

// Returns the book's identifiers and title according to the set.
std::vector<std::string> identifiersOf(const AnnotationSet& set);
std::string titleOf(const AnnotationSet& set);

}
