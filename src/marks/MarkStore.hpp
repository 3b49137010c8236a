#pragma once

#include "marks/Anchors.hpp"
#include "marks/MarksFile.hpp"
#include "running/RunLoop.hpp"
#include "running/Task.hpp"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The marks of the book that is read, and where each of them is in it. Files are read and written in the background,
// one change after the other; changes that are under way when this is destroyed are written all the same. Main thread.
class MarkStore {
public:
    // `archive` is the book's; without one, for a book that is not in the library, nothing is kept.
    MarkStore(RunLoop& runLoop, const std::optional<std::string>& archive, const MarkedBook& book,
        std::vector<std::string> paths, std::string folder);
    ~MarkStore();
    MarkStore(const MarkStore&) = delete;
    MarkStore& operator=(const MarkStore&) = delete;

    struct Kept {
        Mark mark;
        // Missing where the book does not have its text.
        std::optional<MarkAnchor> anchor;
    };
    // In the order of the book, those without a place last.
    const std::vector<Kept>& marks() const { return _marks; }
    // Those that the book brings, in the same order. They cannot be changed.
    const std::vector<Kept>& makersMarks() const { return _makersMarks; }
    // Of the person's.
    const Kept* find(const std::string& id) const;
    // Why something is not saved, or was set aside, in one line; empty otherwise.
    const std::string& problem() const { return _problem; }
    // Whether all changes are on the disk.
    bool isSaved() const { return _steps.empty() && _isSaved; }
    bool keepsMarks() const { return _archive.has_value(); }

    // Called after each change of what is here.
    void setChanged(std::function<void()> changed) { _changed = std::move(changed); }
    // Reads the marks; once.
    void load();
    // Sets a mark at that place: the text of its anchor is what the page shows. Its time is set, and its identifier,
    // which is returned.
    std::string add(Mark mark, const MarkAnchor& anchor);
    // Replaces the mark with the same identifier, or brings back one that was removed. Its time is set.
    void change(Mark mark, const std::optional<MarkAnchor>& anchor);
    void remove(const std::string& id);
    // Adds marks that were made elsewhere, as their identifiers and times say.
    void import(std::vector<Mark> marks);

private:
    struct Outcome {
        std::vector<Kept> marks;
        std::optional<std::vector<Kept>> makersMarks;
        std::string problem;
        bool isSaved = true;
    };
    using Step = std::function<Outcome()>;
    struct Background;

    void put(Kept kept);
    void enqueue(std::vector<MarkChange> changes, std::optional<MarkAnchor> anchor);
    void enqueue(Step step);
    Task<void> run();
    void take(Outcome outcome);
    void tell();

    RunLoop& _runLoop;
    std::optional<std::string> _archive;
    // What the steps use, one at a time, in the background.
    std::shared_ptr<Background> _background;
    std::vector<Kept> _marks;
    std::vector<Kept> _makersMarks;
    std::string _problem;
    bool _isSaved = true;
    std::function<void()> _changed;
    // The first one is under way.
    std::deque<Step> _steps;
    Task<void> _running;
};

}
