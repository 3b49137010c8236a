#include "tests/engine/LibraryWindowTest.hpp"

#include <gtkmm/entry.h>
#include <gtkmm/revealer.h>
#include <gtkmm/settings.h>

namespace pagora::test {

TEST_F(LibraryWindowGtkTest, NothingMovesWhereThePersonAskedForNone)
{
    const auto settings = Gtk::Settings::get_default();
    const auto& strip = *_window.outlet<Gtk::Revealer>("progressStrip");
    _window.mainWindow().makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&] { return strip.get_mapped(); }));
    for (const bool moves : { true, false }) {
        settings->property_gtk_enable_animations() = moves;
        _window.progressBar().setHidden(false);
        EXPECT_EQ(strip.get_child_revealed(), !moves);
        _window.progressBar().setHidden(true);
        EXPECT_TRUE(waitUntil([&] { return !strip.get_child_revealed(); }));
    }
    settings->reset_property("gtk-enable-animations");
}

TEST_F(LibraryWindowGtkTest, EmptyLibraryShowsTheEmptyPage)
{
    _views->refreshBookView(makeBooks(0));
    EXPECT_TRUE(isShown("emptyPage"));
}

TEST_F(LibraryWindowGtkTest, LibraryWithBooksShowsNoEmptyPage)
{
    _views->refreshBookView(makeBooks(0));
    _views->refreshBookView(_bookList);
    EXPECT_FALSE(isShown("emptyPage"));
}

TEST_F(LibraryWindowGtkTest, EmptyPageWaitsForARunningImport)
{
    _window.progressBar().setHidden(false);
    _views->refreshBookView(makeBooks(0));
    EXPECT_FALSE(isShown("emptyPage"));
    _window.progressBar().setHidden(true);
    EXPECT_TRUE(isShown("emptyPage"));
}

TEST_F(LibraryWindowGtkTest, ProgressStripIsThereWhileItHasSomethingToShow)
{
    auto* const strip = _window.outlet<Gtk::Revealer>("progressStrip");
    EXPECT_FALSE(strip->get_reveal_child());
    _window.stopButton().setHidden(false);
    EXPECT_TRUE(strip->get_reveal_child());
    _window.stopButton().setHidden(true);
    EXPECT_FALSE(strip->get_reveal_child());
}

TEST_F(LibraryWindowGtkTest, SwitchShowsTheOtherView)
{
    _window.outlet<Gtk::ToggleButton>("listButton")->set_active(true);
    EXPECT_TRUE(_views->tableController());
    EXPECT_EQ(_window.bListControl().selectedSegment(), 1);
    _window.outlet<Gtk::ToggleButton>("gridButton")->set_active(true);
    EXPECT_TRUE(_views->imageController());
    EXPECT_FALSE(_views->tableController());
}

TEST_F(LibraryWindowGtkTest, ReadButtonIsEnabledForOneSelectedBook)
{
    _views->refreshBookView(_bookList);
    EXPECT_FALSE(_window.readerButton().isEnabled());
    auto& selection = dynamic_cast<BooksSurface*>(_views->currentContentView())->selection();
    selection.select_item(1, true);
    EXPECT_TRUE(_window.readerButton().isEnabled());
    selection.select_item(2, false);
    EXPECT_FALSE(_window.readerButton().isEnabled());
}

TEST_F(LibraryWindowGtkTest, ToolbarMenuHasTheClassicItems)
{
    EXPECT_EQ(_window.toolBarMenu()->numberOfItems(), 5);
    auto* const menu = dynamic_cast<ToolBarMenu*>(_window.toolBarMenu());
    EXPECT_EQ(menu->visibleTitles(),
        (std::vector<std::string> {
            "Icon and Text", "Icon Only", "Text Only", "Use Small Size", "Customize Toolbar…" }));
}

TEST_F(LibraryWindowGtkTest, TrimmedToolbarMenuKeepsASeparatorBeforeTheSize)
{
    auto* const menu = dynamic_cast<ToolBarMenu*>(_window.toolBarMenu());
    menu->setItemHidden(2, true);
    menu->setItemHidden(4, true);
    menu->insertSeparator(2);
    EXPECT_EQ(
        menu->visibleTitles(), (std::vector<std::string> { "Icon and Text", "Icon Only", "-", "Use Small Size" }));
}

