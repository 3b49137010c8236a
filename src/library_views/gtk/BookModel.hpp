#pragma once

#include "library_views/ShownBooks.hpp"
#include "library_views/gtk/BookItem.hpp"

#include <giomm/listmodel.h>

#include <memory>
#include <vector>

namespace pagora {

// The books of a view as a list model of the toolkit. Wraps the shared array: items are created on request, so creating
// a model of any size is fast. A position has at most one item at a time. Main thread only.
//
// The interface is the first base class, so that it is registered before the object is created.
class BookModel : public Gio::ListModel, public Glib::Object {
public:
    static Glib::RefPtr<BookModel> create();

    // Replaces the books. A common start and end stay unchanged. Between them, as many positions as possible keep their
    // items and get other books; the rest is removed, or added after them.
    void setBooks(ShownBooks books);
    const ShownBooks& books() const { return _books; }

    // The number of items that were created so far.
    std::size_t itemsMade() const { return _itemsMade; }

protected:
    GType get_item_type_vfunc() override;
    guint get_n_items_vfunc() override;
    gpointer get_item_vfunc(guint position) override;

private:
    BookModel();
    // Updates the books of the existing items in [first, end).
    void updateItems(guint first, guint end);
    // Shifts the items after `position`, where positions were removed and others added.
    void moveItems(guint position, guint removed, guint added);
    std::vector<Glib::RefPtr<BookItem>> itemsFrom(guint position) const;

    ShownBooks _books { std::make_shared<const std::vector<BookInfoPtr>>() };
    std::shared_ptr<BookItems> _items = std::make_shared<BookItems>();
    std::size_t _itemsMade = 0;
};

}
