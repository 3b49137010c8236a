#include "library_views/gtk/BookItem.hpp"

#include <utility>

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

BookItem::~BookItem()
{
    leave();
}

void BookItem::setBook(BookInfoPtr book)
{
    if (_book == book)
        return;
    _book = std::move(book);
    _bookChanged.emit();
}

void BookItem::enter(const std::shared_ptr<BookItems>& items, guint position)
{
    leave();
    items->insert_or_assign(position, this);
    _items = items;
    _position = position;
}

void BookItem::leave()
{
    if (const auto items = _items.lock())
        items->erase(_position);
    _items.reset();
}

}
