#include "find/BookFinder.hpp"

#include "base/Unicode.hpp"
#include "base/Url.hpp"
#include "find/ChapterText.hpp"

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <string_view>

namespace pagora {

namespace {

// The maximum size of cached texts in bytes.
constexpr std::size_t maxKeptBytes = 48u << 20;
// The maximum size in bytes of the context on each side of a match.
constexpr std::size_t reachBefore = 48;
constexpr std::size_t reachAfter = 120;
constexpr std::size_t maxMatchBytes = 200;
// The interval of reports. The first matches are reported immediately.
constexpr std::chrono::milliseconds pause { 50 };
constexpr std::size_t firstTold = 20;

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

std::string_view textBefore(std::string_view text, std::size_t at)
{
    auto start = at > reachBefore ? at - reachBefore : 0;
    if (const auto block = text.substr(start, at - start).rfind('\n'); block != std::string_view::npos)
        start += block + 1;
    else if (start > 0) {
        // A truncated word is omitted unless it is the only one.
        const auto blank = text.substr(start, at - start).find(' ');
        if (blank != std::string_view::npos && start + blank + 1 < at)
            start += blank + 1;
    }
    while (start < at && isContinuation(text[start]))
        ++start;
    return text.substr(start, at - start);
}

std::string_view textAfter(std::string_view text, std::size_t at)
{
    auto end = std::min(at + reachAfter, text.size());
    end = std::min(text.substr(0, end).find('\n', at), end);
    while (end > at && end < text.size() && isContinuation(text[end]))
        --end;
    return text.substr(at, end - at);
}

std::string_view shortened(std::string_view text)
{
    auto end = std::min(maxMatchBytes, text.size());
    while (end > 0 && end < text.size() && isContinuation(text[end]))
        --end;
    return text.substr(0, end);
}

FoundText foundText(std::size_t chapter, std::string_view text, const TextMatch& match)
{
    return { chapter, match.start, match.end, std::string(textBefore(text, match.firstByte)),
        std::string(shortened(text.substr(match.firstByte, match.endByte - match.firstByte))),
        std::string(textAfter(text, match.endByte)) };
}

// Collects matches and reports them on the main thread.
class Teller {
public:
    Teller(RunLoop& runLoop, std::stop_token stop, BookFinder::Tell tell)
        : _runLoop(runLoop)
        , _stop(std::move(stop))
        , _tell(std::make_shared<BookFinder::Tell>(std::move(tell)))
    {
    }

    void add(FoundText found)
    {
        _progress.found.push_back(std::move(found));
        ++_told;
        if (_told == firstTold)
            flush();
    }
    void count() { ++_progress.count; }
    bool isFull() const { return _told >= maxFoundTexts; }

    void flushInTime()
    {
        if (_told <= firstTold ? !_progress.found.empty() : std::chrono::steady_clock::now() - _lastTold >= pause)
            flush();
    }

    void finish()
    {
        _progress.isOver = true;
        flush();
    }

private:
    void flush()
    {
        _lastTold = std::chrono::steady_clock::now();
        auto progress = std::make_shared<SearchProgress>(std::move(_progress));
        _progress = {};
        _progress.count = progress->count;
        _runLoop.postToMainThread([stop = _stop, tell = _tell, progress] {
            if (!stop.stop_requested())
                (*tell)(*progress);
        });
    }

    RunLoop& _runLoop;
    std::stop_token _stop;
    std::shared_ptr<BookFinder::Tell> _tell;
    SearchProgress _progress;
    std::size_t _told = 0;
    std::chrono::steady_clock::time_point _lastTold;
};

}

// The texts of the book's documents, read at the first search. Thread-safe.
class BookFinder::Texts {
public:
    Texts(std::vector<std::string> paths, std::string folder)
        : _paths(std::move(paths))
        , _folder(std::move(folder))
    {
    }

    std::size_t count() const { return _paths.size(); }

    // Returns null if the document cannot be read.
    std::shared_ptr<const std::string> text(std::size_t chapter)
    {
        {
            const std::scoped_lock lock(_mutex);
            if (const auto kept = _kept.find(chapter); kept != _kept.end())
                return kept->second;
        }
        auto read = readText(_paths[chapter]);
        if (!read)
            return nullptr;
        read->text.shrink_to_fit();
        auto text = std::make_shared<const std::string>(std::move(read->text));
        const std::scoped_lock lock(_mutex);
        if (_keptBytes + text->size() <= maxKeptBytes && _kept.emplace(chapter, text).second)
            _keptBytes += text->size();
        return text;
    }

private:
    // Finds the file also if its name is escaped twice or has another Unicode normalization.
    std::optional<ChapterText> readText(const std::string& path) const
    {
        const auto replaced = replacingPercentEscapes(path).value_or(path);
        for (const auto& spelling : { path, replaced, composedForm(path), decomposedForm(path) }) {
            if (auto read = chapterTextOf(spelling, _folder))
                return read;
        }
        return std::nullopt;
    }

    const std::vector<std::string> _paths;
    const std::string _folder;
    std::mutex _mutex;
    std::map<std::size_t, std::shared_ptr<const std::string>> _kept;
    std::size_t _keptBytes = 0;
};

BookFinder::BookFinder(RunLoop& runLoop, std::vector<std::string> paths, std::string folder)
    : _runLoop(runLoop)
    , _texts(std::make_shared<Texts>(std::move(paths), std::move(folder)))
{
}

BookFinder::~BookFinder()
{
    cancel();
}

void BookFinder::cancel()
{
    _stop.request_stop();
}

void BookFinder::find(const std::string& pattern, WholeWords wholeWords, Tell tell)
{
    cancel();
    _stop = {};
    const auto work = [texts = _texts, stop = _stop.get_token(), pattern, wholeWords,
                          teller = std::make_shared<Teller>(_runLoop, _stop.get_token(), std::move(tell))] {
        const TextPattern wanted(pattern, wholeWords);
        for (std::size_t chapter = 0; chapter < texts->count() && !stop.stop_requested(); ++chapter) {
            const auto text = texts->text(chapter);
            if (!text)
                continue;
            wanted.search(*text, [&](const TextMatch& match) {
                teller->count();
                if (!teller->isFull())
                    teller->add(foundText(chapter, *text, match));
                return !stop.stop_requested();
            });
            teller->flushInTime();
        }
        teller->finish();
    };
    // The task is not awaited; it reports its results.
    static_cast<void>(_runLoop.performInBackground(work));
}

}
