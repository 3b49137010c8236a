#include "desktop/gtk/Toplevel.hpp"
#include "files/Files.hpp"
#include "library_views/LibraryViews.hpp"
#include "library_window/gtk/LibraryWindowGtk.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeLibraryHub.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtkmm/checkbutton.h>
#include <gtkmm/entry.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/revealer.h>
#include <gtkmm/settings.h>
#include <gtkmm/textview.h>

#include <filesystem>
#include <optional>

namespace pagora::test {

namespace {

// The toolkit's own dialog, which is shown where there is no portal; null while none is.
GtkFileChooser* shownFileChooser()
{
    GListModel* const windows = gtk_window_get_toplevels();
    for (guint i = 0; i < g_list_model_get_n_items(windows); ++i) {
        g_autoptr(GtkWidget) each = GTK_WIDGET(g_list_model_get_item(windows, i));
        if (GTK_IS_FILE_CHOOSER(each) && gtk_widget_get_mapped(each))
            return GTK_FILE_CHOOSER(each);
    }
    return nullptr;
}

std::string folderOf(GtkFileChooser* panel)
{
    g_autoptr(GFile) folder = gtk_file_chooser_get_current_folder(panel);
    g_autofree char* path = folder ? g_file_get_path(folder) : nullptr;
    return path ? path : "";
}

// Whether the panel's filter lets a file of that name through.
bool isOffered(GtkFileChooser* panel, const char* name)
{
    g_autoptr(GFileInfo) info = g_file_info_new();
    g_file_info_set_name(info, name);
    g_file_info_set_display_name(info, name);
    g_file_info_set_file_type(info, G_FILE_TYPE_REGULAR);
    return gtk_filter_match(GTK_FILTER(gtk_file_chooser_get_filter(panel)), info);
}

class LibraryWindowGtkTest : public ToolkitTest, public FakeLibraryHub {
protected:
    LibraryWindowGtkTest()
    {
        _views = std::make_unique<LibraryViews>(_window, *this, [this] { return BookArray(_bookList); });
        const auto hear = [this](const char* name) { return [this, name] { _heard.emplace_back(name); }; };
        LibraryWindowActions actions;
        actions.windowShouldClose = [this] {
            _heard.emplace_back("windowShouldClose");
            return false;
        };
        actions.readBook = hear("readBook");
        actions.bookListMode = [this] { _views->bookListMode(); };
        actions.importDialog = hear("importDialog");
        actions.cancelProcess = hear("cancelProcess");
        actions.openSettings = hear("openSettings");
        actions.saveSettings = hear("saveSettings");
        _window.setActions(std::move(actions));
        _views->showFirstView();
        _window.mainWindow().orderFront();
    }
    void sendDoubleClick() override { _heard.emplace_back("sendDoubleClick"); }

    bool isShown(const char* name) { return _window.outlet<Gtk::Widget>(name)->get_visible(); }
    void click(const char* name) { g_signal_emit_by_name(_window.outlet<Gtk::Button>(name)->gobj(), "clicked"); }

    // Whether the window's monitor swallows the key.
    bool press(guint key, Gdk::ModifierType state)
    {
        gboolean swallowed = FALSE;
        const auto controllers = _window.window().observe_controllers();
        for (guint i = 0; i < controllers->get_n_items() && !swallowed; ++i) {
            const auto keys = std::dynamic_pointer_cast<Gtk::EventControllerKey>(controllers->get_object(i));
            if (keys && keys->get_propagation_phase() == Gtk::PropagationPhase::CAPTURE)
                g_signal_emit_by_name(keys->gobj(), "key-pressed", key, 0U, static_cast<guint>(state), &swallowed);
        }
        return swallowed;
    }

