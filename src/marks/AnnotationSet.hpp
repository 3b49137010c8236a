#pragma once

#include "marks/JsonNode.hpp"
#include "marks/Mark.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// The book that a set is about. Texts that are not known are empty.
struct MarkedBook {
    std::string identifier;
    std::string title;
    std::string author;
};

// The marks of a book as a file of EPUB Annotations 1.0 holds them. What it does not know is kept: members of the set
// and of its marks, and items that are no marks.
struct AnnotationSet {
    // The set without its items.
    JsonNode head;
    std::vector<Mark> marks;
    // The items that are no marks, or past the bounds, as they are written.
    std::vector<std::string> others;
};

// A new set about a book.
AnnotationSet annotationSetAbout(const MarkedBook& book);
// Reads a file. Missing where it is no JSON object with items. Marks without an identifier get one, later marks with
// the same one are among the others. Any thread.
std::optional<AnnotationSet> annotationSetFrom(std::string_view json);
// The file's bytes.
std::string annotationText(const AnnotationSet& set);

// The identifiers that the set says its book has, and the title.
std::vector<std::string> identifiersOf(const AnnotationSet& set);
std::string titleOf(const AnnotationSet& set);

}
