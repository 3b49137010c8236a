#pragma once

#include "catalogue/BookInfo.hpp"

#include <glibmm/object.h>

namespace pagora {

// A book as the toolkit's lists hand it to their cells. Main thread.
class BookItem : public Glib::Object {
public:
    static Glib::RefPtr<BookItem> create(BookInfoPtr book);

    const BookInfoPtr& book() const { return _book; }

private:
    explicit BookItem(BookInfoPtr book);
    BookInfoPtr _book;
};

}
