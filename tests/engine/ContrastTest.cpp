#include "tests/engine/Contrast.hpp"

#include "contents/ContentsPane.hpp"
#include "desktop/gtk/StyleSheet.hpp"
#include "desktop/gtk/Toplevel.hpp"
#include "fixed/gtk/FixedWindowGtk.hpp"
#include "library_views/LibraryViews.hpp"
#include "library_window/gtk/LibraryWindowGtk.hpp"
#include "paging/ColorThemes.hpp"
#include "paging/PageScripts.hpp"
#include "reflowable/gtk/EpubWindowGtk.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/engine/PageViewTest.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeLibraryHub.hpp"
#include "tests/support/FakeWebView.hpp"

#include <gtkmm/button.h>
#include <gtkmm/drawingarea.h>
#include <gtkmm/label.h>
#include <gtkmm/menubutton.h>
#include <gtkmm/popover.h>
#include <gtkmm/settings.h>
#include <gtkmm/togglebutton.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace pagora::test {

namespace {

constexpr double minContrast = 4.5;

struct NoChapters : ContentsDelegate {
    void changeChapter(const Url&) override { }
};

// Every text of a window has enough contrast in the light and the dark appearance, also while another window has the
// focus.
class ContrastTest : public ToolkitTest, public testing::WithParamInterface<bool>, public FakeLibraryHub {
protected:
    ContrastTest()
    {
        // All windows of the program have this style sheet.
        addStyleSheet("library.css");
        const auto settings = Gtk::Settings::get_default();
        settings->property_gtk_application_prefer_dark_theme() = GetParam();
        settings->property_gtk_enable_animations() = false;
    }
    ~ContrastTest() override { Gtk::Settings::get_default()->reset_property("gtk-application-prefer-dark-theme"); }

    void makeLibrary(int books)
    {
        _library = std::make_unique<LibraryWindowGtk>(_toplevel, _runLoop);
        LibraryWindowActions actions;
        actions.bookListMode = [this] { _views->bookListMode(); };
        _views = std::make_unique<LibraryViews>(*_library, *this, [this] { return BookArray(_books); });
        _library->setActions(std::move(actions));
        _views->showFirstView();
        _books = makeBooks(books);
        _views->refreshBookView(_books);
        _library->mainWindow().makeKeyAndOrderFront();
    }
    BooksSurface& view() { return *dynamic_cast<BooksSurface*>(_views->currentContentView()); }
    ReaderPage makePage()
    {
        return { std::make_unique<FakeWebView>(), &_area, [](std::function<void(double)>) {} };
    }

    // Waits until the current state of the window is drawn.
    static void waitForFrame(Gtk::Widget& window)
    {
        ASSERT_TRUE(waitUntil([&] { return window.get_mapped(); }));
        bool isPainted = false;
        auto* const clock = gtk_widget_get_frame_clock(window.gobj());
        const auto painted = g_signal_connect(clock, "after-paint",
            G_CALLBACK(+[](GdkFrameClock*, gpointer done) { *static_cast<bool*>(done) = true; }), &isPainted);
        window.queue_draw();
        EXPECT_TRUE(waitUntil([&] { return isPainted; }));
        g_signal_handler_disconnect(clock, painted);
    }

    // Expects enough contrast of the texts in the bars of a reader, in a theme or on the background of a book's own
    // page.
    void expectReadableBars(int theme, const std::optional<Color>& ground)
    {
        auto page = makePage();
        page.setBackground = [](const Color&) {};
        EpubWindowGtk reader(_toplevel, std::move(page));
        reader.window().setFrame({ 0, 0, 1000, 700 });
        reader.setBook("A title", "Its author");
        reader.setPageOfChapter(3, 12);
        reader.parts().locLabel.setStringValue("14 %");
        reader.bgView().setFillColor(backgroundColorForTheme(theme));
        if (ground)
            reader.parts().surroundings.barColors().setGround(ground);
        reader.window().makeKeyAndOrderFront();
        expectReadable(reader.parts().window.window(), { "Library", "A title", "Its author", "page 3 of 12", "14 %" });
    }

