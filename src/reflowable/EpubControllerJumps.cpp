// EpubController: jumps to exact places, and the way back from them.

#include "base/Numbers.hpp"
#include "base/Translation.hpp"
#include "paging/PageScripts.hpp"
#include "reflowable/EpubController.hpp"

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

// Returns the offset of the page with a place, in a strip of S points. Offsets of text and elements come from the page.
struct OffsetOfPlace {
    const PageGeometry& page;
    std::int64_t S;

    std::int64_t operator()(const ShareOfChapter& place) const
    {
        // Rounds up to the first page at or after the place, so that the shown percentage is not less than the
        // requested one.
        const double pages = std::clamp(place.share, 0.0, 1.0) * static_cast<double>(S) / page.W;
        return pageAt(static_cast<std::int64_t>(std::ceil(pages - 1e-6)));
    }
    std::int64_t operator()(const PageOfChapter& place) const { return pageAt(place.page - 1); }
    std::int64_t operator()(const OffsetInChapter& place) const
    {
        if (place.stripLength == S && place.viewWidth == page.W)
            return place.offset;
        const auto middle = static_cast<double>(place.offset) + place.viewWidth / 2;
        return page.offsetAround(middle / static_cast<double>(std::max<std::int64_t>(place.stripLength, 1)), S);
    }
    std::int64_t operator()(const TextInChapter&) const { return -1; }
    std::int64_t operator()(const ElementInChapter&) const { return -1; }

    std::int64_t pageAt(std::int64_t index) const
    {
        const auto last = static_cast<std::int64_t>(std::ceil(static_cast<double>(S) / page.W)) - 1;
        return truncated(
            static_cast<double>(std::clamp<std::int64_t>(index, 0, std::max<std::int64_t>(last, 0))) * page.W);
    }
};

// Returns the script that computes the offset of the place; empty if it is computed without the page.
std::string offsetScript(const PlaceInChapter& place)
{
    if (const auto* text = std::get_if<TextInChapter>(&place))
        return "pagoraFind.offsetOfText([" + std::to_string(text->start) + "," + std::to_string(text->end) + ",'"
            + scriptText(text->text) + "'])";
    if (const auto* element = std::get_if<ElementInChapter>(&place))
        return "pagoraFind.offsetOfElement('" + scriptText(element->id) + "')";
    return {};
}

}

void EpubController::userMoves()
{
    _place.userMoves();
    _window.webView().prepareForUserAction();
    _jumps.landing = std::nullopt;
    _jumps.isSeeking = false;
}

void EpubController::goTo(Destination destination)
{
    _queue.enqueueAction([this, destination = std::move(destination)]() -> Task<void> {
        leavePage();
        co_await show(destination);
    });
}

void EpubController::goToPercentage(double percentage)
{
    if (_spine.bookSplits.empty())
        return;
    const auto count = static_cast<double>(_spine.bookSplits.size());
    const double value = std::clamp(percentage, 0.0, 100.0) / 100 * count;
    const double chapter = std::min(std::floor(value), count - 1);
    goTo({ _spine.bookSplits[static_cast<std::size_t>(chapter)], ShareOfChapter { value - chapter } });
}

void EpubController::goToPage(std::int64_t page)
{
    if (_jumps.shownDocument)
        goTo({ *_jumps.shownDocument, PageOfChapter { page } });
}

void EpubController::goToPrintedPage(std::size_t index)
{
    if (index >= _jumps.printedPages.size())
        return;
    const auto& target = _jumps.printedPages[index];
    const auto fragment = target.fragment();
    if (fragment)
        goTo({ target.withoutFragment(), ElementInChapter { *fragment } });
    else
        goTo({ target, PageOfChapter { 1 } });
}

void EpubController::seePage(std::int64_t offset, std::int64_t S)
{
    const auto before = _jumps.seenPage;
    // The page of a server may be shown instead of the book's.
    const auto& document = _jumps.shownDocument;
    if (document && (document->isFile() || document->scheme().empty()))
        _jumps.seenPage = SeenPage { *document, { offset, S, geometry().W } };
    else
        _jumps.seenPage = std::nullopt;
    if (_marks.pageIsSeen && _jumps.seenPage != before)
        _marks.pageIsSeen();
}