    GLibRunLoop _runLoop;
    Toplevel _toplevel;
    LibraryWindowGtk _window { _toplevel, _runLoop };
    std::shared_ptr<std::vector<BookInfoPtr>> _bookList = makeBooks(3);
    std::unique_ptr<LibraryViews> _views;
    // What the window and its views asked for.
    std::vector<std::string> _heard;
};

}

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

TEST_F(LibraryWindowGtkTest, SaveButtonOfTheSettingsSaves)
{
    click("saveButton");
    EXPECT_EQ(_heard, (std::vector<std::string> { "saveSettings" }));
}

TEST_F(LibraryWindowGtkTest, SecondChoiceOfTheSettingsHasTheTagOfMove)
{
    _window.outlet<Gtk::CheckButton>("moveChoice")->set_active(true);
    EXPECT_EQ(_window.dragDropMatrix().tag(_window.dragDropMatrix().selectedSegment()), 2);
}

TEST_F(LibraryWindowGtkTest, StopButtonCancels)
{
    click("stopButton");
    EXPECT_EQ(_heard, (std::vector<std::string> { "cancelProcess" }));
}

TEST_F(LibraryWindowGtkTest, OpenPanelStartsInTheCurrentFolderAndTakesBooks)
{
    const auto before = std::filesystem::current_path();
    const TemporaryFolder folder;
    ASSERT_TRUE(writeFile(folder.path("Sea.EPUB"), "a book"));
    std::filesystem::current_path(folder.path());
    for (int round = 0; round < 2; ++round) {
        std::optional<std::vector<std::string>> chosen;
        _window.runOpenPanel("Choose", true, [&](std::optional<std::vector<std::string>> paths) { chosen = paths; });
        ASSERT_TRUE(waitUntil([] { return shownFileChooser() != nullptr; }));
        auto* const panel = shownFileChooser();
        EXPECT_TRUE(waitUntil([&] { return folderOf(panel) == folder.path(); })) << folderOf(panel);
        EXPECT_TRUE(gtk_file_chooser_get_select_multiple(panel));
        EXPECT_TRUE(isOffered(panel, "Sea.epub"));
        EXPECT_TRUE(isOffered(panel, "Sea.EPUB"));
        EXPECT_FALSE(isOffered(panel, "Sea.epub.zip"));
        g_autoptr(GFile) file = g_file_new_for_path(folder.path("Sea.EPUB").c_str());
        gtk_file_chooser_set_file(panel, file, nullptr);
        // It is chosen once the folder has been read.
        ASSERT_TRUE(waitUntil([&] {
            g_autoptr(GListModel) files = gtk_file_chooser_get_files(panel);
            return g_list_model_get_n_items(files) == 1;
        }));
        gtk_dialog_response(GTK_DIALOG(panel), GTK_RESPONSE_ACCEPT);
        ASSERT_TRUE(waitUntil([&] { return chosen.has_value(); }));
        EXPECT_EQ(*chosen, std::vector<std::string> { folder.path("Sea.EPUB") });
        ASSERT_TRUE(waitUntil([] { return shownFileChooser() == nullptr; }));
    }
    std::filesystem::current_path(before);
}

TEST_F(LibraryWindowGtkTest, StopButtonOfTheProgressWindowCancels)
{
    click("indicatorStopButton");
    EXPECT_EQ(_heard, (std::vector<std::string> { "cancelProcess" }));
}

TEST_F(LibraryWindowGtkTest, ProgressWindowSurvivesARequestToCloseIt)
{
    _window.indicatorWindow().orderFront();
    auto& window = *_window.outlet<Gtk::Window>("indicatorWindow");
    ASSERT_TRUE(waitUntil([&] { return window.get_mapped(); }));
    window.close();
    settle();
    EXPECT_TRUE(window.get_visible());
    _window.indicatorWindow().orderOut();
    EXPECT_TRUE(waitUntil([&] { return !window.get_visible(); }));
}

TEST_F(LibraryWindowGtkTest, AlertAnswersWithTheCodeOfItsButton)
{
    std::vector<int> codes;
    const auto ask = [&] { _window.runAlert("Sure?", "Cancel", "Remove", [&](int code) { codes.push_back(code); }); };
    ask();
    EXPECT_EQ(_window.dialogs().alert()->button(0).get_label(), "Cancel");
    g_signal_emit_by_name(_window.dialogs().alert()->button(0).gobj(), "clicked");
    ask();
    EXPECT_EQ(_window.dialogs().alert()->button(1).get_label(), "Remove");
    g_signal_emit_by_name(_window.dialogs().alert()->button(1).gobj(), "clicked");
    EXPECT_EQ(codes, (std::vector<int> { 1000, 1001 }));
}

TEST_F(LibraryWindowGtkTest, AlertThatIsPutAwayCountsAsItsFirstButton)
{
    std::vector<int> codes;
    _window.runAlert("Sure?", "Cancel", "Remove", [&](int code) { codes.push_back(code); });
    _window.dialogs().alert()->window().close();
    EXPECT_TRUE(waitUntil([&] { return !codes.empty(); }));
    EXPECT_EQ(codes, (std::vector<int> { 1000 }));
    EXPECT_FALSE(_window.dialogs().alert()->window().get_visible());
}

TEST_F(LibraryWindowGtkTest, AlertMayFollowTheAnswerToAnother)
{
    _window.runAlert("Sure?", "Cancel", "Remove", [&](int) { _window.runAlertPanel("Gone", "All of it.", "OK"); });
    g_signal_emit_by_name(_window.dialogs().alert()->button(1).gobj(), "clicked");
    EXPECT_EQ(_window.dialogs().alert()->button(0).get_label(), "OK");
    EXPECT_TRUE(_window.dialogs().alert()->window().get_visible());
}

TEST_F(LibraryWindowGtkTest, LinesOfTheErrorWindowCanBeSelectedButNotChanged)
{
    _window.errorList().setStringValue("One.epub --> not an ePub\nTwo.epub --> locked");
    auto* const lines = _window.outlet<Gtk::TextView>("errorList");
    ASSERT_TRUE(waitUntil([&] { return lines->get_buffer()->get_line_count() == 2; }));
    EXPECT_FALSE(lines->get_editable());
    EXPECT_TRUE(lines->get_focusable());
    g_signal_emit_by_name(lines->gobj(), "select-all", TRUE);
    Gtk::TextBuffer::iterator from;
    Gtk::TextBuffer::iterator to;
    EXPECT_TRUE(lines->get_buffer()->get_selection_bounds(from, to));
    EXPECT_EQ(from.get_text(to), "One.epub --> not an ePub\nTwo.epub --> locked");
}

TEST_F(LibraryWindowGtkTest, ErrorWindowDoesNotBlockTheLibrary)
{
    auto* const errors = _window.outlet<Gtk::Window>("errorWin");
    EXPECT_FALSE(errors->get_modal());
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

TEST_F(LibraryWindowGtkTest, ErrorWindowIsHiddenWhenItCloses)
{
    _window.errorWin().makeKeyAndOrderFront();
    settle();
    click("errorCloseButton");
    EXPECT_TRUE(waitUntil([&] { return !_window.errorWin().isVisible(); }));
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
