#include "marks/MarksExport.hpp"

#include "base/Path.hpp"
#include "base/Translation.hpp"

#include <algorithm>
#include <iterator>

namespace pagora {

namespace {

// Exported texts omit control characters and overrides of the text direction.
bool isControl(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return (byte < 0x20 && character != '\n' && character != '\t') || byte == 0x7F;
}

// U+202A to U+202E and U+2066 to U+2069.
bool isOverride(const std::string& text, std::size_t at)
{
    if (text.compare(at, 2, "\xE2\x80") == 0)
        return at + 2 < text.size() && text[at + 2] >= '\xAA' && text[at + 2] <= '\xAE';
    return text.compare(at, 2, "\xE2\x81") == 0 && at + 2 < text.size() && text[at + 2] >= '\xA6'
        && text[at + 2] <= '\xA9';
}

template <typename Append>
std::string escaped(const std::string& text, Append append)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isOverride(text, i)) {
            i += 2;
            continue;
        }
        if (!isControl(text[i]))
            append(result, text[i]);
    }
    return result;
}

std::string html(const std::string& text)
{
    return escaped(text, [](std::string& result, char character) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\n':
            result += "<br>";
            break;
        default:
            result += character;
        }
    });
}

// Escapes a text for Markdown. `prefix` is put before each line except the first.
std::string markdown(const std::string& text, const std::string& prefix)
{
    return escaped(text, [&prefix](std::string& result, char character) {
        constexpr std::string_view special = "\\`*_{}[]<>#+-.!|~&";
        if (special.find(character) != std::string_view::npos)
            result += '\\';
        result += character;
        if (character == '\n')
            result += prefix;
    });
}

std::string placeOf(const ExportedMark& mark)
{
    return mark.percentage ? std::to_string(*mark.percentage) + " %" : std::string();
}

std::string titleOf(const MarkedBook& book)
{
    return book.author.empty() ? book.title : book.title + " (" + book.author + ")";
}

std::string textOf(const Mark& mark)
{
    return mark.isBookmark ? mark.text.after : mark.text.exact;
}

std::string asMarkdown(const MarkedBook& book, const std::vector<ExportedMark>& marks)
{
    std::string text = "# " + markdown(titleOf(book), " ") + "\n";
    std::optional<std::string> chapter;
    for (const auto& mark : marks) {
        if (chapter != mark.chapter) {
            chapter = mark.chapter;
            text += "\n## " + markdown(chapter->empty() ? _("Not found in this edition") : *chapter, " ") + "\n";
        }
        if (mark.mark.isBookmark)
            text += "\n" + std::string(_("Bookmark")) + ": " + markdown(textOf(mark.mark), "") + " …\n";
        else
            text += "\n> " + markdown(textOf(mark.mark), "> ") + "\n";
        if (!mark.mark.note.empty())
            text += "\n" + markdown(mark.mark.note, "") + "\n";
        const auto place = placeOf(mark);
        if (!place.empty())
            text += "\n(" + place + ")\n";
    }
    return text;
}

std::string asHtml(const MarkedBook& book, const std::vector<ExportedMark>& marks)
{
    std::string text = "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" + html(titleOf(book))
        + "</title>\n</head>\n<body>\n<h1>" + html(titleOf(book)) + "</h1>\n";
    std::optional<std::string> chapter;
    for (const auto& mark : marks) {
        if (chapter != mark.chapter) {
            chapter = mark.chapter;
            text += "<h2>" + html(chapter->empty() ? _("Not found in this edition") : *chapter) + "</h2>\n";
        }
        if (mark.mark.isBookmark)
            text += "<p>" + html(_("Bookmark")) + ": " + html(textOf(mark.mark)) + " …</p>\n";
        else
            text += "<blockquote>" + html(textOf(mark.mark)) + "</blockquote>\n";
        if (!mark.mark.note.empty())
            text += "<p>" + html(mark.mark.note) + "</p>\n";
        const auto place = placeOf(mark);
        if (!place.empty())
            text += "<p>" + place + "</p>\n";
    }
    return text + "</body>\n</html>\n";
}

}

ExportFormat exportFormatOf(const std::string& path)
{
    const auto extension = lowercased(pathExtension(path));
    if (extension == "md")
        return ExportFormat::Markdown;
    return extension == "html" || extension == "htm" ? ExportFormat::Html : ExportFormat::Annotation;
}

bool MarksFilter::passes(const Mark& mark) const
{
    const bool hasTag = std::any_of(
        mark.tags.begin(), mark.tags.end(), [this](const std::string& tag) { return tags.contains(tag); });
    return (kinds.empty() || kinds.contains(mark.kind())) && (colors.empty() || colors.contains(mark.color))
        && (tags.empty() || hasTag);
}

std::string exportedMarks(
    ExportFormat format, const MarkedBook& book, const std::vector<ExportedMark>& marks, const MarksFilter& filter)
{
    std::vector<ExportedMark> passing;
    std::copy_if(marks.begin(), marks.end(), std::back_inserter(passing),
        [&filter](const ExportedMark& mark) { return filter.passes(mark.mark); });
    if (format == ExportFormat::Markdown)
        return asMarkdown(book, passing);
    if (format == ExportFormat::Html)
        return asHtml(book, passing);
    auto set = annotationSetAbout(book);
    for (auto& mark : passing)
        set.marks.push_back(std::move(mark.mark));
    return annotationText(set);
}

bool isAboutAnotherBook(const AnnotationSet& set, const MarkedBook& book)
{
    const auto identifiers = identifiersOf(set);
    if (!identifiers.empty() && !book.identifier.empty())
        return std::find(identifiers.begin(), identifiers.end(), book.identifier) == identifiers.end();
    const auto title = titleOf(set);
    return !title.empty() && !book.title.empty() && title != book.title;
}

}
