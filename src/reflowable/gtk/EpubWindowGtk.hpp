#pragma once

#include "controls/gtk/PopUpControl.hpp"
#include "controls/gtk/SegmentedSwitch.hpp"
#include "notebook/gtk/WindowMarks.hpp"
#include "panels/gtk/NotePopover.hpp"
#include "panels/gtk/PopoverPanel.hpp"
#include "panels/gtk/SearchFieldControl.hpp"
#include "panels/gtk/SearchPaneGtk.hpp"
#include "panels/gtk/SelectionBar.hpp"
#include "reader/gtk/MissingFontNote.hpp"
#include "reader/gtk/ReaderWindowGtk.hpp"

#include <memory>

namespace pagora {

// The window of the layout "EpubWindow": a reader window with display options and a search field. Main thread.
class EpubWindowGtk : public ReaderWindowRole<EpubWindow> {
public:
    // The name of its layout.
    static constexpr const char* layoutName = "EpubWindow";
    EpubWindowGtk(Toplevel& toplevel, ReaderPage page, ReaderLayout layout = ReaderLayout(layoutName));
    ~EpubWindowGtk() override;

    Slider& fontSizeSlider() override { return _fontSizeSlider; }
    SegmentedControl& colorControl() override { return _colorControl; }
    PopUpButton& fontMenu() override { return _fontMenu; }
    TextField& searchField() override { return _searchField; }
    SearchPane& searchPane() override { return _searchPane; }
    void setMarkActions(MarkActions actions) override { _marks.setActions(std::move(actions)); }
    MarksPaneGtk& marksPane() override { return _marks.pane(); }
    void copyText(const std::string& text) override { _marks.copyText(text); }
    void setBookmarked(bool isBookmarked) override { _marks.signs().setBookmarked(isBookmarked); }
    void showMark(const EditedMark& mark, const std::optional<Rect>& place) override { _marks.showMark(mark, place); }
    void offerUndo(const std::string& text) override { _marks.signs().offerUndo(text); }
    void showNotice(const std::string& text) override { _marks.signs().showNotice(text); }
    MarkEditor& markEditor() { return _marks.editor(); }
    MarkSigns& markSigns() { return _marks.signs(); }
    void showNote(const std::string& text, const PointedLink& reference) override;
    void pointerLeftReference() override { _note.pointerLeft(); }
    void setBookLanguage(const std::string& language) override;
    void showSelection(const PageSelection& selection) override;
    void hideSelection() override { _selectionBar.hide(); }
    void searchFor(const std::string& text) override;
    void copy(const std::string& text) override;
    void setPageOfChapter(std::int64_t page, std::int64_t count) override
    {
        _parts.surroundings.setPageOfChapter(page, count);
    }
    void setColumnCount(std::int32_t columns) override;
    Panel& displayOptions() override { return _displayOptions; }
    std::vector<std::string> availableFontFamilies() const override;

private:
    bool perform(ReaderCommand command);
    void showMarks();
    void moveTextSize(ReaderCommand command);
    // The actions that a selection's bar offers, in order.
    std::vector<SelectionBar::Action> selectionActions();
    // A box of the page, in pixels of the widget that holds the page.
    Rect placeOf(const Rect& box);
    bool endSelection();
    void showSearchField();
    void connectSearch();
    void search();
    bool endSearch();

    SliderControl _fontSizeSlider;
    SegmentedSwitch _colorControl;
    PopUpControl _fontMenu;
    SearchFieldControl _searchField;
    SearchPaneGtk _searchPane;
    PopoverPanel _displayOptions;
    NotePopover _note;
    std::unique_ptr<MissingFontNote> _missingFontNote;
    WindowMarks _marks;
    SelectionBar _selectionBar;
    std::vector<sigc::connection> _connections;
};

}
