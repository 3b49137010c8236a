#include "library_views/gtk/BookModel.hpp"

#include "library_views/gtk/BookItem.hpp"

#include <algorithm>

namespace pagora {

Glib::RefPtr<BookModel> BookModel::create()
{
    return Glib::make_refptr_for_instance<BookModel>(new BookModel);
}

BookModel::BookModel()
    : Glib::ObjectBase(typeid(BookModel))
{
}

void BookModel::setBooks(BookArray books)
{
    const auto before = std::exchange(_books, std::move(books));
    const auto [oldFirst, newFirst] = std::mismatch(before->begin(), before->end(), _books->begin(), _books->end());
    const auto head = static_cast<guint>(newFirst - _books->begin());
    const auto [oldLast, newLast] = std::mismatch(
        before->rbegin(), std::make_reverse_iterator(oldFirst), _books->rbegin(), std::make_reverse_iterator(newFirst));
    const auto tail = static_cast<guint>(newLast - _books->rbegin());
    const auto removed = static_cast<guint>(before->size()) - head - tail;
    const auto added = static_cast<guint>(_books->size()) - head - tail;
    if (removed || added)
        items_changed(head, removed, added);
}

GType BookModel::get_item_type_vfunc()
{
    return Glib::Object::get_type();
}

guint BookModel::get_n_items_vfunc()
{
    return static_cast<guint>(_books->size());
}

gpointer BookModel::get_item_vfunc(guint position)
{
    if (position >= _books->size())
        return nullptr;
    ++_itemsMade;
    return BookItem::create((*_books)[position])->gobj_copy();
}

}
