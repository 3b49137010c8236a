#include "epub/ImportAhead.hpp"

#include "base/Path.hpp"

#include <algorithm>
#include <filesystem>
#include <thread>
#include <utility>

namespace pagora {

namespace {

// A cover that waits takes memory; a copy that waits does not.
constexpr std::size_t coversAhead = 16;
constexpr std::size_t copiesAhead = 48;
// Each waits for the disk most of the time, and the disk takes them together.
constexpr std::size_t copiesAtOnce = 24;
// A large file is copied when its time comes: it might be rejected.
constexpr std::uintmax_t largestCopy = 64u << 20;

bool isSmall(const std::string& file)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    return !error && size <= largestCopy;
}

void addWorkers(std::vector<std::unique_ptr<Worker>>& workers, std::size_t count)
{
    while (workers.size() < count)
        workers.push_back(std::make_unique<Worker>());
}

}

ImportAhead::ImportAhead(
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
        addWorkers(_copying, std::min(_files.size(), copiesAtOnce));
}

ImportAhead::~ImportAhead()
{
    _stopping = true;
}

ImportAhead::Results ImportAhead::take(const std::string& file)
{
    if (_scaling.empty())
        return {};
    const auto number = _taken++;
    if (number >= _files.size() || _files[number] != file)
        return {};
    while (_covers.size() < coversAhead && number + _covers.size() < _files.size())
        beginCover(number + _covers.size());
    while (!_copying.empty() && _copies.size() < copiesAhead && number + _copies.size() < _files.size())
        beginCopy(number + _copies.size());
    Results results { _covers.front().get(), nullptr };
    _covers.pop_front();
    if (!_copies.empty()) {
        results.copy = _copies.front().get();
        _copies.pop_front();
    }
    return results;
}

void ImportAhead::beginCover(std::size_t number)
{
    const auto& file = _files[number];
    const auto place = number % _scaling.size();
    _covers.push_back(performed<std::optional<ScaledCover>>(
        *_scaling[place], [&process = *_coverProcesses[place], file] { return process.coverAhead(file); }));
}

void ImportAhead::beginCopy(std::size_t number)
{
    const auto& file = _files[number];
    auto& worker = *_copying[number % _copying.size()];
    _copies.push_back(performed<std::unique_ptr<CopyAhead>>(worker, [this, file] {
        const bool isThere = deletingLastPathComponent(file) == _copiesInto;
        return !isThere && isSmall(file) ? _workspace.copyAhead(file, _copiesInto) : nullptr;
    }));
}

template <typename Result>
std::future<Result> ImportAhead::performed(Worker& worker, std::function<Result()> work)
{
    auto promise = std::make_shared<std::promise<Result>>();
    auto result = promise->get_future();
    worker.perform([this, promise, work = std::move(work)] { promise->set_value(_stopping ? Result() : work()); });
    return result;
}

}
