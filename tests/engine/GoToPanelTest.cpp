#include "panels/gtk/GoToPanel.hpp"

#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/window.h>

#include <string>
#include <vector>

namespace pagora::test {

namespace {

class GoToPanelTest : public ToolkitTest {
protected:
    GoToPanelTest()
    {
        _window.set_child(_anchor);
        _window.set_default_size(400, 300);
        _window.present();
        // A popover needs a mapped window.
        waitUntil([this] { return _anchor.get_width() > 0 && _window.is_active(); }, 10);
    }
    // Returns the visible field of that type in the panel.
    template <typename Kind>
    static Kind* below(Gtk::Widget& widget)
    {
        for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling()) {
            if (auto* const found = dynamic_cast<Kind*>(child); found && found->get_visible())
                return found;
            if (auto* const found = child->get_visible() ? below<Kind>(*child) : nullptr)
                return found;
        }
        return nullptr;
    }
    Gtk::Entry* printedPage() { return below<Gtk::Entry>(_panel.popover()); }
    void enter(const std::string& text)
    {
        printedPage()->set_text(text);
        g_signal_emit_by_name(printedPage()->gobj(), "activate");
    }

    Gtk::Window _window;
    Gtk::Box _anchor;
    std::vector<std::size_t> gone;
    GoToPanel _panel { _anchor,
        [] {
            return GoToPanel::Place { 10, 3, 12, false };
        },
        { [](double) {}, [](std::int64_t) {}, [this](std::size_t index) { gone.push_back(index); } } };
};

}

TEST_F(GoToPanelTest, OffersPagesOfThePrintedEditionOnlyWhereTheBookHasThem)
{
    _panel.open();
    EXPECT_EQ(printedPage(), nullptr);
    _panel.setPrintedPages({ "i", "1" });
    _panel.open();
    EXPECT_NE(printedPage(), nullptr);
}

TEST_F(GoToPanelTest, GoesToAPageOfThePrintedEditionByItsNumberThere)
{
    _panel.setPrintedPages({ "i", "ii", "1", "2" });
    _panel.open();
    enter("II");
    EXPECT_EQ(gone, std::vector<std::size_t> { 1 });
    EXPECT_FALSE(_panel.popover().get_visible());
}

TEST_F(GoToPanelTest, StaysOpenForANumberThatThePrintedEditionDoesNotHave)
{
    _panel.setPrintedPages({ "i", "ii", "1", "2" });
    _panel.open();
    enter("3");
    EXPECT_TRUE(gone.empty());
    EXPECT_TRUE(printedPage()->has_css_class("error"));
    enter("2");
    EXPECT_EQ(gone, std::vector<std::size_t> { 3 });
}

}
