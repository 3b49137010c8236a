#pragma once

#include "catalogue/BookInfo.hpp"

#include <glibmm/object.h>

namespace pagora {

// A book as an item of the toolkit's list models. Main thread.
class BookItem : public Glib::Object {
public:
    static Glib::RefPtr<BookItem> create(BookInfoPtr book);

    const BookInfoPtr& book() const { return _book; }

private:
    explicit BookItem(BookInfoPtr book);
    BookInfoPtr _book;
};

}
