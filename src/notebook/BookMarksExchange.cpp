// BookMarks: export and import of marks.

#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "files/Files.hpp"
#include "notebook/BookMarks.hpp"

#include <string_view>
#include <unordered_map>
#include <utility>

namespace pagora {

namespace {

ExportedMark exportedMark(const KeptMark& kept, const std::vector<std::string>& chapterNames)
{
    ExportedMark mark { kept.mark, {}, {} };
    if (const auto& anchor = kept.anchor) {
        mark.chapter = chapterNames.at(anchor->chapter);
        mark.percentage = static_cast<int>(100 * anchor->chapter / chapterNames.size());
    }
    return mark;
}

}

std::function<std::string(ExportFormat format, std::size_t& count)> BookMarks::exporter()
{
    return [lines = _lines, given = marksToList(), book = _book](ExportFormat format, std::size_t& count) {
        std::unordered_map<std::string_view, const KeptMark*> kept;
        for (const auto& each : given.marks.pointers())
            kept.emplace(each->mark.id, each.get());
        std::vector<ExportedMark> marks;
        for (const auto& line : *lines) {
            const auto id = line.kind == MarkLine::Kind::Heading ? std::nullopt : given.numbers->idOf(line.number);
            const auto found = id ? kept.find(*id) : kept.end();
            if (found != kept.end())
                marks.push_back(exportedMark(*found->second, *given.chapterNames));
        }
        count = marks.size();
        return exportedMarks(format, book, marks);
    };
}

void BookMarks::copy()
{
    if (_store)
        _exchange = copyText();
}

Task<void> BookMarks::copyText()
{
    const auto text = std::make_shared<std::string>();
    auto work = _runLoop.performInBackground([text, exporter = exporter()] {
        std::size_t count = 0;
        *text = exporter(ExportFormat::Markdown, count);
    });
    co_await work;
    _window.copyText(*text);
}

void BookMarks::exportTo(const std::string& path)
{
    if (_store)
        _exchange = write(path);
}

Task<void> BookMarks::write(std::string path)
{
    const auto count = std::make_shared<std::size_t>(0);
    const auto isWritten = std::make_shared<bool>(false);
    auto writing = _runLoop.performInBackground([path, count, isWritten, exporter = exporter()] {
        *isWritten = writeFile(path, exporter(exportFormatOf(path), *count));
    });
    co_await writing;
    if (*isWritten)
        _window.showNotice(formatted(plural("%zu mark was exported.", "%zu marks were exported.", *count), *count));
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
