#pragma once

#include "notebook/gtk/WindowMarks.hpp"
#include "panels/gtk/SelectionBar.hpp"
#include "reader/gtk/ReaderWindowGtk.hpp"

#include <vector>

namespace pagora {

// The bar at selected text and the marks of a reader window. Main thread only.
class MarkedPage {
public:
    // Whether the window's layout has a search.
    enum class Search : bool { No, Yes };
    // The bar has `textActions`, followed by the actions for marks. `window` must outlive this object.
    MarkedPage(ReaderWindowGtk& window, Search search, std::vector<SelectionBar::Action> textActions);
    ~MarkedPage();
    MarkedPage(const MarkedPage&) = delete;
    MarkedPage& operator=(const MarkedPage&) = delete;

    void showSelection(const PageSelection& selection);
    void copy(const std::string& text);
    // Hides the bar. Returns whether it was visible.
    bool endSelection();
    // Performs a command for the selection or for marks. Returns false for other commands.
    bool perform(ReaderCommand command);
    // Converts a rectangle of the page to pixels of the overlay above it.
    Rect placeOf(const Rect& box) const;

    WindowMarks& marks() { return _marks; }
    SelectionBar& bar() { return _bar; }

private:
    // Shows the list of marks in the contents pane.
    void showList();

    ReaderWindowGtk& _window;
    WindowMarks _marks;
    SelectionBar _bar;
    sigc::connection _editorClosed;
};

// Implements the common part of a reader window interface, with selections and marks.
template <typename Role>
class MarkedWindowRole : public ReaderWindowRole<Role> {
public:
    void setMarkActions(MarkActions actions) override { _marked.marks().setActions(std::move(actions)); }
    MarksPaneGtk& marksPane() override { return _marked.marks().pane(); }
    void copyText(const std::string& text) override { _marked.marks().copyText(text); }
    void setBookmarked(bool isBookmarked) override { markSigns().setBookmarked(isBookmarked); }
    void showMark(const EditedMark& mark, const std::optional<Rect>& place) override
    {
        _marked.marks().showMark(mark, place);
    }
    void offerUndo(const std::string& text) override { markSigns().offerUndo(text); }
    void showNotice(const std::string& text) override { markSigns().showNotice(text); }
    void showSelection(const PageSelection& selection) override { _marked.showSelection(selection); }
    void hideSelection() override { selectionBar().hide(); }
    void copy(const std::string& text) override { _marked.copy(text); }

    MarkEditor& markEditor() { return _marked.marks().editor(); }
    MarkSigns& markSigns() { return _marked.marks().signs(); }
    SelectionBar& selectionBar() { return _marked.bar(); }

protected:
    MarkedWindowRole(Toplevel& toplevel, ReaderLayout layout, ReaderPage page, MarkedPage::Search search,
        std::vector<SelectionBar::Action> textActions)
        : ReaderWindowRole<Role>(toplevel, std::move(layout), std::move(page))
        , _marked(this->_parts, search, std::move(textActions))
    {
    }

    MarkedPage _marked;
};

}
