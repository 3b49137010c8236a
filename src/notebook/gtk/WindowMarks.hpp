#pragma once

#include "notebook/MarksWindow.hpp"
#include "notebook/gtk/MarkEditor.hpp"
#include "notebook/gtk/MarksPaneGtk.hpp"
#include "panels/gtk/SelectionBar.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The parts of a reader window for marks: the list in its pane, the editor of a mark, and the signs above its page.
// Main thread only.
class WindowMarks {
public:
    // Widgets of the layout. They must outlive this object.
    struct Parts {
        MarksPaneGtk::Parts pane;
        Gtk::Overlay& page;
        // Converts a rectangle of the page to pixels of that overlay.
        std::function<Rect(const Rect& box)> placeOf;
    };
    WindowMarks(Parts parts, ActionQueue& queue);

    void setActions(MarkActions actions) { _actions = std::move(actions); }
    // Runs an action from the main loop if it is set.
    template <typename... Arguments, typename... Given>
    void send(std::function<void(Arguments...)> MarkActions::*action, Given... given)
    {
        _queue.post([this, action, given...] {
            if (const auto run = _actions.*action)
                run(given...);
        });
    }
    // Returns the actions of the selection bar: one for each colour, and one for a note.
    std::vector<SelectionBar::Action> selectionActions();
    // Opens the editor; in the middle of the page if `place` is nullopt.
    void showMark(const EditedMark& mark, const std::optional<Rect>& place);
    // Shows the list and moves the keyboard focus to it.
    void showList();
    void copyText(const std::string& text);

    MarksPaneGtk& pane() { return _pane; }
    MarkEditor& editor() { return _editor; }
    MarkSigns& signs() { return _signs; }

private:
    Parts _parts;
    ActionQueue& _queue;
    MarkActions _actions;
    MarksPaneGtk _pane;
    MarkEditor _editor;
    MarkSigns _signs;
};

}