    // Expects that the window shows at least these texts, and that all its texts have enough contrast.
    void expectReadable(Gtk::Widget& window, const std::vector<std::string>& expected)
    {
        for (const bool isBehind : { false, true }) {
            gtk_widget_unset_state_flags(window.gobj(), GTK_STATE_FLAG_BACKDROP);
            if (isBehind)
                gtk_widget_set_state_flags(window.gobj(), GTK_STATE_FLAG_BACKDROP, FALSE);
            std::vector<SeenText> texts;
            const auto shows = [&](const std::string& text) {
                return std::any_of(texts.begin(), texts.end(), [&](const auto& seen) { return seen.text == text; });
            };
            // The theme changes colours over several frames.
            EXPECT_TRUE(waitUntil([&] {
                waitForFrame(window);
                const auto before = std::exchange(texts, seenTexts(window));
                return std::all_of(expected.begin(), expected.end(), shows) && texts == before;
            })) << expected.front();
            const SeenText* lowest = nullptr;
            for (const auto& seen : texts) {
                EXPECT_GE(seen.contrast, minContrast) << "“" << seen.text << "”" << (isBehind ? " behind" : "");
                if (!lowest || seen.contrast < lowest->contrast)
                    lowest = &seen;
            }
            if (lowest && !isBehind)
                RecordProperty("lowest", std::to_string(lowest->contrast) + " “" + lowest->text + "”");
        }
    }

    std::shared_ptr<std::vector<BookInfoPtr>> _books = makeBooks(0);
    GLibRunLoop _runLoop;
    Toplevel _toplevel;
    std::unique_ptr<LibraryWindowGtk> _library;
    std::unique_ptr<LibraryViews> _views;
    Gtk::DrawingArea _area;
};

INSTANTIATE_TEST_SUITE_P(, ContrastTest, testing::Bool(),
    [](const testing::TestParamInfo<bool>& look) { return std::string(look.param ? "Dark" : "Light"); });

}

TEST_P(ContrastTest, OfTheCovers)
{
    makeLibrary(3);
    view().selection().select_item(1, true);
    expectReadable(_library->window(), { "Title 0", "Author 0", "Title 1", "Author 1", "Import", "Read" });
}

TEST_P(ContrastTest, OfTheList)
{
    makeLibrary(3);
    _library->outlet<Gtk::ToggleButton>("listButton")->set_active(true);
    view().selection().select_item(1, true);
    expectReadable(_library->window(), { "Title 0", "Author 0", "isbn-0", "Title 1", "Author 1", "isbn-1" });
}

TEST_P(ContrastTest, OfTheEmptyLibrary)
{
    makeLibrary(0);
    expectReadable(_library->window(), { "Your library is empty" });
}

TEST_P(ContrastTest, OfTheProgressOfAnImport)
{
    makeLibrary(1);
    _library->progressBar().setHidden(false);
    _library->procText().setHidden(false);
    _library->procText().setStringValue("3 of 10");
    _library->stopButton().setHidden(false);
    expectReadable(_library->window(), { "3 of 10" });
}

TEST_P(ContrastTest, OfTheProgressWindow)
{
    makeLibrary(0);
    _library->processLabel().setStringValue("A book");
    _library->indicatorWindow().makeKeyAndOrderFront();
    expectReadable(*_library->outlet<Gtk::Widget>("processLabel")->get_ancestor(GTK_TYPE_WINDOW), { "A book" });
}

TEST_P(ContrastTest, OfTheErrorWindow)
{
    makeLibrary(0);
    _library->errorList().setStringValue("Broken.epub");
    _library->errorWin().makeKeyAndOrderFront();
    expectReadable(*_library->outlet<Gtk::Widget>("errorList")->get_ancestor(GTK_TYPE_WINDOW), { "Broken.epub" });
}

