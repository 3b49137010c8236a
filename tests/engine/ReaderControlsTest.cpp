// The controls of a reader window: sliders, page buttons, themes and the font menu.

#include "base/Log.hpp"
#include "tests/engine/ReaderWindowTest.hpp"

namespace pagora::test {

TEST_F(ReaderWindowTest, LocationSliderSendsOnceWhenThePointerLetsGo)
{
    makeEpubWindow();
    auto& slider = epub->parts().locSlider;
    slider.setMaxValue(10);
    std::vector<EventType> events;
    slider.setAction([&](EventType event) { events.push_back(event); });
    slider.pointerDown();
    slider.moveTo(2);
    slider.moveTo(4.25);
    EXPECT_TRUE(events.empty());
    slider.pointerUp();
    EXPECT_EQ(events, std::vector { EventType::LeftMouseUp });
    EXPECT_EQ(slider.floatValue(), 4.25f);
}

TEST_F(ReaderWindowTest, LocationSliderSendsAtOnceForTheKeyboard)
{
    makeEpubWindow();
    auto& slider = epub->parts().locSlider;
    slider.setMaxValue(10);
    std::vector<EventType> events;
    slider.setAction([&](EventType event) { events.push_back(event); });
    slider.moveTo(3);
    EXPECT_EQ(events, std::vector { EventType::KeyDown });
}

TEST_F(ReaderWindowTest, SliderSetByTheProgramSendsNothing)
{
    makeEpubWindow();
    auto& slider = epub->parts().locSlider;
    int sent = 0;
    slider.setAction([&](EventType) { ++sent; });
    slider.setMinValue(1);
    slider.setMaxValue(10);
    slider.setFloatValue(7.5f);
    slider.setMaxValue(5);
    EXPECT_EQ(sent, 0);
    EXPECT_EQ(slider.floatValue(), 5);
}

TEST_F(ReaderWindowTest, TextSizeSliderSendsWhileThePointerMoves)
{
    makeEpubWindow();
    std::vector<EventType> events;
    SliderControl slider(widget<Gtk::Scale>("fontSizeSlider"), SliderControl::Continuous::Yes);
    slider.setAction([&](EventType event) { events.push_back(event); });
    slider.pointerDown();
    slider.moveTo(1.5);
    slider.moveTo(1.7);
    slider.pointerUp();
    EXPECT_EQ(events, (std::vector { EventType::LeftMouseDragged, EventType::LeftMouseDragged }));
}

TEST_F(ReaderWindowTest, PageButtonsKeepTheirSidesInAnInterfaceFromRightToLeft)
{
    Gtk::Widget::set_default_direction(Gtk::TextDirection::RTL);
    makeEpubWindow();
    epub->parts().window.makeKeyAndOrderFront();
    const auto left = [this](const char* name) {
        graphene_rect_t bounds {};
        const bool isThere = gtk_widget_compute_bounds(
            widget<Gtk::Widget>(name).gobj(), widget<Gtk::Widget>("pagePlace").gobj(), &bounds);
        return isThere && bounds.size.width > 0 ? bounds.origin.x : -1;
    };
    EXPECT_TRUE(waitUntil([&] { return left("goLeftButton") == 0 && left("goRightButton") > 0; }));
    Gtk::Widget::set_default_direction(Gtk::TextDirection::LTR);
}

TEST_F(ReaderWindowTest, LocationGoesWithThePagesInAnInterfaceFromRightToLeft)
{
    Gtk::Widget::set_default_direction(Gtk::TextDirection::RTL);
    makeEpubWindow();
    epub->locLabel().setStringValue("0 %");
    epub->parts().window.makeKeyAndOrderFront();
    auto& slider = widget<Gtk::Scale>("locSlider");
    auto& label = widget<Gtk::Label>("locLabel");
    EXPECT_TRUE(waitUntil([&] { return label.get_allocation().get_x() > slider.get_allocation().get_width(); }));
    EXPECT_EQ(slider.get_direction(), Gtk::TextDirection::LTR);
    EXPECT_LT(label.get_layout()->index_to_pos(0).get_x(), label.get_layout()->index_to_pos(2).get_x());
    Gtk::Widget::set_default_direction(Gtk::TextDirection::LTR);
}

TEST_F(ReaderWindowTest, PointerThatEntersAPageButtonGetsTheHandTwentyTimes)
{
    Lines logged;
    const LogCapture capture([&](const std::string& line) { logged.push_back(line); });
    makeEpubWindow();
    auto& button = widget<Gtk::Button>("goRightButton");
    int hands = 0;
    button.property_cursor().signal_changed().connect([&] {
        hands += button.get_cursor() && button.get_cursor()->get_name() == "pointer";
        // The page sets these values.
        if (hands < 20)
            g_idle_add_once([](gpointer widget) { gtk_widget_set_cursor(GTK_WIDGET(widget), nullptr); }, button.gobj());
    });
    enter(button);
    ASSERT_TRUE(waitUntil([&] { return hands == 20; }));
    EXPECT_EQ(logged, Lines { "cursor update" });
    settle();
    EXPECT_EQ(button.get_cursor()->get_name(), "pointer");
    EXPECT_EQ(hands, 20);
}

TEST_F(ReaderWindowTest, TextSizeStartsInTheMiddleOfItsRange)
{
    makeEpubWindow();
    auto& slider = epub->fontSizeSlider();
    EXPECT_EQ(slider.floatValue(), static_cast<float>((slider.minValue() + slider.maxValue()) / 2));
}

TEST_F(ReaderWindowTest, ThemesHaveTheTagsOneToThree)
{
    makeEpubWindow();
    auto& themes = epub->colorControl();
    EXPECT_EQ(themes.selectedSegment(), 0);
    EXPECT_EQ(themes.tag(0), 1);
    EXPECT_EQ(themes.tag(2), 3);
    int chosen = 0;
    themes.setAction([&] { chosen = themes.tag(themes.selectedSegment()); });
    widget<Gtk::ToggleButton>("sepiaTheme").set_active(true);
    EXPECT_EQ(chosen, 3);
}

TEST_F(ReaderWindowTest, TitlesOfTheFontMenuAreShownWholeOnHover)
{
    makeEpubWindow();
    epub->fontMenu().addItem("Georgia");
    auto& menu = widget<Gtk::DropDown>("fontMenu");
    ASSERT_TRUE(waitUntil([&] { return menu.get_selected_item() != nullptr; }));
    std::function<Gtk::Widget*(Gtk::Widget&)> rowIn = [&](Gtk::Widget& widget) -> Gtk::Widget* {
        if (dynamic_cast<Gtk::Stack*>(&widget) && dynamic_cast<Gtk::Stack&>(widget).get_child_by_name("separator"))
            return &widget;
        for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling()) {
            if (auto* const row = rowIn(*child))
                return row;
        }
        return nullptr;
    };
    auto* const row = rowIn(menu);
    ASSERT_TRUE(row);
    EXPECT_TRUE(showsTooltip(*row));
}