void EpubController::leavePage()
{
    if (_jumps.seenPage)
        _jumps.history.leave(*_jumps.seenPage);
    historyDidChange();
}

void EpubController::pageFollowsLink()
{
    leavePage();
    _jumps.isSeeking = false;
}

void EpubController::goBack()
{
    _queue.enqueueAction([this] { return goInHistory(&JumpHistory::back); });
}

void EpubController::goForward()
{
    _queue.enqueueAction([this] { return goInHistory(&JumpHistory::forward); });
}

Task<void> EpubController::goInHistory(std::optional<SeenPage> (JumpHistory::*step)(const std::optional<SeenPage>&))
{
    const auto page = (_jumps.history.*step)(_jumps.seenPage);
    historyDidChange();
    if (!page)
        co_return;
    const Destination destination { page->document, page->place };
    co_await show(destination);
}

Task<void> EpubController::show(Destination destination)
{
    userMoves();
    _state.openAtChapterEnd = false;
    _state.pendingChapterFraction = 0;
    _lastAnchor = std::nullopt;
    _jumps.landing = destination.place;
    if (_jumps.shownDocument == destination.document.withoutFragment())
        co_return co_await land();
    const auto split = std::find(_spine.bookSplits.begin(), _spine.bookSplits.end(), destination.document);
    if (split != _spine.bookSplits.end())
        loadSplit(static_cast<std::uint64_t>(split - _spine.bookSplits.begin()));
    else
        load(destination.document);
}

// Shows the page of the destination in the current layout of the chapter.
Task<void> EpubController::land()
{
    const auto place = *_jumps.landing;
    const std::int64_t S = co_await integer(scripts::scrollWidthExpression);
    const std::int64_t X = co_await integer(scripts::pageXOffset);
    const auto script = offsetScript(place);
    const auto page = geometry();
    if (S <= 0 || page.W <= 0)
        co_return;
    std::int64_t offset = 0;
    if (script.empty())
        offset = std::visit(OffsetOfPlace { page, S }, place);
    else
        offset = co_await integer(script);
    if (offset >= 0 && offset != X && _jumps.landing)
        co_await adoptOffset(offset, S);
}

void EpubController::ask(std::string script, std::function<void(std::int64_t)> answer)
{
    _queue.enqueueAction([this, script = std::move(script), answer = std::move(answer)]() -> Task<void> {
        const std::int64_t number = co_await integer(script);
        if (answer)
            answer(number);
    });
}

void EpubController::askText(std::string script, std::function<void(const std::string&)> answer)
{
    _queue.enqueueAction([this, script = std::move(script), answer = std::move(answer)]() -> Task<void> {
        const std::string text = co_await _window.webView().evaluateScript(script);
        answer(text);
    });
}

void EpubController::goToMark(const MarkAnchor& anchor)
{
    // A bookmark has no text of its own; the character after it is shown.
    const TextInChapter text { anchor.start, std::max(anchor.end, anchor.start + 1), anchor.text };
    goTo({ _spine.bookSplits.at(anchor.chapter), text });
}

// A document that is not in the contents has the name of the chapter before it.
std::vector<std::string> EpubController::chapterNames()
{
    std::map<std::string, std::string> titles;
    for (const auto& link : _contentsPane.links())
        titles.emplace(link->link().lastPathComponent(), link->text());
    std::vector<std::string> names;
    std::string name = _("Beginning");
    for (const auto& url : _spine.bookSplits) {
        if (const auto found = titles.find(url.lastPathComponent()); found != titles.end())
            name = found->second;
        names.push_back(name);
    }
    return names;
}

void EpubController::runChapterScript()
{
    _queue.enqueueAction([this] { return decorate(); });
}

Task<void> EpubController::decorate()
{
    const auto script = _listeners.chapterScript ? _listeners.chapterScript(_spine.activeSplitIndex) : std::string();
    if (!script.empty())
        co_await run(script);
    const auto marks = _marks.script ? _marks.script(_spine.activeSplitIndex) : std::string();
    if (!marks.empty())
        co_await run(marks);
}

void EpubController::historyDidChange()
{
    _window.setHistory(_jumps.history.canGoBack(), _jumps.history.canGoForward());
}

}
