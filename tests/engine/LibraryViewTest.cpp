#include "base/Resource.hpp"
#include "files/Files.hpp"
#include "library_views/gtk/BookCell.hpp"
#include "library_views/gtk/GridSurface.hpp"
#include "library_views/gtk/ListSurface.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/engine/ToolkitTest.hpp"

#include <gdkmm/pixbuf.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/window.h>

namespace pagora::test {

namespace {

struct RecordingHandler : LibraryViewSurface::Handler {
    void userDidSelect() override { ++selections; }
    void userWillClick() override { }
    void mouseDown(int clickCount) override { clicks.push_back(clickCount); }
    void rightMouseUp(std::optional<std::size_t> item) override { rightClicks.push_back(item); }
    int selections = 0;
    std::vector<int> clicks;
    std::vector<std::optional<std::size_t>> rightClicks;
};

// A window, 800 by 600 points, with one of the two views.
template <typename Surface>
class LibraryView : public ToolkitTest {
protected:
    LibraryView()
    {
        _window.set_default_size(800, 600);
        _window.set_child(_surface.widget());
        _surface.setHandler(&_handler);
        _window.present();
    }
    ~LibraryView() override { _window.unset_child(); }

    // What a press on Return, or a double click, asks of the view.
    void activate(Gtk::Widget& view, guint position)
    {
        view.activate_action("list.activate-item", Glib::Variant<guint>::create(position));
    }

    GLibRunLoop _runLoop;
    CoverLoader _loader { _runLoop };
    ArrayController _books;
    RecordingHandler _handler;
    Surface _surface { _books, _loader };
    Gtk::Window _window;
};

// The cells of a view from the first, as far as there are any.
void collect(Gtk::Widget& widget, std::vector<BookCell*>& cells)
{
    if (auto* const cell = dynamic_cast<BookCell*>(&widget))
        cells.push_back(cell);
    for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling())
        collect(*child, cells);
}

std::vector<BookCell*> cellsOf(Gtk::Widget& widget)
{
    std::vector<BookCell*> cells;
    collect(widget, cells);
    return cells;
}

Data defaultCoverData()
{
    return Data(resourceBytes("/org/pagora/Pagora/pagora_default_cover.jpg").value_or(""));
}

// The key as a view gets it. Whether the view took it.
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

// The right button is released at a point of the view.
void rightClick(Gtk::Widget& view, double x, double y)
{
    const auto controllers = view.observe_controllers();
    for (guint i = 0; i < controllers->get_n_items(); ++i) {
        const auto click = std::dynamic_pointer_cast<Gtk::GestureClick>(controllers->get_object(i));
        if (click && click->get_button() == GDK_BUTTON_SECONDARY)
            g_signal_emit_by_name(click->gobj(), "released", 1, x, y);
    }
}

// The left button is pressed at a point of the view.
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

TEST_F(Grid, BookWithoutFieldsShowsTheDefaultCoverAndNoText)
{
    _books.setContent(std::make_shared<std::vector<BookInfoPtr>>(1, std::make_shared<BookInfo>()));
    ASSERT_TRUE(waitUntil([&] { return !cellsOf(_surface.widget()).empty(); }));
    const auto* const cell = cellsOf(_surface.widget()).front();
    EXPECT_EQ(cell->title(), "");
    EXPECT_EQ(cell->author(), "");
    EXPECT_EQ(cell->cover().cover(), _loader.defaultCover());
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

TEST_F(Grid, CellsHaveOneSizeWhateverTheirTexts)
{
    const auto books = makeBooks(3);
    books->at(0)->setTitle("");
    books->at(1)->setTitle(std::string(200, 'w'));
    books->at(1)->setAuthor(std::string(200, 'w'));
    _books.setContent(books);
    ASSERT_TRUE(waitUntil([&] {
        const auto cells = cellsOf(_surface.widget());
        return cells.size() >= 3 && cells[2]->get_height() > 0;
    }));
    const auto cells = cellsOf(_surface.widget());
    for (const auto* cell : { cells[0], cells[1] }) {
        EXPECT_EQ(cell->get_width(), cells[2]->get_width());
        EXPECT_EQ(cell->get_height(), cells[2]->get_height());
    }
    EXPECT_GE(cells[0]->get_height(), static_cast<int>(CoverLoader::coverSize.height) + 40);
}

TEST_F(Grid, CoverAppearsWhenItIsDecoded)
{
    const auto books = makeBooks(1);
    books->front()->setImgData(defaultCoverData());
    _books.setContent(books);
    ASSERT_TRUE(waitUntil([&] {
        const auto cells = cellsOf(_surface.widget());
        return !cells.empty() && cells.front()->cover().cover();
    }));
    EXPECT_NE(cellsOf(_surface.widget()).front()->cover().cover(), _loader.defaultCover());
    EXPECT_EQ(_loader.cache().size(), 1U);
}

TEST_F(Grid, CoverThatDoesNotDecodeIsTheDefaultCover)
{
    const auto books = makeBooks(1);
    books->front()->setImgData(Data("no picture"));
    _books.setContent(books);
    ASSERT_TRUE(waitUntil([&] {
        const auto cells = cellsOf(_surface.widget());
        return !cells.empty() && cells.front()->cover().cover();
    }));
    EXPECT_EQ(cellsOf(_surface.widget()).front()->cover().cover(), _loader.defaultCover());
}

TEST_F(Grid, TitleOnSeveralLinesIsShownAsOne)
{
    EXPECT_EQ(cellText("One\nTwo"), "One Two");
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

TEST(BookModel, ChangeInTheMiddleLeavesBothEndsAlone)
{
    const auto model = BookModel::create();
    auto books = std::make_shared<std::vector<BookInfoPtr>>();
    for (int i = 0; i < 5; ++i)
        books->push_back(std::make_shared<BookInfo>());
    model->setBooks(books);
    std::vector<guint> change;
    model->signal_items_changed().connect([&](guint position, guint removed, guint added) {
        change = { position, removed, added };
    });
    auto fewer = std::make_shared<std::vector<BookInfoPtr>>(*books);
    fewer->erase(fewer->begin() + 2);
    model->setBooks(fewer);
    EXPECT_EQ(change, (std::vector<guint> { 2, 1, 0 }));
}

TEST(CoverCache, KeepsTheCoversUsedLast)
{
    CoverCache cache(2);
    std::vector<BookInfo> books(3);
    const auto texture = Gdk::Texture::create_for_pixbuf(Gdk::Pixbuf::create(Gdk::Colorspace::RGB, false, 8, 1, 1));
    for (auto& book : books)
        book.setImgData(Data("x"));
    cache.insert(&books[0], *books[0].imgData(), texture);
    cache.insert(&books[1], *books[1].imgData(), texture);
    cache.find(books[0]);
    cache.insert(&books[2], *books[2].imgData(), texture);
    EXPECT_TRUE(cache.find(books[0]));
    EXPECT_FALSE(cache.find(books[1]));
    EXPECT_TRUE(cache.find(books[2]));
}

TEST(CoverCache, ForgetsACoverWhoseDataWasReplaced)
{
    CoverCache cache(2);
    BookInfo book;
    book.setImgData(Data("x"));
    const auto texture = Gdk::Texture::create_for_pixbuf(Gdk::Pixbuf::create(Gdk::Colorspace::RGB, false, 8, 1, 1));
    cache.insert(&book, *book.imgData(), texture);
    book.setImgData(Data("y"));
    EXPECT_FALSE(cache.find(book));
}

}
