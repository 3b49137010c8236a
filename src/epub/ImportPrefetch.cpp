#include "epub/ImportPrefetch.hpp"

#include "base/Path.hpp"

#include <algorithm>
#include <filesystem>
#include <thread>
#include <utility>

namespace pagora {

namespace {

// Covers that are not taken yet occupy memory; copies do not.
constexpr std::size_t maxPrefetchedCovers = 16;
constexpr std::size_t maxPrefetchedCopies = 48;
// Copies mostly wait for the disk, which handles several at once.
constexpr std::size_t maxConcurrentCopies = 24;
// Larger files are not prefetched, because they might be rejected.
constexpr std::uintmax_t maxCopyBytes = 64u << 20;

bool isSmall(const std::string& file)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    return !error && size <= maxCopyBytes;
}

void addWorkers(std::vector<std::unique_ptr<Worker>>& workers, std::size_t count)
{
    while (workers.size() < count)
        workers.push_back(std::make_unique<Worker>());
}

}

ImportPrefetch::ImportPrefetch(
    Workspace& workspace, std::vector<std::string> files, std::string copiesInto, const std::function<bool()>& isEnded)
    : _workspace(workspace)
    , _files(std::move(files))
    , _copiesInto(std::move(copiesInto))
{
    // For a single file there is nothing to overlap with.
    if (_files.size() < 2)
        return;
    addWorkers(_scaling, std::min<std::size_t>(_files.size(), std::max(2u, std::thread::hardware_concurrency())));
    for (std::size_t i = 0; i < _scaling.size(); ++i)
        _coverProcesses.push_back(std::make_unique<CoverProcess>([this, isEnded] { return _stopping || isEnded(); }));
    if (!_copiesInto.empty())
        addWorkers(_copying, std::min(_files.size(), maxConcurrentCopies));
}

ImportPrefetch::~ImportPrefetch()
{
    _stopping = true;
}

ImportPrefetch::Results ImportPrefetch::take(const std::string& file)
{
    if (_scaling.empty())
        return {};
    const auto number = _taken++;
    if (number >= _files.size() || _files[number] != file)
        return {};
    while (_covers.size() < maxPrefetchedCovers && number + _covers.size() < _files.size())
        beginCover(number + _covers.size());
    while (!_copying.empty() && _copies.size() < maxPrefetchedCopies && number + _copies.size() < _files.size())
        beginCopy(number + _copies.size());
    Results results { _covers.front().get(), nullptr };
    _covers.pop_front();
    if (!_copies.empty()) {
        results.copy = _copies.front().get();
        _copies.pop_front();
    }
    return results;
}

void ImportPrefetch::beginCover(std::size_t number)
{
    const auto& file = _files[number];
    const auto place = number % _scaling.size();
    _covers.push_back(performed<std::optional<ScaledCover>>(
        *_scaling[place], [&process = *_coverProcesses[place], file] { return process.prefetchCover(file); }));
}

void ImportPrefetch::beginCopy(std::size_t number)
{
    const auto& file = _files[number];
    auto& worker = *_copying[number % _copying.size()];
    _copies.push_back(performed<std::unique_ptr<PrefetchedCopy>>(worker, [this, file] {
        const bool isThere = deletingLastPathComponent(file) == _copiesInto;
        return !isThere && isSmall(file) ? _workspace.prefetchCopy(file, _copiesInto) : nullptr;
    }));
}

template <typename Result>
std::future<Result> ImportPrefetch::performed(Worker& worker, std::function<Result()> work)
{
    auto promise = std::make_shared<std::promise<Result>>();
    auto result = promise->get_future();
    worker.perform([this, promise, work = std::move(work)] { promise->set_value(_stopping ? Result() : work()); });
    return result;
}

}
