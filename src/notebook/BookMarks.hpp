#pragma once

#include "marks/MarkStore.hpp"
#include "marks/MarksExport.hpp"
#include "notebook/MarkedReader.hpp"
#include "notebook/MarksPane.hpp"
#include "page/WebView.hpp"
#include "running/RunLoop.hpp"
#include "running/Task.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace pagora {

// Controller of the open book's marks: paints those of the shown chapter, fills the list, and adds, changes and removes
// marks. Marks are named by numbers. Main thread.
class BookMarks {
public:
    // All arguments outlive it.
    BookMarks(MarkedReader& reader, MarksWindow& window, RunLoop& runLoop);
    ~BookMarks();
    BookMarks(const BookMarks&) = delete;
    BookMarks& operator=(const BookMarks&) = delete;

    // Reads the marks of the book. Called once the reader has its documents. Without an archive in the library nothing
    // is stored.
    void open(const std::optional<std::string>& archive, const MarkedBook& book, const std::string& folder);

    // Adds a bookmark at the shown page, or removes those of the page.
    void toggleBookmark();
    // Highlights the selected text.
    void highlight(MarkColor color);
    // Highlights the selected text and opens the editor for a note.
    void annotate();
    // Shows the page of a mark.
    void goTo(std::size_t number);
    // Opens the editor of a mark.
    void edit(std::size_t number);
    void setColor(std::size_t number, MarkColor color);
    void setNote(std::size_t number, const std::string& note);
    void remove(std::size_t number);
    // Restores the marks that were removed last. Possible for 10 seconds.
    void undo();

    // Writes marks to a file. The extension selects the format: ".md", ".html", otherwise ".annotation".
    void exportTo(const std::string& path, const std::vector<std::size_t>& numbers);
    // Copies marks to the clipboard as Markdown.
    void copy(const std::vector<std::size_t>& numbers);
    // Adds the marks of a file. Shows a notice if they belong to another book.
    void importFrom(const std::string& path);

    const MarkStore* store() const { return _store.get(); }

private:
    using Kept = MarkStore::Kept;
    void marksHaveChanged();
    void fillPane();
    void pageIsSeen();
    void showRibbon(std::uint32_t start, std::uint32_t end);
    std::string paintScript(std::uint64_t chapter);
    std::string layoutScript(std::uint64_t chapter) const;
    void mark(const std::string& selection, MarkColor color, bool asksForNote);
    void press(const PressedMark& mark);
    void removeKept(std::vector<Kept> marks);
    // The user's mark with that number; null if there is none.
    const Kept* kept(std::size_t number) const;
    std::size_t numberOf(const std::string& id);
    std::vector<ExportedMark> exported(const std::vector<std::size_t>& numbers);
    Task<void> write(std::string path, std::vector<ExportedMark> marks);
    Task<void> read(std::string path);

    MarkedReader& _reader;
    MarksWindow& _window;
    RunLoop& _runLoop;
    std::unique_ptr<MarkStore> _store;
    MarkedBook _book;
    // The identifiers of marks by number. Numbers do not change while the book is open.
    std::vector<std::string> _numbers;
    std::unordered_map<std::string, std::size_t> _numberOf;
    std::vector<std::string> _chapterNames;
    // The mark whose note gets the focus when its editor opens.
    std::optional<std::size_t> _noteAskedFor;
    std::vector<Kept> _removed;
    std::unique_ptr<RunLoop::Timer> _undoTimer;
    // The running export or import.
    Task<void> _exchange;
};

}
