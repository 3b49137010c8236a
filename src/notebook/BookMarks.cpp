#include "notebook/BookMarks.hpp"

#include "base/Translation.hpp"

#include <algorithm>
#include <sstream>

namespace pagora {

namespace {

// The maximum number of painted marks of a chapter.
constexpr std::size_t maxPainted = 5'000;
constexpr double undoTime = 10;
// The page reports its first and last place as one number: first * spanUnit + last.
constexpr std::int64_t spanUnit = 1 << 26;

std::string removedText(const std::vector<MarkStore::Kept>& marks)
{
    switch (marks.front().mark.kind()) {
    case Mark::Kind::Bookmark:
        return _("Bookmark removed");
    case Mark::Kind::Highlight:
        return _("Highlight removed");
    default:
        return _("Note removed");
    }
}

}

BookMarks::BookMarks(MarkedReader& reader, MarksWindow& window, RunLoop& runLoop)
    : _reader(reader)
    , _window(window)
    , _runLoop(runLoop)
{
    _reader.setMarks({ [this](std::uint64_t chapter) { return paintScript(chapter); },
        [this](std::uint64_t chapter) { return layoutScript(chapter); }, [this] { pageIsSeen(); },
        [this](const PressedMark& mark) { press(mark); } });
    connectWindow();
}

BookMarks::~BookMarks()
{
    _window.setMarkActions({});
    _reader.setMarks({});
}

void BookMarks::connectWindow()
{
    MarkActions actions;
    actions.toggleBookmark = [this] { toggleBookmark(); };
    actions.highlight = [this](const std::string& color) { highlight(markColorFrom(color)); };
    actions.annotate = [this] { annotate(); };
    actions.goTo = [this](std::size_t mark) { goTo(mark); };
    actions.edit = [this](std::size_t mark) { edit(mark); };
    actions.setColor = [this](std::size_t mark, const std::string& color) { setColor(mark, markColorFrom(color)); };
    actions.setNote = [this](std::size_t mark, const std::string& note) { setNote(mark, note); };
    actions.remove = [this](std::size_t mark) { remove(mark); };
    actions.undo = [this] { undo(); };
    actions.choose = [this](const MarksChoice& choice) { choose(choice); };
    actions.exportTo = [this](const std::string& path) { exportTo(path); };
    actions.copy = [this] { copy(); };
    actions.importFrom = [this](const std::string& path) { importFrom(path); };
    _window.setMarkActions(std::move(actions));
}

void BookMarks::open(const std::optional<std::string>& archive, const MarkedBook& book, const std::string& folder)
{
    std::vector<std::string> paths;
    for (const auto& url : _reader.bookSplits())
        paths.push_back(url.path());
    _book = book;
    _store = std::make_unique<MarkStore>(_runLoop, archive, book, std::move(paths), folder);
    _store->setChanged([this] { marksHaveChanged(); });
    _store->load();
}

void BookMarks::marksHaveChanged()
{
    list();
    _window.marksPane().setProblem(_store->problem());
    _reader.runChapterScript();
    pageIsSeen();
}

const MarkStore::Kept* BookMarks::kept(std::size_t number) const
{
    const auto id = _numbers->idOf(number);
    return _store && id ? _store->marks().find(*id) : nullptr;
}

void BookMarks::choose(const MarksChoice& choice)
{
    if (choice == _choice)
        return;
    _choice = choice;
    list();
}

void BookMarks::list()
{
    _listIsOld = true;
    if (_isListing || !_store)
        return;
    _isListing = true;
    _listing = makeList();
}

MarksToList BookMarks::marksToList()
{
    if (!_chapterNames || _chapterNames->size() != _reader.bookSplits().size())
        _chapterNames = std::make_shared<const std::vector<std::string>>(_reader.chapterNames());
    return { _store->marks(), _store->bundledMarks(), _chapterNames, _choice, _numbers };
}

Task<void> BookMarks::makeList()
{
    while (std::exchange(_listIsOld, false)) {
        const auto listed = std::make_shared<ListedMarks>();
        auto work = _runLoop.performInBackground(
            [listed, before = _lines, given = marksToList()] { *listed = listedAfter(before, linesOf(given)); });
        co_await work;
        _lines = listed->lines;
        _window.marksPane().setLines(*listed);
    }
    _isListing = false;
}

std::string BookMarks::paintScript(std::uint64_t chapter)
{
    if (!_store)
        return {};
    std::string script = "pagoraMarks.paint([";
    std::size_t count = 0;
    for (const auto* const all : { &_store->marks(), &_store->bundledMarks() }) {
        for (const auto& kept : all->inChapter(chapter)) {
            const auto& anchor = *kept->anchor;
            if (anchor.end <= anchor.start || ++count > maxPainted)
                continue;
            script += "[" + std::to_string(numberOf(kept->mark.id)) + "," + std::to_string(anchor.start) + ","
                + std::to_string(anchor.end) + ",'" + scriptText(anchor.text) + "','" + nameOf(kept->mark.color) + "',"
                + (kept->mark.note.empty() ? "0" : "1") + "],";
        }
    }
    return script + "])";
}

std::string BookMarks::layoutScript(std::uint64_t chapter) const
{
    const auto isPainted = [](const KeptMarks::Pointer& kept) { return kept->anchor->end > kept->anchor->start; };
    const auto hasPainted = [&](const KeptMarks& marks) {
        const auto here = marks.inChapter(chapter);
        return std::any_of(here.begin(), here.end(), isPainted);
    };
    if (!_store || (!hasPainted(_store->marks()) && !hasPainted(_store->bundledMarks())))
        return {};
    return "pagoraMarks.update()";
}

std::vector<MarkStore::Kept> BookMarks::bookmarksAt(const PageSpan& page) const
{
    std::vector<Kept> found;
    for (const auto& kept : _store->marks().inChapter(page.chapter)) {
        const auto start = kept->anchor->start;
        if (kept->mark.isBookmark && start >= page.start && start < std::max(page.end, page.start + 1))
            found.push_back(*kept);
    }
    return found;
}

void BookMarks::pageIsSeen()
{
    const auto isBookmark = [](const KeptMarks::Pointer& kept) { return kept->mark.isBookmark; };
    const auto here
        = _store ? _store->marks().inChapter(_reader.activeSplitIndex()) : std::span<const KeptMarks::Pointer>();
    if (std::none_of(here.begin(), here.end(), isBookmark))
        return _window.setBookmarked(false);
    askForPage([this](const PageSpan& page) { _window.setBookmarked(!bookmarksAt(page).empty()); });
}

void BookMarks::askForPage(std::function<void(const PageSpan& page)> act)
{
    _reader.ask("pagoraMarks.pageSpan()", [this, act = std::move(act)](std::int64_t span) {
        act({ static_cast<std::size_t>(_reader.activeSplitIndex()), static_cast<std::uint32_t>(span / spanUnit),
            static_cast<std::uint32_t>(span % spanUnit) });
    });
}

void BookMarks::toggleBookmark()
{
    if (!_store || !_store->keepsMarks())
        return _window.showNotice(_("Marks are kept for books in the library only."));
    askForPage([this](const PageSpan& page) {
        auto here = bookmarksAt(page);
        if (!here.empty())
            return removeKept(std::move(here));
        Mark mark;
        mark.isBookmark = true;
        _store->add(std::move(mark), { page.chapter, page.start, page.start, {} });
    });
}

void BookMarks::highlight(MarkColor color)
{
    _reader.askText("pagoraMarks.selection()", [this, color](const std::string& text) { mark(text, color, false); });
}

void BookMarks::annotate()
{
    _reader.askText(
        "pagoraMarks.selection()", [this](const std::string& text) { mark(text, MarkColor::Yellow, true); });
}

void BookMarks::mark(const std::string& selection, MarkColor color, bool asksForNote)
{
    std::istringstream words(selection);
    MarkAnchor anchor;
    words >> anchor.start >> anchor.end;
    words.get();
    std::getline(words, anchor.text, '\0');
    if (anchor.end <= anchor.start || anchor.text.empty())
        return _window.showNotice(_("Select a text first."));
    if (!_store || !_store->keepsMarks())
        return _window.showNotice(_("Marks are kept for books in the library only."));
    anchor.chapter = static_cast<std::size_t>(_reader.activeSplitIndex());
    std::string id;
    for (const auto& kept : _store->marks().inChapter(anchor.chapter)) {
        if (!kept->mark.isBookmark && kept->anchor->start == anchor.start && kept->anchor->end == anchor.end)
            id = kept->mark.id;
    }
    if (id.empty()) {
        Mark mark;
        mark.color = color;
        id = _store->add(std::move(mark), anchor);
    } else if (!asksForNote)
        setColor(numberOf(id), color);
    _reader.ask("pagoraMarks.clearSelection()", {});
    if (!asksForNote)
        return;
    _noteAskedFor = numberOf(id);
    _reader.ask("pagoraMarks.press(" + std::to_string(*_noteAskedFor) + ")", {});
}

void BookMarks::goTo(std::size_t number)
{
    const auto id = _numbers->idOf(number);
    const auto* mark = kept(number);
    if (!mark && _store && id)
        mark = _store->bundledMarks().find(*id);
    if (mark && mark->anchor)
        _reader.goToMark(*mark->anchor);
}

void BookMarks::press(const PressedMark& mark)
{
    const auto* const pressed = kept(mark.number);
    if (!pressed)
        return;
    const bool asksForNote = std::exchange(_noteAskedFor, std::nullopt) == mark.number;
    _window.showMark(
        { mark.number, nameOf(pressed->mark.color), shownTextOf(*pressed), pressed->mark.note, asksForNote },
        mark.place);
}

void BookMarks::edit(std::size_t number)
{
    const auto* const edited = kept(number);
    if (edited)
        _window.showMark(
            { number, nameOf(edited->mark.color), shownTextOf(*edited), edited->mark.note, true }, std::nullopt);
}

void BookMarks::setColor(std::size_t number, MarkColor color)
{
    const auto* const changed = kept(number);
    if (!changed || changed->mark.color == color)
        return;
    auto mark = changed->mark;
    mark.color = color;
    _store->change(std::move(mark), changed->anchor);
}

void BookMarks::setNote(std::size_t number, const std::string& note)
{
    const auto* const changed = kept(number);
    if (!changed || changed->mark.note == note || note.size() > maxMarkNoteBytes)
        return;
    auto mark = changed->mark;
    mark.note = note;
    _store->change(std::move(mark), changed->anchor);
}

void BookMarks::remove(std::size_t number)
{
    if (const auto* const removed = kept(number))
        removeKept({ *removed });
}

void BookMarks::removeKept(std::vector<Kept> marks)
{
    _removed = std::move(marks);
    for (const auto& kept : std::vector(_removed))
        _store->remove(kept.mark.id);
    _window.offerUndo(removedText(_removed));
    _undoTimer = _runLoop.performAfterDelay(undoTime, [this] {
        _removed.clear();
        _window.offerUndo({});
    });
}

void BookMarks::undo()
{
    _undoTimer = nullptr;
    _window.offerUndo({});
    for (auto& kept : std::exchange(_removed, {}))
        _store->change(std::move(kept.mark), kept.anchor);
}

}
