#pragma once

#include "desktop/Workspace.hpp"
#include "epub/CoverPicture.hpp"
#include "epub/InspectionProcess.hpp"
#include "running/Worker.hpp"

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Works ahead of a batch: scales the covers of the next files and copies their bytes, on background threads. None of it
// shows; whether and when it comes to count is up to the batch. Dropping it drops what was not taken. One thread at a
// time.
class ImportAhead {
public:
    // `files` are those that the batch will take, in order. Nothing is copied when `copiesInto` is empty. Files that
    // the folder holds already are not copied either. Covers are given up once `isEnded` says so, which any thread may
    // bring about.
    ImportAhead(Workspace& workspace, std::vector<std::string> files, std::string copiesInto,
        const std::function<bool()>& isEnded);
    ~ImportAhead();

    struct Results {
        std::optional<ScaledCover> cover;
        std::unique_ptr<CopyAhead> copy;
    };
    // What was done for the next file, which has to be this one; waits for it.
    Results take(const std::string& file);

private:
    void beginCover(std::size_t number);
    void beginCopy(std::size_t number);
    template <typename Result>
    std::future<Result> performed(Worker& worker, std::function<Result()> work);

    Workspace& _workspace;
    const std::vector<std::string> _files;
    const std::string _copiesInto;
    std::size_t _taken = 0;
    // The work on the next files, done or not.
    std::deque<std::future<std::optional<ScaledCover>>> _covers;
    std::deque<std::future<std::unique_ptr<CopyAhead>>> _copies;
    std::atomic<bool> _stopping = false;
    // Scaling takes the processor, in a process for each thread; copying waits for the disk, which takes several files
    // at once better than one by one.
    std::vector<std::unique_ptr<CoverProcess>> _coverProcesses;
    std::vector<std::unique_ptr<Worker>> _scaling;
    std::vector<std::unique_ptr<Worker>> _copying;
};

}
