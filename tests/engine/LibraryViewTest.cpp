#include "tests/engine/LibraryViewTest.hpp"

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>

namespace pagora::test {

namespace {

// Sends a key to a view. Returns whether the view handled it.
bool pressOn(Gtk::Widget& view, guint keyval, Gdk::ModifierType state = {})
{
    gboolean taken = FALSE;
    const auto controllers = view.observe_controllers();
    for (guint i = 0; i < controllers->get_n_items() && !taken; ++i) {
        if (const auto keys = std::dynamic_pointer_cast<Gtk::EventControllerKey>(controllers->get_object(i)))
            g_signal_emit_by_name(keys->gobj(), "key-pressed", keyval, 0U, static_cast<guint>(state), &taken);
    }
    return taken;
}

// Releases the right button at a point of the view.
void rightClick(Gtk::Widget& view, double x, double y)
{
    const auto controllers = view.observe_controllers();
    for (guint i = 0; i < controllers->get_n_items(); ++i) {
        const auto click = std::dynamic_pointer_cast<Gtk::GestureClick>(controllers->get_object(i));
        if (click && click->get_button() == GDK_BUTTON_SECONDARY)
            g_signal_emit_by_name(click->gobj(), "released", 1, x, y);
    }
}

// Presses the left button at a point of the view.
void leftClick(Gtk::Widget& view, double x, double y)
{
    const auto controllers = view.observe_controllers();
    for (guint i = 0; i < controllers->get_n_items(); ++i) {
        const auto click = std::dynamic_pointer_cast<Gtk::GestureClick>(controllers->get_object(i));
        if (click && click->get_button() == GDK_BUTTON_PRIMARY)
            g_signal_emit_by_name(click->gobj(), "pressed", 1, x, y);
    }
}

using Grid = LibraryView<GridSurface>;
using List = LibraryView<ListSurface>;

}

TEST_F(Grid, UserSelectionReachesTheController)
{
    _books.setContent(makeBooks(5));
    _surface.selection().select_item(1, true);
    _surface.selection().select_item(3, false);
    EXPECT_EQ(_books.selectionIndexes(), (std::vector<std::size_t> { 1, 3 }));
    EXPECT_EQ(_handler.selections, 2);
}

TEST_F(Grid, ControllerSelectionIsShownWithoutAReport)
{
    _books.setContent(makeBooks(5));
    _books.setSelectionIndexes({ 0, 4 });
    EXPECT_TRUE(_surface.selection().is_selected(0));
    EXPECT_FALSE(_surface.selection().is_selected(2));
    EXPECT_TRUE(_surface.selection().is_selected(4));
    EXPECT_EQ(_handler.selections, 0);
}

TEST_F(Grid, RefillSelectsNothing)
{
    const auto books = makeBooks(5);
    _books.setContent(books);
    _surface.selection().select_item(2, true);
    _books.setContent(books);
    EXPECT_TRUE(_surface.selection().get_selection()->is_empty());
    EXPECT_TRUE(_books.selectionIndexes().empty());
}

TEST_F(Grid, ActivatedItemIsSelectedAndCountsAsADoubleClick)
{
    _books.setContent(makeBooks(5));
    settle();
    activate(_surface.bookCollectionView(), 3);
    EXPECT_EQ(_books.selectionIndexes(), (std::vector<std::size_t> { 3 }));
    EXPECT_EQ(_handler.clicks, (std::vector<int> { 2 }));
}

TEST_F(Grid, TenThousandBooksMakeOnlyTheItemsNearTheScreen)
{
    _books.setContent(makeBooks(10'000));
    ASSERT_TRUE(waitUntil([&] { return !cellsOf(_surface.widget()).empty(); }));
    settle();
    EXPECT_GT(_surface.model().itemsMade(), 0U);
    EXPECT_LT(_surface.model().itemsMade(), 1'000U);
    EXPECT_LT(cellsOf(_surface.widget()).size(), 400U);
}

TEST_F(Grid, ACellGoesWithWhatIsInIt)
{
    _books.setContent(makeBooks(5));
    ASSERT_TRUE(waitUntil([&] { return cellsOf(_surface.widget()).size() >= 5; }));
    int warnings = 0;
    const auto count = [](const char*, GLogLevelFlags, const char*, gpointer number) { ++*static_cast<int*>(number); };
    const auto handler = g_log_set_handler("Gtk", G_LOG_LEVEL_WARNING, count, &warnings);
    _surface.bookCollectionView().set_factory({});
    settle();
    g_log_remove_handler("Gtk", handler);
    EXPECT_TRUE(cellsOf(_surface.widget()).empty());
    EXPECT_EQ(warnings, 0);
}

TEST_F(Grid, AClickBesideTheCoversClearsTheSelection)
{
    _books.setContent(makeBooks(3));
    ASSERT_TRUE(waitUntil([&] { return !cellsOf(_surface.widget()).empty(); }));
    ASSERT_TRUE(waitUntil([&] { return cellsOf(_surface.widget()).front()->get_height() > 0; }));
    _surface.selection().select_item(1, true);
    leftClick(*cellsOf(_surface.widget()).front()->get_parent()->get_parent(), 400, 580);
    EXPECT_TRUE(_books.selectionIndexes().empty());
}

TEST_F(Grid, RightClickKnowsTheItemBelowThePointer)
{
    _books.setContent(makeBooks(3));
    ASSERT_TRUE(waitUntil([&] { return cellsOf(_surface.widget()).size() >= 3; }));
    auto* const third = cellsOf(_surface.widget())[2];
    double x = 0;
    double y = 0;
    ASSERT_TRUE(waitUntil([&] {
        return third->get_width() > 0
            && third->translate_coordinates(_surface.bookCollectionView(), third->get_width() / 2.0, 20, x, y) && x > 0;
    }));
    rightClick(_surface.bookCollectionView(), x, y);
    rightClick(_surface.bookCollectionView(), 780, 580);
    EXPECT_EQ(_handler.rightClicks, (std::vector<std::optional<std::size_t>> { 2, std::nullopt }));
}

TEST_F(Grid, MenuKeyAsksForTheMenuOfTheSelectedItem)
{
    _books.setContent(makeBooks(3));
    _books.setSelectionIndexes({ 1 });
    EXPECT_TRUE(pressOn(_surface.bookCollectionView(), GDK_KEY_Menu));
    EXPECT_TRUE(pressOn(_surface.bookCollectionView(), GDK_KEY_F10, Gdk::ModifierType::SHIFT_MASK));
    EXPECT_FALSE(pressOn(_surface.bookCollectionView(), GDK_KEY_F10));
    EXPECT_EQ(_handler.rightClicks, (std::vector<std::optional<std::size_t>> { 1, 1 }));
}

TEST_F(Grid, EnterOpensTheSelectedItemWhileTheViewHasTheFocus)
{
    _books.setContent(makeBooks(3));
    EXPECT_FALSE(pressOn(_surface.bookCollectionView(), GDK_KEY_Return));
    _books.setSelectionIndexes({ 1 });
    EXPECT_TRUE(pressOn(_surface.bookCollectionView(), GDK_KEY_Return));
    EXPECT_TRUE(pressOn(_surface.bookCollectionView(), GDK_KEY_KP_Enter));
    EXPECT_EQ(_handler.clicks, (std::vector<int> { 2, 2 }));
}

TEST_F(Grid, ContextMenuPerformsTheItemThatIsChosen)
{
    std::vector<std::string> chosen;
    _surface.popUpContextMenu(
        { { "One", [&] { chosen.push_back("One"); } }, {}, { "Two", [&] { chosen.push_back("Two"); } } });
    ASSERT_TRUE(_surface.contextMenu());
    EXPECT_EQ(_surface.contextMenu()->popover()->get_menu_model()->get_n_items(), 2);
    _surface.widget().activate_action("book.item2");
    EXPECT_EQ(chosen, (std::vector<std::string> { "Two" }));
}

TEST(FileDropTarget, OnlyASourceThatAllowsMoreThanACopyLeavesTheChoice)
{
    using Gdk::DragAction;
    EXPECT_EQ(FileDropTarget::operationsOf(DragAction::COPY), DragOperation::Copy);
    EXPECT_EQ(FileDropTarget::operationsOf(DragAction::MOVE), DragOperation::Move);
    EXPECT_EQ(FileDropTarget::operationsOf(DragAction::COPY | DragAction::MOVE),
        DragOperation::Copy | DragOperation::Move | DragOperation::Generic);
    EXPECT_EQ(FileDropTarget::operationsOf(DragAction::COPY | DragAction::LINK),
        DragOperation::Copy | DragOperation::Link | DragOperation::Generic);
}

TEST_F(Grid, AnotherSearchShowsItsBooksInTheSameCells)
{
    const auto books = makeBooks(6);
    _books.setContent(books);
    ASSERT_TRUE(waitUntil([&] { return cellsOf(_surface.widget()).size() == 6; }));
    const auto cells = cellsOf(_surface.widget());
    auto others = *makeBooks(6);
    _books.setContent(std::make_shared<const std::vector<BookInfoPtr>>(others.rbegin(), others.rend()));
    EXPECT_EQ(cellsOf(_surface.widget()), cells);
    EXPECT_EQ(cells.front()->title().raw(), *others.back()->title());
}

TEST_F(List, RightClickKnowsTheRowBelowThePointer)
{
    _books.setContent(makeBooks(3));
    auto& rows = *_surface.bookTable().get_last_child();
    ASSERT_TRUE(waitUntil([&] {
        auto* const row = rows.get_first_child();
        return row && row->get_height() > 0;
    }));
    const int height = rows.get_first_child()->get_height();
    double x = 0;
    double y = 0;
    ASSERT_TRUE(rows.translate_coordinates(_surface.bookTable(), 300, height * 1.5, x, y));
    rightClick(_surface.bookTable(), x, y);
    rightClick(_surface.bookTable(), x, 580);
    rightClick(_surface.bookTable(), x, 4);
    EXPECT_EQ(_handler.rightClicks, (std::vector<std::optional<std::size_t>> { 1, std::nullopt, std::nullopt }));
}

TEST_F(List, AClickBesideTheRowsClearsTheSelection)
{
    _books.setContent(makeBooks(3));
    auto& rows = *_surface.bookTable().get_last_child();
    ASSERT_TRUE(waitUntil([&] {
        auto* const row = rows.get_first_child();
        return row && row->get_height() > 0;
    }));
    _surface.selection().select_item(1, true);
    leftClick(_surface.bookTable(), 300, 4);
    EXPECT_EQ(_books.selectionIndexes(), (std::vector<std::size_t> { 1 })) << "the titles of the columns";
    leftClick(_surface.bookTable(), 300, 580);
    EXPECT_TRUE(_books.selectionIndexes().empty());
}

TEST_F(List, UserSelectionReachesTheController)
{
    _books.setContent(makeBooks(5));
    _surface.selection().select_item(4, true);
    EXPECT_EQ(_books.selectionIndexes(), (std::vector<std::size_t> { 4 }));
    EXPECT_EQ(_handler.selections, 1);
}

TEST_F(List, ActivatedRowCountsAsADoubleClick)
{
    _books.setContent(makeBooks(5));
    _books.setSelectionIndexes({ 1, 2 });
    settle();
    activate(*_surface.bookTable().get_last_child(), 2);
    EXPECT_EQ(_books.selectionIndexes(), (std::vector<std::size_t> { 1, 2 }));
    EXPECT_EQ(_handler.clicks, (std::vector<int> { 2 }));
}

TEST_F(List, TenThousandBooksMakeOnlyTheRowsNearTheScreen)
{
    _books.setContent(makeBooks(10'000));
    ASSERT_TRUE(waitUntil([&] { return _surface.model().itemsMade() > 0; }));
    settle();
    EXPECT_LT(_surface.model().itemsMade(), 1'000U);
}

TEST_F(List, RefillWithNoBooksIsEmpty)
{
    _books.setContent(makeBooks(3));
    _books.setContent(makeBooks(0));
    EXPECT_TRUE(_surface.isEmpty());
    EXPECT_EQ(_surface.selection().get_model()->get_n_items(), 0U);
}

}
