#pragma once

#include "marks/KeptMarks.hpp"
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

// The marks of the open book and their places in it. Files are read and written in the background, one change after
// another. The destructor does not cancel pending writes. Main thread only.
class MarkStore {
public:
    // `archive` is the book's file. For a book that is not in the library it is nullopt, and nothing is stored.
    MarkStore(RunLoop& runLoop, const std::optional<std::string>& archive, const MarkedBook& book,
        std::vector<std::string> paths, std::string folder);
    ~MarkStore();
    MarkStore(const MarkStore&) = delete;
    MarkStore& operator=(const MarkStore&) = delete;

    using Kept = KeptMark;
    const KeptMarks& marks() const { return _marks; }
    // Marks contained in the book's archive. They are read-only.
    const KeptMarks& bundledMarks() const { return _bundledMarks; }
    // The reason why marks are not saved or a file was renamed, in one line; otherwise empty.
    const std::string& problem() const { return _problem; }
    // Returns whether all changes are on the disk.
    bool isSaved() const { return _steps.empty() && _isSaved; }
    bool keepsMarks() const { return _archive.has_value(); }

    // Sets the callback for changes of the marks or of the problem.
    void setChanged(std::function<void()> changed) { _changed = std::move(changed); }
    // Reads the marks. Called once.
    void load();
    // Adds a mark at a place. The text of the anchor is the text in the page. Sets the mark's time and identifier;
    // returns the identifier.
    std::string add(Mark mark, MarkAnchor anchor);
    // Replaces the mark with the same identifier, or restores a removed one. Sets its time.
    void change(Mark mark, std::optional<MarkAnchor> anchor);
    void remove(const std::string& id);
    // Merges the marks of another file by identifier and time.
    void import(std::vector<Mark> marks);

private:
    struct Outcome {
        KeptMarks marks;
        std::optional<KeptMarks> bundledMarks;
        std::string problem;
        bool isSaved = true;
    };
    using Step = std::function<Outcome()>;
    struct Background;

    void put(Kept kept);
    void replaceMarks(KeptMarks marks);
    void enqueue(std::vector<MarkChange> changes, std::optional<MarkAnchor> anchor);
    void enqueue(Step step);
    Task<void> run();
    void take(Outcome outcome);
    void tell();

    RunLoop& _runLoop;
    std::optional<std::string> _archive;
    // State of the background thread. Used by one step at a time.
    std::shared_ptr<Background> _background;
    KeptMarks _marks;
    KeptMarks _bundledMarks;
    std::string _problem;
    bool _isSaved = true;
    std::function<void()> _changed;
    // The first one is running.
    std::deque<Step> _steps;
    Task<void> _running;
};

}
