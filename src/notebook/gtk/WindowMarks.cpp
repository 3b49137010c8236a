#include "notebook/gtk/WindowMarks.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "notebook/gtk/MarkRow.hpp"

#include <gdkmm/clipboard.h>

#include <utility>

namespace pagora {

WindowMarks::WindowMarks(Parts parts, ActionQueue& queue)
    : _parts(std::move(parts))
    , _queue(queue)
    , _pane(_parts.pane, queue, _actions)
    , _editor(_parts.page,
          { [this](std::size_t mark, const std::string& color) { send(&MarkActions::setColor, mark, color); },
              [this](std::size_t mark, const std::string& note) { send(&MarkActions::setNote, mark, note); },
              [this](std::size_t mark) { send(&MarkActions::remove, mark); } })
    , _signs(_parts.page, [this] { send(&MarkActions::undo); })
{
}

std::vector<SelectionBar::Action> WindowMarks::selectionActions()
{
    std::vector<SelectionBar::Action> actions;
    for (const char* const color : { "yellow", "orange", "pink", "purple", "blue", "green" }) {
        const auto highlights = [this, color] { send(&MarkActions::highlight, std::string(color)); };
        actions.push_back({ "", highlights, std::string("mark-") + color,
            formatted(_("Highlight in %s"), colorTitle(color).c_str()) });
    }
    actions.push_back({ _("Note"), [this] { send(&MarkActions::annotate); } });
    return actions;
}

void WindowMarks::showMark(const EditedMark& mark, const std::optional<Rect>& place)
{
    const Rect middle { _parts.page.get_width() / 2.0, _parts.page.get_height() / 2.0, 1, 1 };
    const auto box = place ? _parts.placeOf(*place) : middle;
    _editor.show(mark,
        { static_cast<int>(box.x), static_cast<int>(box.y), static_cast<int>(box.width),
            static_cast<int>(box.height) });
}

void WindowMarks::showList()
{
    _pane.setShown(true);
    _pane.focusList();
}

void WindowMarks::copyText(const std::string& text)
{
    _parts.page.get_clipboard()->set_text(displayText(text, text.size()));
}

}
