#include "library_views/gtk/BookModel.hpp"

#include "library_views/gtk/BookItem.hpp"

#include <algorithm>
#include <utility>

namespace pagora {

Glib::RefPtr<BookModel> BookModel::create()
{
    return Glib::make_refptr_for_instance<BookModel>(new BookModel);
}

BookModel::BookModel()
    : Glib::ObjectBase(typeid(BookModel))
{
}

void BookModel::setBooks(ShownBooks books)
{
    const auto before = std::exchange(_books, std::move(books));
    const auto oldSize = before.size();
    const auto newSize = _books.size();
    const auto shorter = std::min(oldSize, newSize);
    std::size_t head = 0;
    while (head < shorter && before.at(head) == _books.at(head))
        ++head;
    std::size_t tail = 0;
    while (tail < shorter - head && before.at(oldSize - 1 - tail) == _books.at(newSize - 1 - tail))
        ++tail;
    const auto removed = static_cast<guint>(oldSize - head - tail);
    const auto added = static_cast<guint>(newSize - head - tail);
    if (removed || added)
        items_changed(static_cast<guint>(head), removed, added);
}

GType BookModel::get_item_type_vfunc()
{
    return Glib::Object::get_type();
}

guint BookModel::get_n_items_vfunc()
{
    return static_cast<guint>(_books.size());
}

gpointer BookModel::get_item_vfunc(guint position)
{
    if (position >= _books.size())
        return nullptr;
    ++_itemsMade;
    return BookItem::create(_books.at(position))->gobj_copy();
}

}
