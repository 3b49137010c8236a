#pragma once

#include "marks/MarkStore.hpp"
#include "marks/MarksExport.hpp"
#include "notebook/MarkList.hpp"
#include "notebook/MarkedReader.hpp"
#include "notebook/MarksWindow.hpp"
#include "page/WebView.hpp"
#include "running/RunLoop.hpp"
#include "running/Task.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Controller of the open book's marks: paints those of the shown chapter, fills the list, and adds, changes and removes
// marks. Numbers identify marks. Main thread only.
class BookMarks {
public:
    // All arguments must outlive this object.
    BookMarks(MarkedReader& reader, MarksWindow& window, RunLoop& runLoop);
    ~BookMarks();
    BookMarks(const BookMarks&) = delete;
    BookMarks& operator=(const BookMarks&) = delete;

    // Reads the marks of the book. Called when the reader has its documents. Nothing is stored if `archive` is nullopt.
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

    // Sets the filter of the list.
    void choose(const MarksChoice& choice);
    // Writes the user's listed marks to a file. The extension selects the format: ".md", ".html", otherwise
    // ".annotation".
    void exportTo(const std::string& path);
    // Copies the listed marks to the clipboard as Markdown.
    void copy();
    // Adds the marks of a file. Shows a notice if they belong to another book.
    void importFrom(const std::string& path);

    const MarkStore* store() const { return _store.get(); }

private:
    using Kept = MarkStore::Kept;
    void marksHaveChanged();
    void connectWindow();
    void list();
    Task<void> makeList();
    MarksToList marksToList();
    void pageIsSeen();
    // The first and last place of the shown page.
    struct PageSpan {
        std::size_t chapter = 0;
        std::uint32_t start = 0;
        std::uint32_t end = 0;
    };
    void askForPage(std::function<void(const PageSpan& page)> act);
    std::vector<Kept> bookmarksAt(const PageSpan& page) const;
    std::string paintScript(std::uint64_t chapter);
    std::string layoutScript(std::uint64_t chapter) const;
    void mark(const std::string& selection, MarkColor color, bool asksForNote);
    void press(const PressedMark& mark);
    void removeKept(std::vector<Kept> marks);
    // Returns the user's mark with that number; null if there is none.
    const Kept* kept(std::size_t number) const;
    std::size_t numberOf(const std::string& id) { return _numbers->numberOf(id); }
    // Returns a function that makes the text of the listed marks, for a background thread.
    std::function<std::string(ExportFormat format, std::size_t& count)> exporter();
    Task<void> write(std::string path);
    Task<void> copyText();
    Task<void> read(std::string path);

    MarkedReader& _reader;
    MarksWindow& _window;
    RunLoop& _runLoop;
    std::unique_ptr<MarkStore> _store;
    MarkedBook _book;
    // The numbers of marks do not change while the book is open.
    std::shared_ptr<MarkNumbers> _numbers = std::make_shared<MarkNumbers>();
    std::shared_ptr<const std::vector<std::string>> _chapterNames;
    MarksChoice _choice;
    // The lines of the list. They are made in the background, and made again if something has changed in the meantime.
    MarkLines _lines = std::make_shared<const std::vector<MarkLine>>();
    bool _isListing = false;
    bool _listIsOld = false;
    Task<void> _listing;
    // The mark whose note gets the focus when its editor opens.
    std::optional<std::size_t> _noteAskedFor;
    std::vector<Kept> _removed;
    std::unique_ptr<RunLoop::Timer> _undoTimer;
    // The running export or import.
    Task<void> _exchange;
};

}