TEST_F(LibraryWindowGtkTest, IconOnlyHidesTheTextOfTheToolbarButtons)
{
    auto* const toolBar = _window.outlet<Gtk::Widget>("toolBar");
    auto* const text = _window.outlet<Gtk::Widget>("importButton")->get_first_child()->get_last_child();
    toolBar->activate_action("toolbar.display-mode", Glib::Variant<Glib::ustring>::create("icon-only"));
    EXPECT_FALSE(text->get_visible());
    toolBar->activate_action("toolbar.display-mode", Glib::Variant<Glib::ustring>::create("icon-and-text"));
    EXPECT_TRUE(text->get_visible());
}

TEST_F(LibraryWindowGtkTest, SmallSizeMakesTheToolbarCompactAndBack)
{
    auto* const toolBar = _window.outlet<Gtk::Widget>("toolBar");
    toolBar->activate_action("toolbar.small-size");
    EXPECT_TRUE(toolBar->has_css_class("small-size"));
    toolBar->activate_action("toolbar.small-size");
    EXPECT_FALSE(toolBar->has_css_class("small-size"));
}

TEST_F(LibraryWindowGtkTest, MonitorSeesControlAAndSwallowsIt)
{
    std::vector<LibraryEvent> events;
    _window.setEventMonitor([&](const LibraryEvent& event) {
        events.push_back(event);
        return true;
    });
    EXPECT_TRUE(press(GDK_KEY_a, Gdk::ModifierType::CONTROL_MASK));
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].keyCode, LibraryEvent::keyA);
    EXPECT_TRUE(events[0].command);
}

TEST_F(LibraryWindowGtkTest, BackSpaceAndDeleteAreTheDeleteKey)
{
    std::vector<int> codes;
    _window.setEventMonitor([&](const LibraryEvent& event) {
        codes.push_back(event.keyCode);
        return false;
    });
    for (const guint key : { GDK_KEY_BackSpace, GDK_KEY_Delete, GDK_KEY_x })
        press(key, Gdk::ModifierType());
    EXPECT_EQ(codes, (std::vector<int> { LibraryEvent::keyDelete, LibraryEvent::keyDelete, -1 }));
}

TEST_F(LibraryWindowGtkTest, FieldThatIsEditedKeepsItsControlA)
{
    int events = 0;
    _window.setEventMonitor([&](const LibraryEvent&) {
        ++events;
        return true;
    });
    Gtk::Entry entry;
    _window.outlet<Gtk::Box>("mainView")->append(entry);
    _window.mainWindow().orderFront();
    entry.grab_focus();
    EXPECT_FALSE(press(GDK_KEY_a, Gdk::ModifierType::CONTROL_MASK));
    EXPECT_EQ(events, 0);
    _window.outlet<Gtk::Box>("mainView")->remove(entry);
}

TEST_F(LibraryWindowGtkTest, ClosingAsksFirst)
{
    _window.mainWindow().orderFront();
    _window.window().close();
    settle();
    EXPECT_EQ(_heard, (std::vector<std::string> { "windowShouldClose" }));
    EXPECT_TRUE(_window.mainWindow().isVisible());
}

TEST_F(LibraryWindowGtkTest, StopButtonCancels)
{
    click("stopButton");
    EXPECT_EQ(_heard, (std::vector<std::string> { "cancelProcess" }));
}

TEST_F(LibraryWindowGtkTest, MenuActionsReachTheHub)
{
    LibraryWindowActions actions;
    std::vector<std::string> heard;
    actions.showLibFolderInFinder = [&] { heard.emplace_back("folder"); };
    actions.resetAppSettings = [&] { heard.emplace_back("reset"); };
    actions.openGuide = [&] { heard.emplace_back("help"); };
    actions.testAction = [&] { heard.emplace_back("test"); };
    _window.setActions(std::move(actions));
    for (const auto* const name : { "app.show-folder", "app.reset", "app.help", "app.test" })
        _window.window().activate_action(name);
    EXPECT_EQ(heard, (std::vector<std::string> { "folder", "reset", "help", "test" }));
}

TEST_F(LibraryWindowGtkTest, ProgramActionsReachTheHub)
{
    _window.window().activate_action("app.import");
    _window.window().activate_action("app.settings");
    EXPECT_EQ(_heard, (std::vector<std::string> { "importDialog", "openSettings" }));
}

TEST_F(LibraryWindowGtkTest, ActivatedBookIsOpened)
{
    _views->refreshBookView(_bookList);
    _window.mainWindow().orderFront();
    settle();
    auto* const grid
        = dynamic_cast<BooksSurface*>(_views->currentContentView())->widget().get_first_child()->get_first_child();
    grid->activate_action("list.activate-item", Glib::Variant<guint>::create(1));
    EXPECT_EQ(_heard, (std::vector<std::string> { "sendDoubleClick" }));
    EXPECT_EQ(_views->selection().selectedBook, _bookList->at(1));
}

}
