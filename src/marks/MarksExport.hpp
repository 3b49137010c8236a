#pragma once

#include "marks/AnnotationSet.hpp"
#include "marks/MarkAnchor.hpp"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace pagora {

// A mark that goes out, with what the book says of its place.
struct ExportedMark {
    Mark mark;
    // The name of the chapter, and the part of the book that is before it, in percent; empty and missing where the book
    // does not have its text.
    std::string chapter;
    std::optional<int> percentage;
};

// Which marks go out. What is empty lets all pass.
struct MarksFilter {
    std::set<Mark::Kind> kinds;
    std::set<MarkColor> colors;
    // One of them is enough.
    std::set<std::string> tags;

    bool passes(const Mark& mark) const;
};

enum class ExportFormat { Annotation, Markdown, Html };

// The marks of a book as a text of that format: quote, note, chapter and place. Texts of marks never are markup. Any
// thread.
std::string exportedMarks(ExportFormat format, const MarkedBook& book, const std::vector<ExportedMark>& marks,
    const MarksFilter& filter = {});

// Whether a set is about another book: it names identifiers, and the book's is none of them, or, where one of both has
// none, another title.
bool isAboutAnotherBook(const AnnotationSet& set, const MarkedBook& book);

}
