#pragma once

#include "library_views/ShownBooks.hpp"

#include <giomm/listmodel.h>

namespace pagora {

// The books of a view as a list model of the toolkit. Wraps the shared array: an item is made when a cell asks for it,
// so that a model of any size is made at once. Main thread.
//
// The interface is the first base class, so that it is registered before the object is made.
class BookModel : public Gio::ListModel, public Glib::Object {
public:
    static Glib::RefPtr<BookModel> create();

    // Replaces the books. A common beginning and end count as unchanged.
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
    ShownBooks _books { std::make_shared<const std::vector<BookInfoPtr>>() };
    std::size_t _itemsMade = 0;
};

}
