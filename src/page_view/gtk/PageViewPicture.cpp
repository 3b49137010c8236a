// PageView: the picture that is shown until the first page is drawn, and the picture that is taken for the next time.

#include "page_view/gtk/PageView.hpp"

namespace pagora {

void PageView::pageIsPrepared()
{
    _curtain.pageIsPrepared(_reports.isFinished() ? PageCurtain::Whole::Yes : PageCurtain::Whole::No);
}

void PageView::showUntilDrawn(const PagePicture& picture)
{
    if (_shown || picture.conditions != drawingConditions(_view.get()))
        return;
    _frame.showPicture(textureOf(picture), picture.scale);
    _frame.setPaper(picture.paper);
}

// Pictures and fonts that are still loading would change the page.
void PageView::pageRests()
{
    if (_stage == Stage::Shown && _reports.isFinished() && _content.kind() == PageKind::Columns)
        _resting.rest();
}

// A page without its scripts may look different the next time.
std::optional<PagePicture> PageView::pictureAtRest()
{
    return _content.allowsScripts() ? _resting.picture() : std::nullopt;
}

}
