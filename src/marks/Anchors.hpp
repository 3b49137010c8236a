#pragma once

#include "marks/Mark.hpp"
#include "marks/MarkAnchor.hpp"

#include <optional>
#include <vector>

namespace pagora {

// Finds marks in the documents of the book: by the text at the stored place first, then by the same text elsewhere, the
// one with the same surroundings and the nearest first, in the same document and then in all others, then by the most
// similar text. Missing where nothing is similar. The work is bounded: what it does not suffice for is not found. Reads
// the disk; any thread.
std::vector<std::optional<MarkAnchor>> findMarks(const std::vector<Mark>& marks, const MarkedDocuments& documents);

// What a mark at a place stores: the text there and around it, from the document's file. Where the file does not have
// the text that the page shows, only that is stored. Reads the disk; any thread.
MarkedText markedTextAt(const MarkedDocuments& documents, const MarkAnchor& place);

}
