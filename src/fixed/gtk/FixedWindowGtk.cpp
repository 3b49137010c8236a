#include "fixed/gtk/FixedWindowGtk.hpp"

#include "base/Translation.hpp"

#include <gtkmm/label.h>

#include <utility>

namespace pagora {

FixedWindowGtk::FixedWindowGtk(Toplevel& toplevel, ReaderPage page)
    : ReaderWindowRole(toplevel, ReaderLayout("FixedLayout"), std::move(page))
    , _marks({ { _parts.widget<Gtk::Box>("contentsPane"), nullptr, _parts.widget<Gtk::Widget>("tocClip"), nullptr },
                 _parts.widget<Gtk::Overlay>("pagePlace"), [this](const Rect& box) { return placeOf(box); } },
          _parts.queue)
    , _selectionBar(_parts.widget<Gtk::Overlay>("pagePlace"), _("Selected text"), selectionActions(),
          [this] { _parts.focusPage(); })
{
    _parts.setExtraCommands([this](ReaderCommand command) { return perform(command); });
    _parts.watchKeys(_marks.editor().popover());
    _editorClosed = _marks.editor().popover().signal_closed().connect([this] { _parts.focusPage(); });
}

FixedWindowGtk::~FixedWindowGtk()
{
    _editorClosed.disconnect();
}

void FixedWindowGtk::setPageIsMissing(bool isMissing)
{
    auto& notice = _parts.widget<Gtk::Label>("missingPage");
    notice.set_visible(isMissing);
    // The keyboard focus stays with the page.
    if (_parts.page.setNotice)
        _parts.page.setNotice(isMissing ? notice.get_text() : Glib::ustring());
}

Rect FixedWindowGtk::placeOf(const Rect& box)
{
    const double pixel = _parts.page.webView->pixelSize();
    double x = 0;
    double y = 0;
    _parts.page.widget->translate_coordinates(
        _parts.widget<Gtk::Overlay>("pagePlace"), box.x * pixel, box.y * pixel, x, y);
    return { x, y, box.width * pixel, box.height * pixel };
}

std::vector<SelectionBar::Action> FixedWindowGtk::selectionActions()
{
    std::vector<SelectionBar::Action> actions {
        { _("Copy"), [this] { _parts.send(&ReaderWindowActions::copySelection); } },
    };
    for (auto& action : _marks.selectionActions())
        actions.push_back(std::move(action));
    return actions;
}

void FixedWindowGtk::showSelection(const PageSelection& selection)
{
    PlacedText text { {}, placeOf(selection.firstLine), placeOf(selection.lastLine) };
    for (const auto& box : selection.boxes)
        text.boxes.push_back(placeOf(box));
    _selectionBar.show(text);
    if (selection.way == PageSelection::Way::Key)
        _selectionBar.focus();
}

// Whether there was a bar to hide.
bool FixedWindowGtk::endSelection()
{
    if (!_selectionBar.isShown())
        return false;
    _parts.send(&ReaderWindowActions::endSelection);
    return true;
}

// The list is beside the page, in the pane of the contents.
void FixedWindowGtk::showMarks()
{
    if (_parts.mainSplitView.isSubviewHidden(0))
        _parts.send(&ReaderWindowActions::toggleLeftView);
    _parts.queue.post([this] { _marks.showList(); });
}

bool FixedWindowGtk::perform(ReaderCommand command)
{
    switch (command) {
    case ReaderCommand::ShowSelection:
        _parts.send(&ReaderWindowActions::askForSelection);
        return true;
    case ReaderCommand::LeaveFullScreen:
        return endSelection();
    case ReaderCommand::ToggleBookmark:
        _marks.send(&MarkActions::toggleBookmark);
        return true;
    case ReaderCommand::Highlight:
        _marks.send(&MarkActions::highlight, std::string("yellow"));
        return true;
    case ReaderCommand::Annotate:
        _marks.send(&MarkActions::annotate);
        return true;
    case ReaderCommand::ShowMarks:
        showMarks();
        return true;
    default:
        return false;
    }
}

}
