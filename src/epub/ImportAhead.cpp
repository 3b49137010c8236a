#include "epub/ImportAhead.hpp"

#include "platform/Path.hpp"

#include <algorithm>
#include <filesystem>
#include <thread>
#include <utility>

namespace pagora {

namespace {

constexpr std::size_t mostAhead = 16;
constexpr std::size_t copiesAtOnce = 8;
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

ImportAhead::ImportAhead(Workspace& workspace, std::vector<std::string> files, std::string copiesInto)
    : _workspace(workspace)
    , _files(std::move(files))
    , _copiesInto(std::move(copiesInto))
{
    // For a single file there is nothing to overlap with.
    if (_files.size() < 2)
        return;
    addWorkers(_scaling, std::min<std::size_t>(_files.size(), std::max(2u, std::thread::hardware_concurrency())));
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
    while (_begun < _files.size() && _ahead.size() < mostAhead)
        begin(_files[_begun]);
    if (_ahead.empty() || _ahead.front().file != file)
        return {};
    auto next = std::move(_ahead.front());
    _ahead.pop_front();
    return { next.cover.get(), next.copy.valid() ? next.copy.get() : nullptr };
}

void ImportAhead::begin(const std::string& file)
{
    const auto number = _begun++;
    Ahead ahead { file, {}, {} };
    ahead.cover = performed<std::optional<ScaledCover>>(
        *_scaling[number % _scaling.size()], [file] { return coverAhead(file); });
    if (!_copying.empty() && deletingLastPathComponent(file) != _copiesInto) {
        ahead.copy = performed<std::unique_ptr<CopyAhead>>(*_copying[number % _copying.size()],
            [this, file] { return isSmall(file) ? _workspace.copyAhead(file, _copiesInto) : nullptr; });
    }
    _ahead.push_back(std::move(ahead));
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
