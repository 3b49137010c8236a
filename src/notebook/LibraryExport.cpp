#include "notebook/LibraryExport.hpp"

#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "base/Url.hpp"
#include "files/Files.hpp"
#include "marks/MarksFile.hpp"

#include <algorithm>
#include <limits>
#include <map>
#include <tuple>

namespace pagora {

namespace {

constexpr const char* extension = "annotation";
// The maximum number of names tried for a file.
constexpr int maxNames = 1'000;

const char* extensionOf(ExportFormat format)
{
    switch (format) {
    case ExportFormat::Markdown:
        return ".md";
    case ExportFormat::Html:
        return ".html";
    default:
        return ".annotation";
    }
}

// Returns the name of the chapter of each document. A document that is not in the contents has the name of the chapter
// before it.
std::vector<std::string> chapterNames(const BookToExport& book)
{
    std::map<std::string, std::string> titles;
    for (const auto& [path, title] : book.contents)
        titles.emplace(lastPathComponent(path.substr(0, path.find('#'))), title);
    std::vector<std::string> names;
    std::string name = _("Beginning");
    for (const auto& path : book.documents) {
        if (const auto found = titles.find(lastPathComponent(path)); found != titles.end())
            name = found->second;
        names.push_back(name);
    }
    return names;
}

// Returns the index of the document whose path relative to the package document's folder is `source`.
std::optional<std::size_t> documentOf(const BookToExport& book, const std::string& source)
{
    const auto name = '/' + replacingPercentEscapes(source).value_or(source);
    const auto found = std::find_if(book.documents.begin(), book.documents.end(),
        [&name](const std::string& path) { return path.ends_with(name); });
    return found == book.documents.end() ? std::nullopt
                                         : std::optional(static_cast<std::size_t>(found - book.documents.begin()));
}

std::vector<ExportedMark> inOrder(std::vector<Mark> marks, const BookToExport& book)
{
    const auto names = chapterNames(book);
    std::map<std::string, std::optional<std::size_t>> documents;
    for (const auto& mark : marks) {
        if (!documents.contains(mark.text.source))
            documents[mark.text.source] = documentOf(book, mark.text.source);
    }
    const auto place = [&documents](const Mark& mark) {
        const auto document = documents.at(mark.text.source);
        return std::tuple(document.value_or(std::numeric_limits<std::size_t>::max()), mark.text.start.value_or(0));
    };
    std::stable_sort(marks.begin(), marks.end(),
        [&place](const Mark& first, const Mark& second) { return place(first) < place(second); });
    std::vector<ExportedMark> exported;
    for (auto& mark : marks) {
        const auto document = documents.at(mark.text.source);
        ExportedMark out { std::move(mark), {}, {} };
        if (document) {
            out.chapter = names.at(*document);
            out.percentage = static_cast<int>(100 * *document / names.size());
        }
        exported.push_back(std::move(out));
    }
    return exported;
}

// Returns a path that does not exist yet; empty if all names are taken.
std::string freePath(const MarksExportRequest& request, const std::string& name)
{
    const auto path = appendingPathComponent(request.folder, name);
    for (int i = 1; i <= maxNames; ++i) {
        const auto tried = path + (i == 1 ? "" : " " + std::to_string(i)) + extensionOf(request.format);
        if (!fileExists(tried))
            return tried;
    }
    return {};
}

}

std::set<std::string> namesWithMarks(const std::string& folder)
{
    std::set<std::string> names;
    for (const auto& name : folderEntries(folder).value_or(std::vector<std::string> {})) {
        if (pathExtension(name) == extension)
            names.insert(deletingPathExtension(name));
    }
    return names;
}

std::optional<std::size_t> exportMarksOf(const BookToExport& book, const MarksExportRequest& request)
{
    const auto name = deletingPathExtension(lastPathComponent(book.archive));
    const auto source = appendingPathComponent(deletingLastPathComponent(book.archive), name) + '.' + extension;
    const auto bytes = readFile(source, maxMarksFileBytes);
    auto set = bytes ? annotationSetFrom(*bytes) : std::nullopt;
    if (!set)
        return {};
    std::erase_if(set->marks, [&request](const Mark& mark) { return !request.filter.passes(mark); });
    const auto count = set->marks.size();
    if (count == 0)
        return 0;
    const auto path = freePath(request, name);
    const auto text = exportedMarks(request.format, book.book, inOrder(std::move(set->marks), book));
    return !path.empty() && writeFile(path, text) ? std::optional(count) : std::nullopt;
}

}
