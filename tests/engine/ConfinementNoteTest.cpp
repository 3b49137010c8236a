// The notice that a book's own scripts are disabled.

#include "desktop/gtk/Toplevel.hpp"
#include "fixed/gtk/FixedWindowGtk.hpp"
#include "fixed/gtk/PreparedPagesGtk.hpp"
#include "reflowable/gtk/EpubWindowGtk.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeWebView.hpp"

#include <gtkmm/drawingarea.h>
#include <gtkmm/label.h>

namespace pagora::test {

namespace {

class ConfinementNoteTest : public ToolkitTest {
protected:
    ReaderPage makePage(bool isConfined) { return makePage(_area, isConfined); }
    static ReaderPage makePage(Gtk::Widget& area, bool isConfined)
    {
        area.set_focusable(true);
        ReaderPage page { std::make_unique<FakeWebView>(), &area, {} };
        page.isConfined = isConfined;
        return page;
    }

    // Returns the first descendant of `root` of that type that meets the condition.
    template <typename Kind>
    static Kind* find(Gtk::Widget& root, const std::function<bool(Kind&)>& condition)
    {
        for (auto* child = root.get_first_child(); child; child = child->get_next_sibling()) {
            if (auto* const wanted = dynamic_cast<Kind*>(child); wanted && condition(*wanted))
                return wanted;
            if (auto* const below = find<Kind>(*child, condition))
                return below;
        }
        return nullptr;
    }
    static Gtk::Label* line(Gtk::Window& window)
    {
        return find<Gtk::Label>(window, [](Gtk::Label& label) {
            return label.get_text() == "The book’s own scripts are off: this system does not let Pagora confine them."
                && label.get_mapped();
        });
    }
    Gtk::Window& shown(ReaderWindowGtk& parts)
    {
        auto& window = parts.window.window();
        parts.window.makeKeyAndOrderFront();
        EXPECT_TRUE(waitUntil([&] { return window.get_mapped(); }));
        return window;
    }

    Toplevel _toplevel;
    Gtk::DrawingArea _area;
    Gtk::DrawingArea _spareArea;
};

}

TEST_F(ConfinementNoteTest, IsShownWhereThePageIsNotConfined)
{
    EpubWindowGtk epub(_toplevel, makePage(false));
    EXPECT_NE(line(shown(epub.parts())), nullptr);
}

TEST_F(ConfinementNoteTest, IsShownForAFixedBookToo)
{
    FixedWindowGtk fixed(_toplevel, PreparedPagesGtk::make(makePage(false), makePage(_spareArea, false)));
    EXPECT_NE(line(shown(fixed.parts())), nullptr);
}

TEST_F(ConfinementNoteTest, IsNotShownWhereThePageIsConfined)
{
    EpubWindowGtk epub(_toplevel, makePage(true));
    EXPECT_EQ(line(shown(epub.parts())), nullptr);
}

TEST_F(ConfinementNoteTest, GoesWhenItIsClosedAndThePageHasTheKeyboard)
{
    EpubWindowGtk epub(_toplevel, makePage(false));
    auto& window = shown(epub.parts());
    auto* const label = line(window);
    ASSERT_NE(label, nullptr);
    auto* const close = find<Gtk::Button>(
        *label->get_parent(), [](Gtk::Button& button) { return button.get_icon_name() == "window-close-symbolic"; });
    ASSERT_NE(close, nullptr);
    auto& view = static_cast<FakeWebView&>(epub.webView());
    view.timesFocused = 0;
    close->activate();
    EXPECT_TRUE(waitUntil([&] { return line(window) == nullptr && view.timesFocused > 0; }));
}

TEST_F(ConfinementNoteTest, TellsWhyAndWhereThereIsMoreToRead)
{
    EpubWindowGtk epub(_toplevel, makePage(false));
    auto& window = shown(epub.parts());
    auto* const label = line(window);
    ASSERT_NE(label, nullptr);
    auto* const more = find<Gtk::MenuButton>(*label->get_parent(), [](Gtk::MenuButton&) { return true; });
    ASSERT_NE(more, nullptr);
    auto* const text = find<Gtk::Label>(*more->get_popover(), [](Gtk::Label&) { return true; });
    ASSERT_NE(text, nullptr);
    EXPECT_NE(text->get_text().raw().find("confine"), std::string::npos);
    EXPECT_NE(text->get_text().raw().find("The guide says more"), std::string::npos);
}

}
