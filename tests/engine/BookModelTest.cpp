#include "library_views/gtk/BookModel.hpp"

#include "tests/engine/ToolkitTest.hpp"

#include <gtest/gtest.h>
#include <vector>

namespace pagora::test {

namespace {

// A model of books, and the ranges that it reports as changed.
class ModelOfBooks : public ToolkitTest {
protected:
    using Range = std::vector<guint>;

    ModelOfBooks()
    {
        _model->signal_items_changed().connect([this](guint position, guint removed, guint added) {
            _changes.push_back({ position, removed, added });
        });
    }
    // Shows the books with these indexes.
    void show(ShownBooks::Indexes indexes)
    {
        _changes.clear();
        _model->setBooks(ShownBooks(_books, std::move(indexes)));
    }
    Glib::RefPtr<BookItem> item(guint position)
    {
        return std::dynamic_pointer_cast<BookItem>(_model->get_object(position));
    }
    const BookInfoPtr& book(std::size_t index) const { return (*_books)[index]; }

    BookArray _books = makeBooks(9);
    Glib::RefPtr<BookModel> _model = BookModel::create();
    std::vector<Range> _changes;
};

TEST_F(ModelOfBooks, RemovesABookFromTheMiddleOnly)
{
    show({ 0, 1, 2, 3, 4 });
    show({ 0, 1, 3, 4 });
    EXPECT_EQ(_changes, (std::vector<Range> { { 2, 1, 0 } }));
}

TEST_F(ModelOfBooks, KeepsTheItemsOfReplacedBooks)
{
    show({ 0, 1, 2, 8 });
    const auto second = item(1);
    int changes = 0;
    second->signal_book_changed().connect([&] { ++changes; });
    show({ 0, 5, 6, 8 });
    EXPECT_TRUE(_changes.empty());
    EXPECT_EQ(item(1), second);
    EXPECT_EQ(second->book(), book(5));
    EXPECT_EQ(changes, 1);
}

TEST_F(ModelOfBooks, AddsAndRemovesOnlyTheDifferenceInNumber)
{
    show({ 0, 1, 2, 8 });
    show({ 3, 4, 5, 6, 7, 8 });
    EXPECT_EQ(_changes, (std::vector<Range> { { 3, 0, 2 } }));
    show({ 0, 8 });
    EXPECT_EQ(_changes, (std::vector<Range> { { 1, 4, 0 } }));
}

TEST_F(ModelOfBooks, MovesItemsBehindARemovedBook)
{
    show({ 0, 1, 2, 3 });
    const auto removed = item(1);
    const auto last = item(3);
    show({ 0, 2, 3 });
    EXPECT_EQ(item(2), last);
    EXPECT_EQ(last->book(), book(3));
    EXPECT_NE(item(1), removed);
    EXPECT_EQ(item(1)->book(), book(2));
}

TEST_F(ModelOfBooks, MovesItemsBehindAnAddedBook)
{
    show({ 0, 2, 3 });
    const auto last = item(2);
    show({ 0, 1, 2, 3 });
    EXPECT_EQ(item(3), last);
    EXPECT_EQ(item(2)->book(), book(2));
}

}

}
