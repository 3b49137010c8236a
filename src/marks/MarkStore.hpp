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

// The marks of the open book and their places in it. Files are read and written in the background, one change after the
// other. Destroying this does not cancel pending writes. Main thread.
class MarkStore {
public:
    // `archive` is the book's file. Without one, for a book that is not in the library, nothing is stored.
    MarkStore(RunLoop& runLoop, const std::optional<std::string>& archive, const MarkedBook& book,
        std::vector<std::string> paths, std::string folder);
    ~MarkStore();
    MarkStore(const MarkStore&) = delete;
    MarkStore& operator=(const MarkStore&) = delete;

    struct Kept {
        Mark mark;
        // Missing if the text was not found in the book.
        std::optional<MarkAnchor> anchor;
    };
    // In the order of the book. Marks without a place are last.
    const std::vector<Kept>& marks() const { return _marks; }
    // Marks contained in the book's archive, in the same order. They are read-only.
    const std::vector<Kept>& makersMarks() const { return _makersMarks; }
    // Searches the user's marks.
    const Kept* find(const std::string& id) const;
    // The reason why marks are not saved or a file was renamed, in one line; otherwise empty.
    const std::string& problem() const { return _problem; }
    // Whether all changes are on the disk.
    bool isSaved() const { return _steps.empty() && _isSaved; }
    bool keepsMarks() const { return _archive.has_value(); }

    // Called after each change of the marks or of the problem.
    void setChanged(std::function<void()> changed) { _changed = std::move(changed); }
    // Reads the marks. Called once.
    void load();
    // Adds a mark at a place. The text of the anchor is the text in the page. Sets the mark's time and identifier;
    // returns the identifier.
    std::string add(Mark mark, const MarkAnchor& anchor);
    // Replaces the mark with the same identifier, or restores a removed one. Sets its time.
    void change(Mark mark, const std::optional<MarkAnchor>& anchor);
    void remove(const std::string& id);
    // Merges the marks of another file by identifier and time.
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
    // State of the background thread; used by one step at a time.
    std::shared_ptr<Background> _background;
    std::vector<Kept> _marks;
    std::vector<Kept> _makersMarks;
    std::string _problem;
    bool _isSaved = true;
    std::function<void()> _changed;
    // The first one is running.
    std::deque<Step> _steps;
    Task<void> _running;
};

}
