#include "marks/MarkStore.hpp"

#include "base/Path.hpp"
#include "files/Files.hpp"
#include "find/ChapterText.hpp"
#include "marks/Anchors.hpp"
#include "marks/PackageFolder.hpp"

#include <algorithm>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace pagora {

namespace {

constexpr const char* bundledFile = "META-INF/my.annotation";
constexpr std::size_t fewMarks = 1'000;

KeptMarks inOrder(std::vector<Mark> marks, std::vector<std::optional<MarkAnchor>> anchors)
{
    std::vector<MarkStore::Kept> kept;
    kept.reserve(marks.size());
    for (std::size_t i = 0; i < marks.size(); ++i)
        kept.push_back({ std::move(marks[i]), std::move(anchors[i]) });
    return KeptMarks(std::move(kept));
}

}

struct MarkStore::Background {
    std::mutex mutex;
    std::optional<MarksFile> file;
    MarkedDocuments documents;
    // Changes that are not written yet.
    std::vector<MarkChange> unsaved;
    // The found places of the marks, by identifier.
    std::unordered_map<std::string, std::optional<MarkAnchor>> known;

    std::vector<std::optional<MarkAnchor>> anchorsOf(const std::vector<Mark>& marks)
    {
        std::vector<Mark> unknown;
        for (const auto& mark : marks) {
            if (!known.contains(mark.id))
                unknown.push_back(mark);
        }
        auto found = findMarks(unknown, documents);
        for (std::size_t i = 0; i < unknown.size(); ++i)
            known.emplace(unknown[i].id, std::move(found[i]));
        std::vector<std::optional<MarkAnchor>> anchors;
        anchors.reserve(marks.size());
        for (const auto& mark : marks)
            anchors.push_back(known[mark.id]);
        return anchors;
    }

    Outcome outcomeOf(MarksOnDisk disk)
    {
        auto anchors = anchorsOf(disk.marks);
        return { inOrder(std::move(disk.marks), std::move(anchors)), {}, std::move(disk.problem), disk.isSaved };
    }

    Outcome read()
    {
        const std::scoped_lock lock(mutex);
        documents.packageFolder = packageFolderOf(documents.folder);
        auto outcome = outcomeOf(file ? file->read() : MarksOnDisk { {}, {}, true });
        const auto path = appendingPathComponent(documents.folder, bundledFile);
        const auto bytes = isWithinFolder(path, documents.folder) ? readFile(path, maxMarksFileBytes) : std::nullopt;
        if (auto set = bytes ? annotationSetFrom(*bytes) : std::nullopt) {
            auto anchors = findMarks(set->marks, documents);
            outcome.bundledMarks = inOrder(std::move(set->marks), std::move(anchors));
        }
        return outcome;
    }

    Outcome write(std::vector<MarkChange> changes, const std::optional<MarkAnchor>& anchor)
    {
        const std::scoped_lock lock(mutex);
        for (auto& change : changes) {
            if (anchor) {
                known[change.mark.id] = anchor;
                if (change.mark.text.source.empty())
                    change.mark.text = markedTextAt(documents, *anchor);
            }
            unsaved.push_back(std::move(change));
        }
        auto disk = file->write(unsaved);
        if (disk.isSaved)
            unsaved.clear();
        return outcomeOf(std::move(disk));
    }
};

MarkStore::MarkStore(RunLoop& runLoop, const std::optional<std::string>& archive, const MarkedBook& book,
    std::vector<std::string> paths, std::string folder)
    : _runLoop(runLoop)
    , _archive(archive)
    , _background(std::make_shared<Background>())
{
    if (archive)
        _background->file.emplace(*archive, book);
    _background->documents.paths = std::move(paths);
    _background->documents.packageFolder = folder;
    _background->documents.folder = std::move(folder);
}

MarkStore::~MarkStore()
{
    if (_steps.size() < 2)
        return;
    _steps.pop_front();
    // The running step finishes in the background.
    _runLoop.performInBackground([steps = std::move(_steps)] {
        for (const auto& step : steps)
            step();
    });
}

void MarkStore::load()
{
    enqueue([background = _background] { return background->read(); });
}

std::string MarkStore::add(Mark mark, MarkAnchor anchor)
{
    if (!_archive)
        return {};
    mark.id = newMarkId();
    mark.created = timeNow();
    mark.modified.clear();
    mark.written.clear();
    put({ mark, anchor });
    auto id = mark.id;
    enqueue({ { std::move(mark) } }, std::move(anchor));
    return id;
}

void MarkStore::change(Mark mark, std::optional<MarkAnchor> anchor)
{
    if (!_archive)
        return;
    mark.modified = timeNow();
    put({ mark, anchor });
    enqueue({ { std::move(mark) } }, std::move(anchor));
}

void MarkStore::remove(const std::string& id)
{
    const auto* const kept = _marks.find(id);
    if (!kept || !_archive)
        return;
    auto mark = kept->mark;
    const auto anchor = kept->anchor;
    mark.modified = timeNow();
    replaceMarks(_marks.without(mark.id));
    tell();
    enqueue({ { std::move(mark), true } }, anchor);
}

void MarkStore::import(std::vector<Mark> marks)
{
    if (!_archive)
        return;
    std::vector<MarkChange> changes;
    for (auto& mark : marks)
        changes.push_back({ std::move(mark) });
    enqueue(std::move(changes), std::nullopt);
}

void MarkStore::put(Kept kept)
{
    replaceMarks(_marks.with(std::move(kept)));
    tell();
}

// Destroying the last copy of many marks takes long, so it is done in the background.
void MarkStore::replaceMarks(KeptMarks marks)
{
    auto before = std::exchange(_marks, std::move(marks));
    if (before.size() > fewMarks)
        static_cast<void>(_runLoop.performInBackground(
            [gone = std::make_shared<KeptMarks>(std::move(before))] { *gone = KeptMarks(); }));
}

void MarkStore::enqueue(std::vector<MarkChange> changes, std::optional<MarkAnchor> anchor)
{
    enqueue([background = _background, changes = std::move(changes), anchor = std::move(anchor)] {
        return background->write(changes, anchor);
    });
}

void MarkStore::enqueue(Step step)
{
    _steps.push_back(std::move(step));
    if (_steps.size() == 1)
        _running = run();
}

Task<void> MarkStore::run()
{
    while (!_steps.empty()) {
        const auto outcome = std::make_shared<Outcome>();
        auto work = _runLoop.performInBackground([step = _steps.front(), outcome] { *outcome = step(); });
        co_await work;
        _steps.pop_front();
        take(std::move(*outcome));
    }
}

// If later changes are pending, the current marks are newer than the outcome.
void MarkStore::take(Outcome outcome)
{
    _problem = std::move(outcome.problem);
    _isSaved = outcome.isSaved;
    if (outcome.bundledMarks)
        _bundledMarks = std::move(*outcome.bundledMarks);
    if (_steps.empty())
        replaceMarks(std::move(outcome.marks));
    tell();
}

void MarkStore::tell()
{
    if (_changed)
        _changed();
}

}
