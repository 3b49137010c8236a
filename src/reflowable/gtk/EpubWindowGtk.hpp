#pragma once

#include "controls/gtk/PopUpControl.hpp"
#include "controls/gtk/SegmentedSwitch.hpp"
#include "panels/gtk/NotePopover.hpp"
#include "panels/gtk/PopoverPanel.hpp"
#include "panels/gtk/SearchFieldControl.hpp"
#include "panels/gtk/SearchPaneGtk.hpp"
#include "reader/gtk/MarkedPage.hpp"
#include "reader/gtk/MissingFontNote.hpp"

#include <memory>

namespace pagora {

// The window of the layout "EpubWindow": a reader window with display options and a search field. Main thread only.
class EpubWindowGtk : public MarkedWindowRole<EpubWindow> {
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
    void showNote(const std::string& text, const PointedLink& reference) override;
    void pointerLeftReference() override { _note.pointerLeft(); }
    void setBookLanguage(const std::string& language) override;
    void searchFor(const std::string& text) override;
    void setPageOfChapter(std::int64_t page, std::int64_t count) override
    {
        _parts.surroundings.setPageOfChapter(page, count);
    }
    void setColumnCount(std::int32_t columns) override;
    Panel& displayOptions() override { return _displayOptions; }
    std::vector<std::string> availableFontFamilies() const override;

private:
    bool perform(ReaderCommand command);
    void moveTextSize(ReaderCommand command);
    // Returns the actions for selected text, in the order of the bar. The window may be partly constructed.
    static std::vector<SelectionBar::Action> textActions(EpubWindowGtk& window);
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
    std::vector<sigc::connection> _connections;
};

}
