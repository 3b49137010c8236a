// PageView: the messages of the page's scripts.

#include "confinement/gtk/PageFile.hpp"
#include "page_view/gtk/PageView.hpp"

#include <sstream>
#include <utility>

namespace pagora {

void PageView::messageReceived(const std::string& message)
{
    std::istringstream words(message);
    std::uint64_t load = 0;
    std::string what;
    words >> load >> what;
    if (load != currentLoad())
        return;
    if (what == "complete") {
        std::string direction;
        words >> direction;
        _document.runsRightToLeft = direction == "rtl";
        documentComplete();
    } else if (what == "broken")
        showForgivingly();
    else if (what == "begun") {
        if (std::exchange(_pageStart.isShownAtOnce, false))
            _curtain.uncoverBeginning();
    } else if (what == "keys") {
        int takes = 0;
        words >> takes;
        _frame.setPageTakesKeys(takes != 0);
    } else if (what == "escape") {
        int takes = 0;
        words >> takes;
        _document.takesEscape = takes != 0;
    } else if (what == "note") {
        if (const auto link = pointedLinkFrom(words); !link || isInBook(link->url))
            _reports.pointsAtLink(link);
    } else if (what == "paper") {
        std::string color;
        words >> color;
        _frame.setPaper(color);
    } else if (what == "picture") {
        std::string text;
        words >> text;
        const auto url = Url::fromString(text);
        const auto file = url && url->isFile() ? existingFile(*url) : std::nullopt;
        if (_onPicture && file && isFileInFolder(file->path, _content.bookFolder()))
            _onPicture(file->path);
    } else if (what == "rests") {
        std::uint64_t request = 0;
        int isAsOpened = 0;
        words >> request >> isAsOpened;
        _resting.isDrawn(request, isAsOpened != 0);
    } else if (what == "mark") {
        _reports.pressesMark(pressedMarkFrom(words));
    } else if (what == "selection")
        _reports.selectionDidChange(pageSelectionFrom(words));
    else if (what == "painted") {
        std::uint64_t request = 0;
        words >> request;
        _curtain.pageIsPainted(request);
    } else if (what == "size") {
        Rect size;
        words >> size.width >> size.height;
        _sizes.pageDidChange(size, frame());
    }
}

}