TEST_F(ReaderWindowTest, FontMenuSelectsByTitleAndSendsOnlyChoices)
{
    makeEpubWindow();
    auto& menu = epub->fontMenu();
    int sent = 0;
    menu.setAction([&] { ++sent; });
    menu.addItem("Arial");
    menu.addItem("Georgia");
    menu.addSeparator();
    menu.addItem("Zapfino");
    menu.selectItemWithTitle("Georgia");
    menu.selectItemWithTitle("Missing");
    EXPECT_EQ(menu.titleOfSelectedItem(), "Georgia");
    auto& button = widget<Gtk::DropDown>("fontMenu");
    ASSERT_TRUE(waitUntil([&] { return button.get_selected() == 1; }));
    EXPECT_EQ(sent, 0);
    button.set_selected(3);
    EXPECT_EQ(menu.titleOfSelectedItem(), "Zapfino");
    EXPECT_EQ(sent, 1);
}

TEST_F(ReaderWindowTest, SeparatorOfTheFontMenuCannotBeChosen)
{
    makeEpubWindow();
    auto& menu = epub->fontMenu();
    menu.addItem("Arial");
    menu.addSeparator();
    menu.addItem("Zapfino");
    int sent = 0;
    menu.setAction([&] { ++sent; });
    auto& button = widget<Gtk::DropDown>("fontMenu");
    ASSERT_TRUE(waitUntil([&] { return button.get_model()->get_n_items() == 3; }));
    button.set_selected(1);
    EXPECT_EQ(menu.titleOfSelectedItem(), "Arial");
    EXPECT_EQ(button.get_selected(), 0u);
    EXPECT_EQ(sent, 0);
}

TEST_F(ReaderWindowTest, InstalledFontsAreListedInOrder)
{
    makeEpubWindow();
    const auto families = epub->availableFontFamilies();
    ASSERT_FALSE(families.empty());
    EXPECT_TRUE(std::is_sorted(families.begin(), families.end(), [](const auto& left, const auto& right) {
        return Glib::ustring(left).casefold() < Glib::ustring(right).casefold();
    }));
}

}
