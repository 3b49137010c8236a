#pragma once

#include "marks/AnnotationSet.hpp"
#include "marks/MarkAnchor.hpp"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace pagora {

// An exported mark with the description of its place.
struct ExportedMark {
    Mark mark;
    // The name of the chapter, and its position in the book in percent. Empty and nullopt if the text was not found.
    std::string chapter;
    std::optional<int> percentage;
};

// Selects the exported marks. An empty set matches all marks.
struct MarksFilter {
    std::set<Mark::Kind> kinds;
    std::set<MarkColor> colors;
    // Matches marks that have at least one of them.
    std::set<std::string> tags;

    bool passes(const Mark& mark) const;
};

enum class ExportFormat { Annotation, Markdown, Html };
// Returns the format for a file name: ".md", ".html", or else ".annotation".
ExportFormat exportFormatOf(const std::string& path);

// Returns the marks of a book in that format: quote, note, chapter and place. Texts of marks are escaped. Thread-safe.
std::string exportedMarks(ExportFormat format, const MarkedBook& book, const std::vector<ExportedMark>& marks,
    const MarksFilter& filter = {});

// Returns whether a set belongs to another book: the book's identifier is not among those of the set, or, if one of the
// two has none, the titles differ.
bool isAboutAnotherBook(const AnnotationSet& set, const MarkedBook& book);

}
