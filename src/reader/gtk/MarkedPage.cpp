#include "reader/gtk/MarkedPage.hpp"

#include "base/Translation.hpp"

#include <gdkmm/clipboard.h>

#include <iterator>
#include <utility>

namespace pagora {

namespace {

std::vector<SelectionBar::Action> joined(
    std::vector<SelectionBar::Action> first, std::vector<SelectionBar::Action> second)
{
    first.insert(first.end(), std::move_iterator(second.begin()), std::move_iterator(second.end()));
    return first;
}

}

MarkedPage::MarkedPage(ReaderWindowGtk& window, Search search, std::vector<SelectionBar::Action> textActions)
    : _window(window)
    , _marks({ { window.widget<Gtk::Box>("contentsPane"),
                   search == Search::Yes ? &window.widget<Gtk::Widget>("searchField") : nullptr,
                   window.widget<Gtk::Widget>("tocClip"),
                   search == Search::Yes ? &window.widget<Gtk::Widget>("searchResults") : nullptr },
                 window.widget<Gtk::Overlay>("pagePlace"), [this](const Rect& box) { return placeOf(box); } },
          window.queue)
    , _bar(window.widget<Gtk::Overlay>("pagePlace"), _("Selected text"),
          joined(std::move(textActions), _marks.selectionActions()), [&window] { window.focusPage(); })
{
    auto& editor = _marks.editor().popover();
    window.watchKeys(editor);
    _editorClosed = editor.signal_closed().connect([&window] { window.focusPage(); });
}

MarkedPage::~MarkedPage()
{
    _editorClosed.disconnect();
}

Rect MarkedPage::placeOf(const Rect& box) const
{
    const double pixel = _window.page.webView->pixelSize();
    // The page may have margins in its frame.
    auto& frame = *_window.page.widget;
    auto* const page = frame.get_first_child();
    double x = 0;
    double y = 0;
    (page ? *page : frame)
        .translate_coordinates(_window.widget<Gtk::Overlay>("pagePlace"), box.x * pixel, box.y * pixel, x, y);
    return { x, y, box.width * pixel, box.height * pixel };
}

void MarkedPage::showSelection(const PageSelection& selection)
{
    PlacedText text { {}, placeOf(selection.firstLine), placeOf(selection.lastLine) };
    for (const auto& box : selection.boxes)
        text.boxes.push_back(placeOf(box));
    _bar.show(text);
    if (selection.cause == PageSelection::Cause::Key)
        _bar.focus();
}

void MarkedPage::copy(const std::string& text)
{
    _window.widget<Gtk::Widget>("stage").get_clipboard()->set_text(text);
}

bool MarkedPage::endSelection()
{
    if (!_bar.isShown())
        return false;
    _window.send(&ReaderWindowActions::endSelection);
    return true;
}

void MarkedPage::showList()
{
    if (_window.mainSplitView.isSubviewHidden(0))
        _window.send(&ReaderWindowActions::toggleLeftView);
    _window.queue.post([this] { _marks.showList(); });
}

bool MarkedPage::perform(ReaderCommand command)
{
    switch (command) {
    case ReaderCommand::ShowSelection:
        _window.send(&ReaderWindowActions::askForSelection);
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
        showList();
        return true;
    default:
        return false;
    }
}

}
