// FixedEpubController: the selected text, and the marks of the pages.

#include "base/Translation.hpp"
#include "fixed/FixedEpubController.hpp"

#include <map>
#include <utility>

namespace pagora {

std::string FixedEpubController::marksScript(std::uint64_t page) const
{
    const bool hasMarks = _marks.script && _marks.layoutScript && !_marks.layoutScript(page).empty();
    return hasMarks ? _marks.script(page) : std::string();
}

// A prepared page has the marks that existed when it was prepared.
Task<void> FixedEpubController::paintMarks()
{
    const bool hadMarks = _painted.ahead == _activeSplitIndex;
    const auto script = marksScript(_activeSplitIndex);
    _painted.isHere = !script.empty();
    if (_painted.isHere)
        co_await evaluate(_window.webView(), script);
    else if (hadMarks)
        co_await evaluate(_window.webView(), _marks.script(_activeSplitIndex));
}

void FixedEpubController::runChapterScript()
{
    _queue.enqueueAction([this]() -> Task<void> {
        const bool hadMarks = _painted.isHere;
        _painted.isHere = !marksScript(_activeSplitIndex).empty();
        if (hadMarks || _painted.isHere)
            co_await evaluate(_window.webView(), _marks.script(_activeSplitIndex));
    });
}

void FixedEpubController::ask(std::string script, std::function<void(std::int64_t)> answer)
{
    _queue.enqueueAction([this, script = std::move(script), answer = std::move(answer)]() -> Task<void> {
        const std::int64_t number = co_await evaluateInteger(_window.webView(), script);
        if (answer)
            answer(number);
    });
}

void FixedEpubController::askText(std::string script, std::function<void(const std::string&)> answer)
{
    _queue.enqueueAction([this, script = std::move(script), answer = std::move(answer)]() -> Task<void> {
        const std::string text = co_await _window.webView().evaluateScript(script);
        answer(text);
    });
}

void FixedEpubController::goToMark(const MarkAnchor& anchor)
{
    if (anchor.chapter != _activeSplitIndex)
        goToPageNumber(static_cast<std::int64_t>(anchor.chapter) + 1);
}

// A page that is not in the contents has the name of the chapter before it.
std::vector<std::string> FixedEpubController::chapterNames()
{
    std::map<std::string, std::string> titles;
    for (const auto& link : _contentsPane.links())
        titles.emplace(link->link().lastPathComponent(), link->text());
    std::vector<std::string> names;
    std::string title;
    for (const auto& url : _bookSplits) {
        if (const auto found = titles.find(url.lastPathComponent()); found != titles.end())
            title = found->second;
        const auto number = names.size() + 1;
        names.push_back(
            title.empty() ? formatted(_("Page %zu"), number) : formatted(_("%s, page %zu"), title.c_str(), number));
    }
    return names;
}

void FixedEpubController::pressesMark(const PressedMark& mark)
{
    if (_marks.isPressed)
        _marks.isPressed(mark);
}

}
