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

// Prefetches for a batch: scales covers and copies bytes of the next files on background threads. A result has no
// effect until the batch takes it. The destructor drops results that were not taken. Use each object on one thread at a
// time.
class ImportPrefetch {
public:
    // `files` are the files of the batch, in order. Nothing is copied if `copiesInto` is empty, or if a file is already
    // in that folder. Covers are abandoned when `isEnded`, which may be called on any thread, returns true.
    ImportPrefetch(Workspace& workspace, std::vector<std::string> files, std::string copiesInto,
        const std::function<bool()>& isEnded);
    ~ImportPrefetch();

    struct Results {
        std::optional<ScaledCover> cover;
        std::unique_ptr<PrefetchedCopy> copy;
    };
    // Waits for the results of the next file, which must be `file`.
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
    // Results for the next files, finished or not.
    std::deque<std::future<std::optional<ScaledCover>>> _covers;
    std::deque<std::future<std::unique_ptr<PrefetchedCopy>>> _copies;
    std::atomic<bool> _stopping = false;
    // Scaling needs the processor, so there is one process per thread. Copying waits for the disk, which handles
    // several files at once better than one by one.
    std::vector<std::unique_ptr<CoverProcess>> _coverProcesses;
    std::vector<std::unique_ptr<Worker>> _scaling;
    std::vector<std::unique_ptr<Worker>> _copying;
};

}
