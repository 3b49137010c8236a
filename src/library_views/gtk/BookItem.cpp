#include "library_views/gtk/BookItem.hpp"

namespace pagora {

Glib::RefPtr<BookItem> BookItem::create(BookInfoPtr book)
{
    return Glib::make_refptr_for_instance<BookItem>(new BookItem(std::move(book)));
}

BookItem::BookItem(BookInfoPtr book)
    : Glib::ObjectBase(typeid(BookItem))
    , _book(std::move(book))
{
}

}
