#include "reader/gtk/PageSurroundings.hpp"

#include "reader/gtk/EdgeBar.hpp"
#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/window.h>

namespace pagora::test {

namespace {

// The parts of a reader window around an empty page.
class Surroundings : public ToolkitTest {
protected:
    Surroundings()
    {
        locationBar.append(location);
        contents.append(list);
        pane.append(page);
        page.set_vexpand(true);
        pane.append(locationBar);
        whole.append(contents);
        whole.append(pane);
        window.set_child(whole);
        window.set_default_size(600, 400);
        window.present();
        around = std::make_unique<PageSurroundings>(
            PageSurroundings::Parts { whole, locationBar, location, contents, list, page });
    }

    static std::string textsIn(Gtk::Widget& widget)
    {
        std::string texts;
        for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling()) {
            if (!child->get_visible())
                continue;
            const auto* const label = dynamic_cast<Gtk::Label*>(child);
            texts += label ? "[" + label->get_text().raw() + "]" : textsIn(*child);
        }
        return texts;
    }
    void pointerAt(double y)
    {
        const auto controllers = page.observe_controllers();
        for (guint i = 0; i < controllers->get_n_items(); ++i) {
            if (const auto motion = std::dynamic_pointer_cast<Gtk::EventControllerMotion>(controllers->get_object(i)))
                g_signal_emit_by_name(motion->gobj(), "motion", 10.0, y);
        }
    }

    Gtk::Box whole;
    Gtk::Box contents { Gtk::Orientation::VERTICAL };
    Gtk::Label list { "list" };
    Gtk::Box pane { Gtk::Orientation::VERTICAL };
    Gtk::Overlay page;
    Gtk::Box locationBar;
    Gtk::Label location { "14 %" };
    Gtk::Window window;
    std::unique_ptr<PageSurroundings> around;
};

}

TEST_F(Surroundings, TheChapterAndThePageInItStandBesideTheLocation)
{
    around->setChapter("A Scandal in Bohemia");
    around->setPageOfChapter(3, 12);
    EXPECT_EQ(textsIn(locationBar), "[A Scandal in Bohemia][page 3 of 12][14 %]");
    around->setChapter("");
    around->setPageOfChapter(0, 0);
    EXPECT_EQ(textsIn(locationBar), "[14 %]");
}

TEST_F(Surroundings, ABookWithoutContentsSaysSoOutsideOfTheList)
{
    around->setHasContents(false);
    EXPECT_EQ(textsIn(contents), "[No contents][list]");
    around->setHasContents(true);
    EXPECT_EQ(textsIn(contents), "[list]");
}

TEST_F(Surroundings, ABookWithNothingToShowOffersTheWayBack)
{
    int back = 0;
    around->setNothingToShow(true, [&] { ++back; });
    EXPECT_EQ(textsIn(page), "[This book has no pages that can be shown.][Back to the library]");
    for (auto* box = page.get_first_child(); box; box = box->get_next_sibling()) {
        if (auto* const button = dynamic_cast<Gtk::Button*>(box->get_last_child()))
            g_signal_emit_by_name(button->gobj(), "clicked");
    }
    EXPECT_EQ(back, 1);
    around->setNothingToShow(false, {});
    EXPECT_EQ(textsIn(page), "");
}

TEST_F(Surroundings, TheBarsHaveThePagesPaper)
{
    around->barColors().setTheme({ 0, 0, 0, 1 });
    EXPECT_TRUE(whole.has_css_class("paper-black"));
    around->barColors().setTheme({ 0.98, 0.94, 0.85, 1 });
    EXPECT_TRUE(whole.has_css_class("paper-sepia"));
    EXPECT_FALSE(whole.has_css_class("paper-black"));
    around->barColors().setTheme(Color::white(1));
    EXPECT_TRUE(whole.has_css_class("paper-white"));
}

TEST_F(Surroundings, InTheOriginalThemeTheBarsHaveTheBooksOwnPaper)
{
    auto& colors = around->barColors();
    colors.setTheme(Color::white(1));
    colors.setGround(Color { 1, 0.97, 0.88, 1 });
    EXPECT_TRUE(whole.has_css_class("own-paper") && whole.has_css_class("paper-white"));
    colors.setGround(Color { 0.1, 0.1, 0.2, 1 });
    EXPECT_TRUE(whole.has_css_class("own-paper") && whole.has_css_class("paper-black"));
    colors.setGround(std::nullopt);
    EXPECT_FALSE(whole.has_css_class("own-paper"));
    EXPECT_TRUE(whole.has_css_class("paper-white"));
}

TEST_F(Surroundings, AnotherThemeTakesTheBooksOwnPaperAway)
{
    auto& colors = around->barColors();
    colors.setTheme(Color::white(1));
    colors.setGround(Color { 1, 0.97, 0.88, 1 });
    colors.setTheme({ 0, 0, 0, 1 });
    EXPECT_FALSE(whole.has_css_class("own-paper"));
    colors.setGround(Color { 0, 0, 0, 1 });
    colors.setTheme(Color::white(1));
    EXPECT_FALSE(whole.has_css_class("own-paper"));
}

TEST_F(Surroundings, APaperOnWhichNoTextIsReadableLeavesTheBarsWhite)
{
    auto& colors = around->barColors();
    colors.setTheme(Color::white(1));
    colors.setGround(Color::white(0.5));
    EXPECT_FALSE(whole.has_css_class("own-paper"));
    EXPECT_TRUE(whole.has_css_class("paper-white"));
}

TEST_F(Surroundings, InFullScreenTheLocationComesAtTheEdgeAndLeavesThePageItsSize)
{
    EdgeBar bar(EdgeBar::Edge::Bottom, locationBar, pane, page);
    ASSERT_TRUE(waitUntil([this] { return page.get_height() > 0; }));
    bar.setFullScreen(true);
    ASSERT_TRUE(waitUntil([this] { return page.get_height() == pane.get_height(); }));
    EXPECT_FALSE(bar.isRevealed());
    const int height = page.get_height();
    pointerAt(height - 1);
    EXPECT_TRUE(bar.isRevealed());
    ASSERT_TRUE(waitUntil([this] { return locationBar.get_height() > 0 && locationBar.get_mapped(); }));
    EXPECT_EQ(page.get_height(), height);
    pointerAt(height / 2);
    EXPECT_FALSE(bar.isRevealed());
    bar.setFullScreen(false);
    EXPECT_TRUE(bar.isRevealed());
    EXPECT_EQ(locationBar.get_parent(), &pane);
}

TEST_F(Surroundings, ALocationThatWasCalledStaysUntilItIsSentAway)
{
    EdgeBar bar(EdgeBar::Edge::Bottom, locationBar, pane, page);
    bar.setFullScreen(true);
    bar.setCalled(true);
    pointerAt(10);
    EXPECT_TRUE(bar.isRevealed());
    bar.setCalled(false);
    EXPECT_FALSE(bar.isRevealed());
}

}
