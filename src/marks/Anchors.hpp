#pragma once

#include "marks/Mark.hpp"
#include "marks/MarkAnchor.hpp"

#include <optional>
#include <vector>

namespace pagora {

// Finds each mark in the documents of the book, in the order of `marks`. Tries the text at the stored place, then the
// same text elsewhere in its document and in the others (the same surroundings first, then the nearest), then the most
// similar text. No value: the text is not there, or the limit of work was reached before it was found. Reads the disk.
// Any thread.
std::vector<std::optional<MarkAnchor>> findMarks(const std::vector<Mark>& marks, const MarkedDocuments& documents);

// What a mark at a place stores: the text there and around it, from the document's file. Where the file does not have
// the text that the page shows, only that is stored. Reads the disk; any thread.
MarkedText markedTextAt(const MarkedDocuments& documents, const MarkAnchor& place);

}
