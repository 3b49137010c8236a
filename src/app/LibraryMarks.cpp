#include "app/LibraryMarks.hpp"

#include "app/BookOpening.hpp"
#include "base/Path.hpp"
#include "base/Translation.hpp"

#include <memory>
#include <set>

namespace pagora {

namespace {

BookToExport toExport(const BookInfo& book)
{
    BookToExport made;
    made.archive = book.epubPath().value_or("");
    made.book = { book.isbn().value_or(""), book.title().value_or(""), book.author().value_or("") };
    for (const auto& file : book.files())
        made.documents.push_back(file.path());
    for (const auto& entry : tableOfContentFrom(book.content().value_or(Value::Array {})))
        made.contents.emplace_back(entry.src.path(), entry.text.value_or(""));
    return made;
}

// The result of an export.
struct Sum {
    std::size_t marks = 0;
    std::size_t books = 0;
    std::size_t failures = 0;
    std::string firstFailure;

    void add(const std::string& name, std::optional<std::size_t> count)
    {
        if (!count && ++failures == 1)
            firstFailure = name;
        marks += count.value_or(0);
        books += count.value_or(0) > 0;
    }
    std::string line(bool isCancelled) const
    {
        std::string text = _("No marks were exported.");
        if (books > 0)
            text = formatted(_("Exported marks: %zu, from books: %zu."), marks, books);
        if (failures > 0)
            text += " "
                + formatted(plural("%zu book could not be exported: “%s”.",
                                "%zu books could not be exported, the first one is “%s”.", failures),
                    failures, firstFailure.c_str());
        return isCancelled ? _("The export was cancelled.") + (" " + text) : text;
    }
};

}

void LibraryMarks::askForExport()
{
    panel().open([this](const MarksExportRequest& request) { _exporting = exportAll(request); },
        [this] { _isCancelled = true; });
}

Task<void> LibraryMarks::exportAll(MarksExportRequest request)
{
    _isCancelled = false;
    const auto library = _state.folders.libPath;
    if (normalizedPath(request.folder) == normalizedPath(library))
        co_return panel().setOutcome(_("The library's own folder cannot take exported marks. Choose another one."));
    const auto names = std::make_shared<std::set<std::string>>();
    auto looking = _platform.runLoop.performInBackground([names, library] { *names = namesWithMarks(library); });
    co_await looking;
    std::vector<BookInfoPtr> books;
    for (const auto& book : *_state.catalogue.bookList()) {
        if (names->contains(deletingPathExtension(lastPathComponent(book->epubPath().value_or("")))))
            books.push_back(book);
    }
    Sum sum;
    for (std::size_t i = 0; i < books.size() && !_isCancelled; ++i) {
        panel().setProgress(i, books.size());
        const auto count = std::make_shared<std::optional<std::size_t>>();
        auto work = _platform.runLoop.performInBackground(
            [count, request, book = toExport(*books[i])] { *count = exportMarksOf(book, request); });
        co_await work;
        sum.add(books[i]->title().value_or(""), *count);
    }
    panel().setOutcome(sum.line(_isCancelled));
}

}
