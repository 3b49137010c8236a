#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// A row of the list of marks.
struct MarkLine {
    enum class Kind { Heading, Bookmark, Highlight, Note };
    Kind kind = Kind::Heading;
    // The text of a heading, or the marked text.
    std::string text;
    std::string note;
    // The name of the colour in files, such as "yellow".
    std::string color;
    // Separated by commas.
    std::string tags;
    // The number of the mark.
    std::size_t number = 0;
    // True if the text was not found in the book.
    bool isLost = false;
    // True if the user made the mark. Only such marks can be changed and removed.
    bool isMine = true;
    bool operator==(const MarkLine&) const = default;
};

// The filter of the list. Empty members match all marks.
struct MarksChoice {
    // A part of the text, note or tags. Case and accents are ignored.
    std::string text;
    // Any kind except Heading.
    std::optional<MarkLine::Kind> kind;
    // The name of the colour in files. Bookmarks have no colour.
    std::string color;
    // A whole tag, with its case.
    std::string tag = {};
    bool operator==(const MarksChoice&) const = default;
};

using MarkLines = std::shared_ptr<const std::vector<MarkLine>>;

// The lines of the list, and the number of lines at the start and at the end that are the same as in the previous list.
struct ListedMarks {
    MarkLines lines = std::make_shared<const std::vector<MarkLine>>();
    std::size_t sameAtStart = 0;
    std::size_t sameAtEnd = 0;
};

// The list of all marks of a book, shown instead of the contents. Main thread only.
class MarksPane {
public:
    virtual ~MarksPane() = default;
    virtual void setLines(const ListedMarks& listed) = 0;
    // Shows why marks are not saved, in one line. Hidden if empty.
    virtual void setProblem(const std::string& text) = 0;
    // Shows the list instead of the contents, or the contents.
    virtual void setShown(bool isShown) = 0;
};

}
