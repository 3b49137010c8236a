#pragma once

#include "contents/gtk/SplitViewGtk.hpp"
#include "contents/gtk/TocViewGtk.hpp"
#include "controls/gtk/ColorArea.hpp"
#include "controls/gtk/LabelField.hpp"
#include "controls/gtk/SliderControl.hpp"
#include "desktop/gtk/SharedWindow.hpp"
#include "panels/gtk/GoToPanel.hpp"
#include "panels/gtk/LargePicture.hpp"
#include "reader/EpubWindow.hpp"
#include "reader/gtk/ConfinementNote.hpp"
#include "reader/gtk/EdgeBar.hpp"
#include "reader/gtk/LoadingSign.hpp"
#include "reader/gtk/NaviButton.hpp"
#include "reader/gtk/PageSurroundings.hpp"
#include "reader/gtk/ReaderHeader.hpp"
#include "reader/gtk/ReaderKeys.hpp"
#include "reader/gtk/ReaderLayout.hpp"
#include "reader/gtk/ReaderPage.hpp"

namespace pagora {

// The common parts of both reader windows: header bar, contents pane, page with its buttons, location bar, full screen
// and keys. Destroying it drops actions that have not run yet. Main thread only.
class ReaderWindowGtk {
public:
    ReaderWindowGtk(Toplevel& toplevel, ReaderLayout layout, ReaderPage page);
    ~ReaderWindowGtk();
    ReaderWindowGtk(const ReaderWindowGtk&) = delete;
    ReaderWindowGtk& operator=(const ReaderWindowGtk&) = delete;

    // Handles commands that only one kind of window has. Returns whether it handled the command.
    using ExtraCommands = std::function<bool(ReaderCommand command)>;
    void setExtraCommands(ExtraCommands commands) { _extraCommands = std::move(commands); }
    // Runs an action from the main loop, if it is still set then.
    template <typename Actions, typename... Arguments, typename... Given>
    void send(std::function<void(Arguments...)> Actions::*action, Given... given)
    {
        queue.post([this, action, given...] {
            // Copied, because the action may destroy the window.
            if (const auto run = actions.*action)
                run(given...);
        });
    }

    // Also handles the window's keys in this popover, which would otherwise keep them while it is open.
    void watchKeys(Gtk::Widget& panel);
    // Returns the keyboard focus to the page, from the main loop.
    void focusPage();

private:
    // Owns every widget below; declared first, so it is destroyed last.
    ReaderLayout _layout;

public:
    template <typename Widget>
    Widget& widget(const char* name) const;

    ActionQueue queue;
    ReaderWindowActions actions;
    ReaderPage page;
    SharedWindow window;
    ReaderHeader header;
    SplitViewGtk mainSplitView;
    TocViewGtk tocView;
    NaviButton goLeftButton;
    NaviButton goRightButton;
    ColorArea bgView;
    LoadingSign loadingSign;
    LabelField locLabel;
    SliderControl locSlider;
    EdgeBar footer;
    PageSurroundings surroundings;
    GoToPanel goToPanel;

private:
    GoToPanel::Actions goToActions();
    GoToPanel::Place place();
    void connectHeader();
    void connectWindow();
    Glib::RefPtr<Gtk::EventController> makeKeys();
    Glib::RefPtr<Gtk::EventController> makeMouseButtons();
    bool perform(ReaderCommand command);
    ReaderFocus focusKind();
    std::string bookTitle() const;
    // Returns the chapter's label in the contents or its own title; empty if that is the book's title.
    std::string chapterName() const;
    std::string nameOfPage() const;
    void fullScreenDidChange(bool isFullScreen);

    void addConfinementNote();
    void showPressedPictures();

    ExtraCommands _extraCommands;
    // Title of the document that is shown.
    std::string _documentTitle;
    // True if a key has revealed the bars in full screen.
    bool _barsAreCalled = false;
    // Exists if the page is not confined.
    std::unique_ptr<ConfinementNote> _confinementNote;
    // Exists if the page reports pictures that are pressed.
    std::unique_ptr<LargePicture> _largePicture;
    std::vector<sigc::connection> _connections;
};

template <typename Widget>
Widget& ReaderWindowGtk::widget(const char* name) const
{
    return _layout.widget<Widget>(name);
}

// Implements the common part of a reader window interface.
template <typename Role>
class ReaderWindowRole : public Role {
public:
    Window& window() override { return _parts.window; }
    void setActions(ReaderWindowActions actions) override { _parts.actions = std::move(actions); }
    SplitView& mainSplitView() override { return _parts.mainSplitView; }
    TocView& tocView() override { return _parts.tocView; }
    Button& goLeftButton() override { return _parts.goLeftButton; }
    Button& goRightButton() override { return _parts.goRightButton; }
    ColorView& bgView() override { return _parts.bgView; }
    WebView& webView() override { return *_parts.page.webView; }
    void setLoading(bool isLoading) override { _parts.loadingSign.setLoading(isLoading); }
    void setBook(const std::string& title, const std::string& author) override { _parts.header.setBook(title, author); }
    void setNothingToShow(bool isNothing) override
    {
        _parts.surroundings.setNothingToShow(isNothing, [this] { _parts.send(&ReaderWindowActions::closeEPUB); });
    }
    void setPrintedPages(const std::vector<std::string>& labels) override { _parts.goToPanel.setPrintedPages(labels); }
    void setHistory(bool canGoBack, bool canGoForward) override { _parts.header.setHistory(canGoBack, canGoForward); }
    TextField& locLabel() override { return _parts.locLabel; }
    Slider& locSlider() override { return _parts.locSlider; }

    ReaderWindowGtk& parts() { return _parts; }

protected:
    ReaderWindowRole(Toplevel& toplevel, ReaderLayout layout, ReaderPage page)
        : _parts(toplevel, std::move(layout), std::move(page))
    {
    }

    ReaderWindowGtk _parts;
};

}
