#pragma once

#include "notebook/gtk/WindowMarks.hpp"
#include "reader/gtk/ReaderWindowGtk.hpp"

#include <vector>

namespace pagora {

// The window of the layout "FixedLayout": a reader window whose pages come with their layout. Main thread.
class FixedWindowGtk : public ReaderWindowRole<FixedWindow> {
public:
    FixedWindowGtk(Toplevel& toplevel, ReaderPage page);
    ~FixedWindowGtk() override;

    void setPageIsMissing(bool isMissing) override;
    void showSelection(const PageSelection& selection) override;
    void hideSelection() override { _selectionBar.hide(); }
    void setMarkActions(MarkActions actions) override { _marks.setActions(std::move(actions)); }
    MarksPaneGtk& marksPane() override { return _marks.pane(); }
    void copyText(const std::string& text) override { _marks.copyText(text); }
    void setBookmarked(bool isBookmarked) override { _marks.signs().setBookmarked(isBookmarked); }
    void showMark(const EditedMark& mark, const std::optional<Rect>& place) override { _marks.showMark(mark, place); }
    void offerUndo(const std::string& text) override { _marks.signs().offerUndo(text); }
    void showNotice(const std::string& text) override { _marks.signs().showNotice(text); }
    MarkEditor& markEditor() { return _marks.editor(); }
    MarkSigns& markSigns() { return _marks.signs(); }
    SelectionBar& selectionBar() { return _selectionBar; }

private:
    bool perform(ReaderCommand command);
    bool endSelection();
    void showMarks();
    std::vector<SelectionBar::Action> selectionActions();
    // A box of the page, in pixels of the widget that holds the page.
    Rect placeOf(const Rect& box);

    WindowMarks _marks;
    SelectionBar _selectionBar;
    sigc::connection _editorClosed;
};

}
