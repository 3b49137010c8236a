#pragma once

#include "marks/Mark.hpp"
#include "marks/MarkAnchor.hpp"

#include <optional>
#include <vector>

namespace pagora {

// Finds each mark in the documents of the book, in the order of `marks`. Tries the text at the stored place, then the
// same text elsewhere in its document and in the others (equal context first, then the nearest), then the most similar
// text. An element is nullopt if the text was not found before the limit of work was reached. Reads the disk.
// Thread-safe.
std::vector<std::optional<MarkAnchor>> findMarks(const std::vector<Mark>& marks, const MarkedDocuments& documents);

// Returns the text to store in a mark at a place: the text there and its context, from the document's file. If the file
// does not contain the text that the page shows, only that text is stored. Reads the disk. Thread-safe.
MarkedText markedTextAt(const MarkedDocuments& documents, const MarkAnchor& place);

}
