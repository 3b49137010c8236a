#include "contents/SplitRules.hpp"
#include "contents/gtk/SplitViewGtk.hpp"
#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/window.h>

namespace pagora::test {

namespace {

// A split view 1,000 points wide with the readers' rules.
class SplitViewTest : public ToolkitTest {
protected:
    SplitViewTest()
    {
        box.append(contents);
        box.append(page);
        split = std::make_unique<SplitViewGtk>(box);
        rules = std::make_unique<SplitRules>(*split, SplitRules::FollowDivider::Yes, [this] { ++layouts; });
        box.set_size_request(1000, 400);
        box.set_halign(Gtk::Align::START);
        box.set_valign(Gtk::Align::START);
        window.set_child(box);
        window.present();
        waitUntil([this] { return page.get_width() > 0; });
    }

    // Waits until the panes have these widths. Returns false on timeout.
    bool areShown(int contentsWidth, int pageWidth)
    {
        return waitUntil([&] { return contents.get_width() == contentsWidth && page.get_width() == pageWidth; });
    }

    Gtk::Window window;
    Gtk::Box box;
    Gtk::Box contents;
    Gtk::Box page;
    int layouts = 0;
    std::unique_ptr<SplitViewGtk> split;
    std::unique_ptr<SplitRules> rules;
};

}

TEST_F(SplitViewTest, PanesShareTheWidthBesideTheDivider)
{
    EXPECT_EQ(split->frame(), (Rect { 0, 0, 1000, 400 }));
    EXPECT_EQ(split->frameOfSubview(0), (Rect { 0, 0, 260, 400 }));
    EXPECT_EQ(split->frameOfSubview(1), (Rect { 261, 0, 739, 400 }));
    EXPECT_TRUE(areShown(260, 739));
}

TEST_F(SplitViewTest, DividerFollowsADrag)
{
    split->dragDivider(320);
    EXPECT_TRUE(areShown(320, 679));
}

TEST_F(SplitViewTest, DividerStopsAtTheContentsLeastWidth)
{
    split->dragDivider(150);
    EXPECT_EQ(split->frameOfSubview(0).width, 200);
}

TEST_F(SplitViewTest, DividerStopsAtHalfTheWidth)
{
    split->dragDivider(900);
    EXPECT_EQ(split->frameOfSubview(0).width, 499.5);
}

TEST_F(SplitViewTest, EachStepOfADragLaysThePageOut)
{
    const int before = layouts;
    split->dragDivider(300);
    split->dragDivider(310);
    EXPECT_EQ(layouts, before + 2);
}

TEST_F(SplitViewTest, NewSizeIsSharedByTheDelegate)
{
    split->dragDivider(400);
    ASSERT_TRUE(areShown(400, 599));
    const int before = layouts;
    box.set_size_request(600, 400);
    box.queue_resize();
    // 400 is more than half of the new width, so the pane shrinks with the window.
    EXPECT_TRUE(areShown(240, 359));
    EXPECT_GT(layouts, before);
}

TEST_F(SplitViewTest, HiddenContentsLeaveTheWidthToThePage)
{
    rules->toggleLeftView();
    EXPECT_TRUE(split->isSubviewHidden(0));
    EXPECT_TRUE(waitUntil([&] { return page.get_width() == 1000 && !contents.get_mapped(); }));
}

TEST_F(SplitViewTest, ContentsComeBackWithTheirWidth)
{
    split->dragDivider(320);
    rules->toggleLeftView();
    ASSERT_TRUE(waitUntil([&] { return page.get_width() == 1000; }));
    rules->toggleLeftView();
    EXPECT_TRUE(areShown(320, 679));
}

TEST_F(SplitViewTest, HidingAPaneIsTold)
{
    int told = 0;
    split->setHiddenChanged([&] { ++told; });
    split->setSubviewHidden(0, true);
    split->setSubviewHidden(0, true);
    EXPECT_EQ(told, 1);
}

TEST_F(SplitViewTest, BoxOutlivesItsSplitView)
{
    rules.reset();
    split.reset();
    box.queue_resize();
    settle();
    EXPECT_EQ(box.get_last_child(), &page);
}

}
