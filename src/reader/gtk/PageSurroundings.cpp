#include "reader/gtk/PageSurroundings.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/DisplayText.hpp"

namespace pagora {

PageSurroundings::PageSurroundings(const Parts& parts)
    : _parts(parts)
    , _barColors(parts.whole)
    , _noContents(_("No contents"))
    , _nothing(Gtk::Orientation::VERTICAL, 18)
    , _nothingText(_("This book has no pages that can be shown."))
    , _back(_("Back to the library"))
{
    _chapter.add_css_class("chapter-name");
    _chapter.set_ellipsize(Pango::EllipsizeMode::END);
    _chapter.set_xalign(0);
    _chapter.set_max_width_chars(40);
    _chapter.set_visible(false);
    _parts.locationBar.prepend(_chapter);
    _page.add_css_class("page-of-chapter");
    _page.set_visible(false);
    _page.insert_before(_parts.locationBar, _parts.locationLabel);

    _noContents.add_css_class("no-contents");
    _noContents.set_visible(false);
    _noContents.insert_before(_parts.contents, _parts.contentsList);
    _listChanged = _parts.contentsList.property_visible().signal_changed().connect([this] { showNoContents(); });

    _nothing.add_css_class("nothing-to-show");
    _nothing.set_halign(Gtk::Align::CENTER);
    _nothing.set_valign(Gtk::Align::CENTER);
    _nothingText.set_wrap(true);
    _nothing.append(_nothingText);
    _back.set_halign(Gtk::Align::CENTER);
    _nothing.append(_back);
    _nothing.set_visible(false);
    _parts.page.add_overlay(_nothing);
}

PageSurroundings::~PageSurroundings()
{
    _backClicked.disconnect();
    _listChanged.disconnect();
    _parts.page.remove_overlay(_nothing);
    _parts.contents.remove(_noContents);
    _parts.locationBar.remove(_page);
    _parts.locationBar.remove(_chapter);
}

void PageSurroundings::setChapter(const std::string& name)
{
    _chapter.set_text(displayText(name));
    _chapter.set_visible(!name.empty());
}

void PageSurroundings::setPageOfChapter(std::int64_t page, std::int64_t count)
{
    _page.set_text(formatted(_("page %d of %d"), static_cast<int>(page), static_cast<int>(count)));
    _page.set_visible(count > 0);
    _pageOfChapter = count > 0 ? std::optional(std::pair(page, count)) : std::nullopt;
}

void PageSurroundings::setHasContents(bool hasContents)
{
    _hasContents = hasContents;
    showNoContents();
}

// Hidden while results of a search or marks are shown instead of the contents.
void PageSurroundings::showNoContents()
{
    _noContents.set_visible(!_hasContents && _parts.contentsList.get_visible());
}

void PageSurroundings::setNothingToShow(bool isNothing, std::function<void()> goBack)
{
    _backClicked.disconnect();
    _backClicked = _back.signal_clicked().connect(std::move(goBack));
    _nothing.set_visible(isNothing);
}

}
