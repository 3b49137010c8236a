#pragma once

#include "catalogue/BookInfo.hpp"

#include <glib.h>
#include <glibmm/object.h>

#include <map>
#include <memory>
#include <sigc++/signal.h>

namespace pagora {

class BookItem;
// The existing items of a list model, by position.
using BookItems = std::map<guint, BookItem*>;

// A position of a list model with the book that is shown there. The book can change. Main thread only.
class BookItem : public Glib::Object {
public:
    static Glib::RefPtr<BookItem> create(BookInfoPtr book);
    ~BookItem() override;

    const BookInfoPtr& book() const { return _book; }
    void setBook(BookInfoPtr book);
    // Emitted when the book has changed.
    sigc::signal<void()>& signal_book_changed() { return _bookChanged; }

    // Adds the item to the items of a model. The destructor removes it.
    void enter(const std::shared_ptr<BookItems>& items, guint position);
    void leave();
    // Returns the position of an item that was added to the items of a model.
    guint position() const { return _position; }

private:
    explicit BookItem(BookInfoPtr book);
    BookInfoPtr _book;
    std::weak_ptr<BookItems> _items;
    guint _position = 0;
    sigc::signal<void()> _bookChanged;
};

}
