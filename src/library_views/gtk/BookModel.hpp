#pragma once

#include "library_views/ShownBooks.hpp"
#include "library_views/gtk/BookItem.hpp"

#include <giomm/listmodel.h>

#include <memory>
#include <vector>

namespace pagora {

// The books of a view as a list model of the toolkit. Wraps the shared array: an item is made when a cell asks for it,
// so that a model of any size is made at once. A position has at most one item at a time. Main thread.
//
// The interface is the first base class, so that it is registered before the object is made.
class BookModel : public Gio::ListModel, public Glib::Object {
public:
    static Glib::RefPtr<BookModel> create();

    // Replaces the books. A common beginning and end stay as they are. Between them, as many positions as possible keep
    // their items and get other books; the rest is removed or added behind them.
    void setBooks(ShownBooks books);
    const ShownBooks& books() const { return _books; }

    // The number of items made so far.
    std::size_t itemsMade() const { return _itemsMade; }

protected:
    GType get_item_type_vfunc() override;
    guint get_n_items_vfunc() override;
    gpointer get_item_vfunc(guint position) override;

private:
    BookModel();
    // Gives the existing items from `first` to before `end` the books of their positions.
    void updateItems(guint first, guint end);
    // Positions from `position` on were removed, and others added there.
    void moveItems(guint position, guint removed, guint added);
    std::vector<Glib::RefPtr<BookItem>> itemsFrom(guint position) const;

    ShownBooks _books { std::make_shared<const std::vector<BookInfoPtr>>() };
    std::shared_ptr<BookItems> _items = std::make_shared<BookItems>();
    std::size_t _itemsMade = 0;
};

}
