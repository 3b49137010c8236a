#include "notebook/BookMarks.hpp"

#include "base/Path.hpp"
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

MarkLine::Kind lineKind(Mark::Kind kind)
{
    switch (kind) {
    case Mark::Kind::Bookmark:
        return MarkLine::Kind::Bookmark;
    case Mark::Kind::Highlight:
        return MarkLine::Kind::Highlight;
    default:
        return MarkLine::Kind::Note;
    }
}

// A bookmark is listed with the text after it.
std::string textOf(const MarkStore::Kept& kept)
{
    if (!kept.mark.text.exact.empty())
        return kept.mark.text.exact;
    if (kept.anchor && !kept.anchor->text.empty())
        return kept.anchor->text;
    return kept.mark.text.after;
}

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
}

BookMarks::~BookMarks()
{
    _reader.setMarks({});
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
    fillPane();
    _reader.runChapterScript();
    pageIsSeen();
}

std::size_t BookMarks::numberOf(const std::string& id)
{
    const auto [found, isNew] = _numberOf.emplace(id, _numbers.size());
    if (isNew)
        _numbers.push_back(id);
    return found->second;
}

const MarkStore::Kept* BookMarks::kept(std::size_t number) const
{
    return _store && number < _numbers.size() ? _store->find(_numbers[number]) : nullptr;
}

void BookMarks::fillPane()
{
    if (_chapterNames.size() != _reader.bookSplits().size())
        _chapterNames = _reader.chapterNames();
    std::vector<MarkLine> lines;
    std::optional<std::string> heading;
    const auto add = [&](const Kept& kept, const std::string& under, bool isMine) {
        if (heading != under)
            lines.push_back({ MarkLine::Kind::Heading, under, {}, {}, {}, 0, false, false });
        heading = under;
        lines.push_back({ lineKind(kept.mark.kind()), textOf(kept), kept.mark.note, nameOf(kept.mark.color),
            joined(kept.mark.tags, ", "), numberOf(kept.mark.id), !kept.anchor, isMine });
    };
    for (const auto& kept : _store->marks())
        add(kept, kept.anchor ? _chapterNames.at(kept.anchor->chapter) : _("Not found in this edition"), true);
    for (const auto& kept : _store->makersMarks())
        add(kept, _("From the makers of the book"), false);
    _window.marksPane().setLines(std::move(lines));
    _window.marksPane().setProblem(_store->problem());
}

std::string BookMarks::paintScript(std::uint64_t chapter)
{
    if (!_store)
        return {};
    std::string script = "pagoraMarks.paint([";
    std::size_t count = 0;
    const auto add = [&](const Kept& kept) {
        const auto& anchor = kept.anchor;
        if (!anchor || anchor->chapter != chapter || anchor->end <= anchor->start || ++count > maxPainted)
            return;
        script += "[" + std::to_string(numberOf(kept.mark.id)) + "," + std::to_string(anchor->start) + ","
            + std::to_string(anchor->end) + ",'" + scriptText(anchor->text) + "','" + nameOf(kept.mark.color) + "',"
            + (kept.mark.note.empty() ? "0" : "1") + "],";
    };
    std::for_each(_store->marks().begin(), _store->marks().end(), add);
    std::for_each(_store->makersMarks().begin(), _store->makersMarks().end(), add);
    return script + "])";
}

std::string BookMarks::layoutScript(std::uint64_t chapter) const
{
    const auto isPainted = [chapter](const Kept& kept) {
        return kept.anchor && kept.anchor->chapter == chapter && kept.anchor->end > kept.anchor->start;
    };
    if (!_store
        || (std::none_of(_store->marks().begin(), _store->marks().end(), isPainted)
            && std::none_of(_store->makersMarks().begin(), _store->makersMarks().end(), isPainted)))
        return {};
    return "pagoraMarks.update()";
}

void BookMarks::pageIsSeen()
{
    const auto chapter = _reader.activeSplitIndex();
    const auto isHere = [chapter](const Kept& kept) {
        return kept.mark.isBookmark && kept.anchor && kept.anchor->chapter == chapter;
    };
    if (!_store || std::none_of(_store->marks().begin(), _store->marks().end(), isHere))
        return _window.setBookmarked(false);
    _reader.ask("pagoraMarks.pageSpan()", [this](std::int64_t span) {
        showRibbon(static_cast<std::uint32_t>(span / spanUnit), static_cast<std::uint32_t>(span % spanUnit));
    });
}

void BookMarks::showRibbon(std::uint32_t start, std::uint32_t end)
{
    const auto chapter = _reader.activeSplitIndex();
    const auto& marks = _store->marks();
    _window.setBookmarked(std::any_of(marks.begin(), marks.end(), [=](const Kept& kept) {
        return kept.mark.isBookmark && kept.anchor && kept.anchor->chapter == chapter && kept.anchor->start >= start
            && kept.anchor->start < std::max(end, start + 1);
    }));
}

void BookMarks::toggleBookmark()
{
    if (!_store || !_store->keepsMarks())
        return _window.showNotice(_("Marks are kept for books in the library only."));
    _reader.ask("pagoraMarks.pageSpan()", [this](std::int64_t span) {
        const auto chapter = static_cast<std::size_t>(_reader.activeSplitIndex());
        const auto start = static_cast<std::uint32_t>(span / spanUnit);
        const auto end = std::max(static_cast<std::uint32_t>(span % spanUnit), start + 1);
        std::vector<Kept> here;
        for (const auto& kept : _store->marks()) {
            if (kept.mark.isBookmark && kept.anchor && kept.anchor->chapter == chapter && kept.anchor->start >= start
                && kept.anchor->start < end)
                here.push_back(kept);
        }
        if (!here.empty())
            return removeKept(std::move(here));
        Mark mark;
        mark.isBookmark = true;
        _store->add(std::move(mark), { chapter, start, start, {} });
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
    for (const auto& kept : _store->marks()) {
        if (kept.anchor && !kept.mark.isBookmark && kept.anchor->chapter == anchor.chapter
            && kept.anchor->start == anchor.start && kept.anchor->end == anchor.end)
            id = kept.mark.id;
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
    const auto* mark = kept(number);
    if (!mark && _store && number < _numbers.size()) {
        for (const auto& makers : _store->makersMarks()) {
            if (makers.mark.id == _numbers[number])
                mark = &makers;
        }
    }
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
        { mark.number, nameOf(pressed->mark.color), textOf(*pressed), pressed->mark.note, asksForNote }, mark.place);
}

void BookMarks::edit(std::size_t number)
{
    const auto* const edited = kept(number);
    if (edited)
        _window.showMark(
            { number, nameOf(edited->mark.color), textOf(*edited), edited->mark.note, true }, std::nullopt);
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
