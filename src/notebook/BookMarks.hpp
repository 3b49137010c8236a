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
#include <vector>

namespace pagora {

// The marks of the book that is read: paints those of the chapter that is shown, lists them all, and makes, changes and
// removes them. Marks are named by their numbers in the list. Main thread.
class BookMarks {
public:
    // All of them outlive it.
    BookMarks(MarkedReader& reader, MarksWindow& window, RunLoop& runLoop);
    ~BookMarks();
    BookMarks(const BookMarks&) = delete;
    BookMarks& operator=(const BookMarks&) = delete;

    // Reads the marks of the book, once the reader has its documents. Without an archive in the library nothing is
    // kept.
    void open(const std::optional<std::string>& archive, const MarkedBook& book, const std::string& folder);

    // Sets a bookmark at the page that is shown, or removes those of the page.
    void toggleBookmark();
    // Marks the selected text.
    void highlight(MarkColor color);
    // The same, and asks for a note.
    void annotate();
    // Shows the page of a mark.
    void goTo(std::size_t number);
    // Shows what can be done with a mark.
    void edit(std::size_t number);
    void setColor(std::size_t number, MarkColor color);
    void setNote(std::size_t number, const std::string& note);
    void remove(std::size_t number);
    // Brings back what was removed last, for 10 seconds.
    void undo();

    // Writes marks to a file, in the format that its name says: ".md", ".html", or else ".annotation".
    void exportTo(const std::string& path, const std::vector<std::size_t>& numbers);
    // Puts them on the clipboard.
    void copy(const std::vector<std::size_t>& numbers);
    // Adds the marks of a file, and says so when they were made in another book.
    void importFrom(const std::string& path);

    const MarkStore* store() const { return _store.get(); }

private:
    using Kept = MarkStore::Kept;
    void marksHaveChanged();
    void fillPane();
    void pageIsSeen();
    void showRibbon(std::uint32_t start, std::uint32_t end);
    std::string paintScript(std::uint64_t chapter);
    void mark(const std::string& selection, MarkColor color, bool asksForNote);
    void press(const PressedMark& mark);
    void removeKept(std::vector<Kept> marks);
    // The mark with that number; null where there is none, or it is the maker's.
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
    // The identifiers of marks by their numbers, which stay while the book is read.
    std::vector<std::string> _numbers;
    std::vector<std::string> _chapterNames;
    // The note of this mark is asked for when its bar is shown.
    std::optional<std::size_t> _noteAskedFor;
    std::vector<Kept> _removed;
    std::unique_ptr<RunLoop::Timer> _undoTimer;
    // An export or an import that is under way.
    Task<void> _exchange;
};

}
