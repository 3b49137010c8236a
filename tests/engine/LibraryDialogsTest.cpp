#include "files/Files.hpp"
#include "library_window/gtk/ProgressWindow.hpp"
#include "tests/engine/LibraryWindowTest.hpp"
#include "tests/engine/ShownFileChooser.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtkmm/checkbutton.h>
#include <gtkmm/textview.h>

#include <filesystem>
#include <optional>

namespace pagora::test {

namespace {

// The dialogs over the library window.
class LibraryDialogsTest : public LibraryWindowGtkTest { };

std::string folderOf(GtkFileChooser* panel)
{
    g_autoptr(GFile) folder = gtk_file_chooser_get_current_folder(panel);
    g_autofree char* path = folder ? g_file_get_path(folder) : nullptr;
    return path ? path : "";
}

// Returns whether the panel's filter accepts a file of that name.
bool isOffered(GtkFileChooser* panel, const char* name)
{
    g_autoptr(GFileInfo) info = g_file_info_new();
    g_file_info_set_name(info, name);
    g_file_info_set_display_name(info, name);
    g_file_info_set_file_type(info, G_FILE_TYPE_REGULAR);
    return gtk_filter_match(GTK_FILTER(gtk_file_chooser_get_filter(panel)), info);
}

}

TEST_F(LibraryDialogsTest, SaveButtonOfTheSettingsSaves)
{
    click("saveButton");
    EXPECT_EQ(_heard, (std::vector<std::string> { "saveSettings" }));
}

TEST_F(LibraryDialogsTest, SecondChoiceOfTheSettingsHasTheTagOfMove)
{
    _window.outlet<Gtk::CheckButton>("moveChoice")->set_active(true);
    EXPECT_EQ(_window.dragDropMatrix().tag(_window.dragDropMatrix().selectedSegment()), 2);
}

TEST_F(LibraryDialogsTest, OpenPanelStartsInTheCurrentFolderAndTakesBooks)
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
        // The selection takes effect after the folder has been read.
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

TEST_F(LibraryDialogsTest, StopButtonOfTheProgressWindowCancels)
{
    click("indicatorStopButton");
    EXPECT_EQ(_heard, (std::vector<std::string> { "cancelProcess" }));
}

TEST_F(LibraryDialogsTest, ProgressWindowSurvivesARequestToCloseIt)
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

TEST_F(LibraryDialogsTest, ProgressWindowOfAShortImportIsNotShown)
{
    auto& window = *_window.outlet<Gtk::Window>("indicatorWindow");
    int timesShown = 0;
    window.signal_show().connect([&] { ++timesShown; });
    _window.indicatorWindow().orderFront();
    EXPECT_TRUE(_window.indicatorWindow().isVisible());
    _window.indicatorWindow().orderOut();
    EXPECT_FALSE(_window.indicatorWindow().isVisible());
    bool isOver = false;
    Glib::signal_timeout().connect_once([&] { isOver = true; }, 2 * ProgressWindow::delay);
    ASSERT_TRUE(waitUntil([&] { return isOver; }));
    EXPECT_EQ(timesShown, 0);
    // The next request opens a window.
    _window.indicatorWindow().orderFront();
    EXPECT_TRUE(waitUntil([&] { return window.get_mapped(); }));
    EXPECT_EQ(timesShown, 1);
}

TEST_F(LibraryDialogsTest, AlertAnswersWithTheCodeOfItsButton)
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

TEST_F(LibraryDialogsTest, AlertThatIsPutAwayCountsAsItsFirstButton)
{
    std::vector<int> codes;
    _window.runAlert("Sure?", "Cancel", "Remove", [&](int code) { codes.push_back(code); });
    _window.dialogs().alert()->window().close();
    EXPECT_TRUE(waitUntil([&] { return !codes.empty(); }));
    EXPECT_EQ(codes, (std::vector<int> { 1000 }));
    EXPECT_FALSE(_window.dialogs().alert()->window().get_visible());
}

TEST_F(LibraryDialogsTest, AlertMayFollowTheAnswerToAnother)
{
    _window.runAlert("Sure?", "Cancel", "Remove", [&](int) { _window.runAlertPanel("Gone", "All of it.", "OK"); });
    g_signal_emit_by_name(_window.dialogs().alert()->button(1).gobj(), "clicked");
    EXPECT_EQ(_window.dialogs().alert()->button(0).get_label(), "OK");
    EXPECT_TRUE(_window.dialogs().alert()->window().get_visible());
}

TEST_F(LibraryDialogsTest, LinesOfTheErrorWindowCanBeSelectedButNotChanged)
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

TEST_F(LibraryDialogsTest, ErrorWindowDoesNotBlockTheLibrary)
{
    auto* const errors = _window.outlet<Gtk::Window>("errorWin");
    EXPECT_FALSE(errors->get_modal());
}

TEST_F(LibraryDialogsTest, ErrorWindowIsHiddenWhenItCloses)
{
    _window.errorWin().makeKeyAndOrderFront();
    settle();
    click("errorCloseButton");
    EXPECT_TRUE(waitUntil([&] { return !_window.errorWin().isVisible(); }));
}

}