TEST_P(ContrastTest, OfTheSettings)
{
    makeLibrary(0);
    _library->settingsWin().makeKeyAndOrderFront();
    expectReadable(*_library->outlet<Gtk::Widget>("saveButton")->get_ancestor(GTK_TYPE_WINDOW), { "Save", "Cancel" });
}

TEST_P(ContrastTest, OfAnAlert)
{
    makeLibrary(1);
    _library->runAlert("A question?", "Cancel", "Remove", [](int) {});
    expectReadable(_library->dialogs().alert()->window(), { "A question?", "Cancel", "Remove" });
}

TEST_P(ContrastTest, OfTheMainMenu)
{
    makeLibrary(0);
    auto& menu = *_library->outlet<Gtk::MenuButton>("menuButton")->get_popover();
    // The menu would close when another window gets the focus.
    menu.set_autohide(false);
    ASSERT_TRUE(waitUntil([&] { return _library->window().get_mapped(); }));
    menu.popup();
    expectReadable(menu, { "Settings", "Ctrl+,", "About Pagora" });
    menu.popdown();
    settle();
}

TEST_P(ContrastTest, OfALink)
{
    Gtk::Window window;
    Gtk::Label label;
    label.set_markup("<a href='https://pagora.invalid'>A link</a>");
    label.set_can_focus(false);
    window.set_child(label);
    window.present();
    expectReadable(window, { "A link" });
}

TEST_P(ContrastTest, OfTheRingAroundWhatHasTheKeyboard)
{
    constexpr double minContrastOfShapes = 3;
    Gtk::Window window;
    Gtk::Button button;
    button.set_size_request(120, 48);
    button.set_margin(24);
    window.set_child(button);
    window.present();
    waitForFrame(window);
    window.set_focus(button);
    window.set_focus_visible(false);
    EXPECT_TRUE(waitUntil([&] {
        waitForFrame(window);
        return contrastWithin(window, button) < minContrastOfShapes;
    }));
    EXPECT_TRUE(waitUntil([&] {
        // The toolkit hides the focus ring after a few seconds.
        window.set_focus_visible(true);
        waitForFrame(window);
        return contrastWithin(window, button) >= minContrastOfShapes;
    })) << contrastWithin(window, button);
}

TEST_P(ContrastTest, OfTheReader)
{
    EpubWindowGtk reader(_toplevel, makePage());
    auto& parts = reader.parts();
    NoChapters chapters;
    ContentsPane pane(parts.tocView, chapters);
    reader.window().setFrame({ 0, 0, 1000, 700 });
    parts.locLabel.setStringValue("Page 3 of 14");
    reader.window().makeKeyAndOrderFront();
    pane.loadTOC({ { "One", Url::file("/b/1"), 1 }, { "Two", Url::file("/b/2"), 2 } });
    expectReadable(parts.window.window(), { "Library", "Search", "an entry of the contents", "Page 3 of 14" });
}

TEST_P(ContrastTest, OfTheReadersBarsOnEachPaper)
{
    for (const int theme : { 1, 2, 3 }) {
        expectReadableBars(theme, std::nullopt);
    }
}

TEST_P(ContrastTest, OfTheReadersBarsOnABooksOwnPaper)
{
    // The last two are nearly too dark and too light for the text on them.
    const Color grounds[]
        = { { 1, 0.97, 0.88, 1 }, { 0.1, 0.1, 0.25, 1 }, Color::white(0.5), Color::white(0.77), Color::white(0.22) };
    for (const auto& ground : grounds) {
        expectReadableBars(1, ground);
    }
}

