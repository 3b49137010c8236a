#include "controls/gtk/ButtonControl.hpp"
#include "controls/gtk/LabelField.hpp"
#include "controls/gtk/ProgressControl.hpp"
#include "controls/gtk/SegmentedSwitch.hpp"
#include "desktop/gtk/DesktopWindow.hpp"
#include "desktop/gtk/Tooltip.hpp"
#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/box.h>
#include <gtkmm/togglebutton.h>

namespace pagora::test {

namespace {

using Controls = ToolkitTest;

// Two toggle buttons of one group.
struct Segments {
    Segments()
    {
        second.set_group(first);
        box.append(first);
        box.append(second);
        first.set_active(true);
    }
    Gtk::Box box;
    Gtk::ToggleButton first;
    Gtk::ToggleButton second;
};

}

TEST_F(Controls, TooltipIsAskedForWhenThePointerRests)
{
    Gtk::Label label;
    Glib::ustring text = "The whole text";
    showOnHover(label, [&text] { return text; });
    EXPECT_TRUE(showsTooltip(label));
    text = "";
    EXPECT_FALSE(showsTooltip(label));
}

TEST_F(Controls, HiddenControlIsNotVisible)
{
    Gtk::Label label;
    LabelField field(label);
    field.setHidden(true);
    EXPECT_FALSE(label.get_visible());
    EXPECT_TRUE(field.isHidden());
}

TEST_F(Controls, FrameHasItsOriginAtTheBottomLeftOfTheParent)
{
    Gtk::Window window;
    Gtk::Box box(Gtk::Orientation::VERTICAL);
    Gtk::Label upper;
    Gtk::Label lower;
    upper.set_size_request(100, 70);
    lower.set_size_request(100, 30);
    box.append(upper);
    box.append(lower);
    window.set_child(box);
    window.present();
    LabelField upperField(upper);
    LabelField lowerField(lower);
    ASSERT_TRUE(waitUntil([&] { return upperField.frame().height == 70; }));
    EXPECT_EQ(lowerField.frame().height, 30);
    EXPECT_EQ(upperField.frame().y, lowerField.frame().y + 30);
    EXPECT_EQ(lowerField.frame().y, box.get_height() - 100);
}

TEST_F(Controls, TextThatIsNotUtf8IsShownInPart)
{
    Gtk::Label label;
    LabelField field(label);
    field.setStringValue("caf\xE9.epub");
    EXPECT_TRUE(label.get_text().validate());
    EXPECT_EQ(label.get_text().substr(0, 3), "caf");
}

TEST_F(Controls, TextOfManyLinesIsShownInATextView)
{
    Gtk::TextView textView;
    LabelField field(textView);
    field.setStringValue("one --> a\ntwo --> b");
    EXPECT_EQ(textView.get_buffer()->get_text(), "one --> a\ntwo --> b");
}

TEST_F(Controls, TextIsReadBackAsItWasSet)
{
    Gtk::Label label;
    LabelField field(label);
    field.setStringValue("1 of 2");
    field.setStringValue("2 of 2");
    EXPECT_EQ(field.stringValue(), "2 of 2");
    EXPECT_EQ(label.get_text(), "2 of 2");
}

TEST_F(Controls, ProgressIsShown)
{
    Gtk::ProgressBar bar;
    bar.set_visible(false);
    ProgressControl progress(bar);
    progress.setMinValue(0);
    progress.setMaxValue(40);
    progress.setHidden(false);
    progress.setDoubleValue(10);
    EXPECT_FALSE(progress.isHidden());
    EXPECT_TRUE(bar.get_visible());
    EXPECT_EQ(bar.get_fraction(), 0.25);
}

TEST_F(Controls, ProgressWithoutLengthIsEmpty)
{
    Gtk::ProgressBar bar;
    ProgressControl progress(bar);
    progress.setMaxValue(0);
    progress.setDoubleValue(3);
    EXPECT_EQ(bar.get_fraction(), 0);
}

TEST_F(Controls, ClickRunsTheActionOfAButton)
{
    Gtk::Button widget;
    ButtonControl button(widget);
    int clicks = 0;
    button.setAction([&] { ++clicks; });
    g_signal_emit_by_name(widget.gobj(), "clicked");
    EXPECT_EQ(clicks, 1);
}

TEST_F(Controls, ToggledSegmentIsSelectedAndRunsTheAction)
{
    Segments segments;
    SegmentedSwitch control(segments.box, 1);
    int selections = 0;
    control.setAction([&] { ++selections; });
    segments.second.set_active(true);
    EXPECT_EQ(control.selectedSegment(), 1);
    EXPECT_EQ(control.tag(1), 2);
    EXPECT_EQ(selections, 1);
}

TEST_F(Controls, SegmentSelectedByTheProgramDoesNotRunTheAction)
{
    Segments segments;
    SegmentedSwitch control(segments.box);
    int selections = 0;
    control.setAction([&] { ++selections; });
    control.setSelectedSegment(1);
    EXPECT_TRUE(segments.second.get_active());
    EXPECT_FALSE(segments.first.get_active());
    EXPECT_EQ(selections, 0);
}

TEST_F(Controls, WindowThatIsOrderedFrontIsVisible)
{
    Gtk::Window widget;
    DesktopWindow window(widget);
    window.orderFront();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(waitUntil([&] { return widget.get_mapped(); }));
    window.orderOut();
    EXPECT_FALSE(widget.get_visible());
}

}
