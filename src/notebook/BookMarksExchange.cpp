// Export and import of marks.

#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "files/Files.hpp"
#include "notebook/BookMarks.hpp"

namespace pagora {

namespace {

ExportFormat formatOf(const std::string& path)
{
    const auto extension = lowercased(pathExtension(path));
    if (extension == "md")
        return ExportFormat::Markdown;
    return extension == "html" || extension == "htm" ? ExportFormat::Html : ExportFormat::Annotation;
}

}

std::vector<ExportedMark> BookMarks::exported(const std::vector<std::size_t>& numbers)
{
    const auto names = _reader.chapterNames();
    std::vector<ExportedMark> marks;
    for (const auto number : numbers) {
        const auto* const chosen = kept(number);
        if (!chosen)
            continue;
        ExportedMark mark { chosen->mark, {}, {} };
        if (const auto& anchor = chosen->anchor) {
            mark.chapter = names.at(anchor->chapter);
            mark.percentage = static_cast<int>(100 * anchor->chapter / names.size());
        }
        marks.push_back(std::move(mark));
    }
    return marks;
}

void BookMarks::copy(const std::vector<std::size_t>& numbers)
{
    _window.copyText(exportedMarks(ExportFormat::Markdown, _book, exported(numbers)));
}

void BookMarks::exportTo(const std::string& path, const std::vector<std::size_t>& numbers)
{
    _exchange = write(path, exported(numbers));
}

Task<void> BookMarks::write(std::string path, std::vector<ExportedMark> marks)
{
    const auto count = marks.size();
    const auto isWritten = std::make_shared<bool>(false);
    auto writing = _runLoop.performInBackground([=, book = _book, marks = std::move(marks)] {
        *isWritten = writeFile(path, exportedMarks(formatOf(path), book, marks));
    });
    co_await writing;
    if (*isWritten)
        _window.showNotice(formatted(plural("%zu mark was exported.", "%zu marks were exported.", count), count));
    else
        _window.showNotice(formatted(_("“%s” could not be written."), lastPathComponent(path).c_str()));
}

void BookMarks::importFrom(const std::string& path)
{
    if (!_store || !_store->keepsMarks())
        return _window.showNotice(_("Marks are kept for books in the library only."));
    _exchange = read(path);
}

Task<void> BookMarks::read(std::string path)
{
    const auto set = std::make_shared<std::optional<AnnotationSet>>();
    auto reading = _runLoop.performInBackground([=] {
        const auto bytes = readFile(path, maxMarksFileBytes);
        *set = bytes ? annotationSetFrom(*bytes) : std::nullopt;
    });
    co_await reading;
    if (!*set || (*set)->marks.empty()) {
        _window.showNotice(formatted(_("“%s” holds no marks."), lastPathComponent(path).c_str()));
        co_return;
    }
    const auto count = (*set)->marks.size();
    auto line = formatted(plural("%zu mark was imported.", "%zu marks were imported.", count), count);
    if (isAboutAnotherBook(**set, _book))
        line += std::string(" ") + _("They were made in another book or edition.");
    _store->import(std::move((*set)->marks));
    _window.showNotice(line);
}

}