TEST_P(ContrastTest, OfANoteAndOfTheBarBesideSelectedTextOnEachPaper)
{
    const Rect place { 300, 300, 100, 20 };
    for (const int theme : { 1, 2, 3 }) {
        auto page = makePage();
        page.setBackground = [](const Color&) {};
        EpubWindowGtk reader(_toplevel, std::move(page));
        reader.window().setFrame({ 0, 0, 1000, 700 });
        reader.bgView().setFillColor(backgroundColorForTheme(theme));
        reader.window().makeKeyAndOrderFront();
        auto& window = reader.parts().window.window();
        ASSERT_TRUE(waitUntil([&] { return window.get_mapped(); }));
        reader.showSelection({ PageSelection::Cause::Pointer, "words", { place }, place, place });
        expectReadable(window, { "Copy", "Find in Book", "Look Up" });
        reader.showNote("The text of a note.", { Url::file("/a.xhtml"), place, PointedLink::Input::Pointer });
        auto* child = reader.parts().widget<Gtk::Widget>("pagePlace").get_first_child();
        while (child && !child->has_css_class("note"))
            child = child->get_next_sibling();
        ASSERT_TRUE(child);
        expectReadable(*child, { "The text of a note.", "Go there" });
    }
}

TEST_P(ContrastTest, OfABookWithNothingToShow)
{
    for (const int theme : { 1, 2, 3 }) {
        auto page = makePage();
        page.setBackground = [](const Color&) {};
        EpubWindowGtk reader(_toplevel, std::move(page));
        reader.bgView().setFillColor(backgroundColorForTheme(theme));
        reader.setNothingToShow(true);
        reader.window().makeKeyAndOrderFront();
        expectReadable(reader.parts().window.window(), { "This book has no pages that can be shown." });
    }
}

TEST_P(ContrastTest, OfTheDisplayOptions)
{
    EpubWindowGtk reader(_toplevel, makePage());
    auto& panel = *reader.parts().widget<Gtk::Widget>("whiteTheme").get_ancestor(GTK_TYPE_POPOVER);
    // The popover would close when another window gets the focus.
    dynamic_cast<Gtk::Popover&>(panel).set_autohide(false);
    reader.window().makeKeyAndOrderFront();
    reader.displayOptions().makeKeyAndOrderFront();
    expectReadable(panel, { "Aa", "Night", "Sepia", "Two columns" });
    reader.displayOptions().orderOut();
    settle();
}

TEST_P(ContrastTest, OfTheFixedReader)
{
    FixedWindowGtk reader(_toplevel, makePage());
    reader.parts().locLabel.setStringValue("Page 3 of 14");
    reader.window().makeKeyAndOrderFront();
    expectReadable(reader.parts().window.window(), { "Library", "Page 3 of 14" });
}

// The page in the reader's three colour themes.
class PageContrastTest : public PageViewTest { };

TEST_F(PageContrastTest, OfTheThreeThemes)
{
    for (const int theme : { 1, 2, 3 }) {
        loadDocument("<p style='font-size:48px'>Text <a href='#x'>that</a> is read</p>");
        if (theme > 1)
            evaluate(scripts::colors(cssColorForTheme(theme), cssBackgroundColorForTheme(theme)));
        settle();
        Cairo::RefPtr<Cairo::ImageSurface> picture;
        webkit_web_view_get_snapshot(
            _view->engineView(), WEBKIT_SNAPSHOT_REGION_VISIBLE, WEBKIT_SNAPSHOT_OPTIONS_NONE, nullptr,
            [](GObject* view, GAsyncResult* result, gpointer data) {
                g_autoptr(GdkTexture) texture
                    = webkit_web_view_get_snapshot_finish(reinterpret_cast<WebKitWebView*>(view), result, nullptr);
                if (!texture)
                    return;
                const auto taken = Cairo::ImageSurface::create(
                    Cairo::Surface::Format::ARGB32, gdk_texture_get_width(texture), gdk_texture_get_height(texture));
                gdk_texture_download(texture, taken->get_data(), static_cast<gsize>(taken->get_stride()));
                taken->mark_dirty();
                *static_cast<Cairo::RefPtr<Cairo::ImageSurface>*>(data) = taken;
            },
            &picture);
        ASSERT_TRUE(waitUntil([&] { return bool(picture); }));
        const auto contrast = contrastWithin(picture, 0, 0, picture->get_width(), picture->get_height());
        EXPECT_GE(contrast, minContrast) << theme;
        RecordProperty("theme" + std::to_string(theme), std::to_string(contrast));
    }
}

}
