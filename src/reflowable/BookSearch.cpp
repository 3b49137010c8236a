#include "reflowable/BookSearch.hpp"

#include "page/WebView.hpp"
#include "reflowable/EpubController.hpp"

#include <algorithm>

namespace pagora {

namespace {

// The maximum number of results that are highlighted in a chapter.
constexpr std::size_t maxPainted = 5'000;

std::string scriptOf(const FoundText& found)
{
    return "[" + std::to_string(found.start) + "," + std::to_string(found.end) + ",'" + scriptText(found.match) + "']";
}

}

BookSearch::BookSearch(EpubController& reader, SearchPane& pane, RunLoop& runLoop)
    : _reader(reader)
    , _pane(pane)
    , _runLoop(runLoop)
{
    _reader.setChapterScript([this](std::uint64_t chapter) { return paintScript(chapter); });
}

BookSearch::~BookSearch()
{
    _reader.setChapterScript({});
}

void BookSearch::search(const std::string& pattern, WholeWords wholeWords)
{
    if (TextPattern(pattern, wholeWords).isEmpty()) {
        if (_finder)
            _finder->cancel();
        _isActive = false;
        _found.clear();
        _current.reset();
        _pane.setResultsShown(false);
        return takePaintOff();
    }
    if (!_finder) {
        std::vector<std::string> paths;
        for (const auto& url : _reader.bookSplits())
            paths.push_back(url.path());
        _finder = std::make_unique<BookFinder>(_runLoop, std::move(paths), _folder);
        _chapterNames = _reader.chapterNames();
    }
    // The previous results stay visible until new ones arrive.
    _isStale = true;
    if (!std::exchange(_isActive, true)) {
        _pane.removeAllResults();
        _pane.setCount(0, false);
    }
    _pane.setResultsShown(true);
    _finder->find(pattern, wholeWords, [this](const SearchProgress& progress) { take(progress); });
}

void BookSearch::take(const SearchProgress& progress)
{
    if (std::exchange(_isStale, false)) {
        _found.clear();
        _current.reset();
        _lastChapter.clear();
        _pane.removeAllResults();
    }
    addToPane(progress.found);
    _pane.setCount(progress.count, progress.isOver);
    const auto shown = _reader.activeSplitIndex();
    const bool isHere = std::any_of(progress.found.begin(), progress.found.end(),
        [shown](const FoundText& found) { return found.chapter == shown; });
    if (isHere || progress.isOver)
        _reader.runChapterScript();
}

void BookSearch::addToPane(const std::vector<FoundText>& found)
{
    for (auto first = found.begin(); first != found.end();) {
        const auto chapter = first->chapter;
        const auto last
            = std::find_if(first, found.end(), [chapter](const FoundText& next) { return next.chapter != chapter; });
        const auto& name = _chapterNames.at(chapter);
        if (_found.empty() || name != _lastChapter)
            _pane.addChapter(name);
        _lastChapter = name;
        _found.insert(_found.end(), first, last);
        _pane.addResults({ first, last });
        first = last;
    }
}

void BookSearch::goTo(std::size_t index)
{
    if (index >= _found.size())
        return;
    _current = index;
    const auto& found = _found[index];
    _pane.selectResult(index);
    _reader.goTo({ _reader.bookSplits().at(found.chapter), TextInChapter { found.start, found.end, found.match } });
    _reader.runChapterScript();
}

void BookSearch::step(int direction)
{
    if (_found.empty())
        return;
    if (!_current)
        return goToFirstFromHere(direction);
    const auto count = _found.size();
    goTo(direction > 0 ? (*_current + 1) % count : (*_current + count - 1) % count);
}

void BookSearch::goToFirstFromHere(int direction)
{
    const auto [first, last] = resultsOf(_reader.activeSplitIndex());
    const auto before = [this](std::size_t index) { return index > 0 ? index - 1 : _found.size() - 1; };
    if (first == last) {
        const auto next = first < _found.size() ? first : 0;
        return goTo(direction > 0 ? next : before(first));
    }
    std::string script = "pagoraFind.countBefore([";
    for (auto i = first; i < last; ++i)
        script += scriptOf(_found[i]) + ",";
    _reader.ask(script + "])", [this, first, before, direction](std::int64_t count) {
        const auto next = first + static_cast<std::size_t>(std::max<std::int64_t>(count, 0));
        goTo(direction > 0 ? next % _found.size() : before(next));
    });
}

void BookSearch::end()
{
    if (_finder)
        _finder->cancel();
    _isActive = false;
    _found.clear();
    _current.reset();
    _pane.emptyField();
    _pane.setResultsShown(false);
    _pane.removeAllResults();
    takePaintOff();
}

void BookSearch::takePaintOff()
{
    _reader.ask("pagoraFind.clear()", {});
}

std::pair<std::size_t, std::size_t> BookSearch::resultsOf(std::uint64_t chapter) const
{
    const auto first = std::lower_bound(_found.begin(), _found.end(), chapter,
        [](const FoundText& found, std::uint64_t wanted) { return found.chapter < wanted; });
    const auto last = std::upper_bound(first, _found.end(), chapter,
        [](std::uint64_t wanted, const FoundText& found) { return wanted < found.chapter; });
    return { static_cast<std::size_t>(first - _found.begin()), static_cast<std::size_t>(last - _found.begin()) };
}

std::string BookSearch::paintScript(std::uint64_t chapter) const
{
    if (!_isActive)
        return {};
    auto [first, last] = resultsOf(chapter);
    const bool isHere = _current && *_current >= first && *_current < last;
    const std::string current = isHere ? scriptOf(_found[*_current]) : "null";
    if (last - first > maxPainted) {
        // The results nearest to the current one are highlighted.
        const auto middle = isHere ? *_current : first;
        first = std::max(first, middle - std::min(middle, maxPainted / 2));
        last = std::min(last, first + maxPainted);
    }
    std::string script = "pagoraFind.paint([";
    for (auto i = first; i < last; ++i)
        script += scriptOf(_found[i]) + ",";
    return script + "]," + current + ")";
}

}
