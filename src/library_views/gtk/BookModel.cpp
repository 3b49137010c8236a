#include "library_views/gtk/BookModel.hpp"

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
    // The toolkit creates new widgets for the items of a changed range, and searches all of them for selected ones.
    const auto replaced = shorter - head - tail;
    const auto rest = static_cast<guint>(head + replaced);
    const auto removed = static_cast<guint>(oldSize - tail) - rest;
    const auto added = static_cast<guint>(newSize - tail) - rest;
    updateItems(static_cast<guint>(head), rest);
    moveItems(rest, removed, added);
    if (removed || added)
        items_changed(rest, removed, added);
}

std::vector<Glib::RefPtr<BookItem>> BookModel::itemsFrom(guint position) const
{
    std::vector<Glib::RefPtr<BookItem>> items;
    for (auto item = _items->lower_bound(position); item != _items->end(); ++item) {
        item->second->reference();
        items.push_back(Glib::make_refptr_for_instance(item->second));
    }
    return items;
}

void BookModel::updateItems(guint first, guint end)
{
    for (const auto& item : itemsFrom(first)) {
        if (item->position() >= end)
            break;
        item->setBook(_books.at(item->position()));
    }
}

void BookModel::moveItems(guint position, guint removed, guint added)
{
    if (!removed && !added)
        return;
    const auto items = itemsFrom(position);
    for (const auto& item : items)
        item->leave();
    for (const auto& item : items) {
        if (item->position() >= position + removed)
            item->enter(_items, item->position() - removed + added);
    }
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
    if (const auto existing = _items->find(position); existing != _items->end())
        return existing->second->gobj_copy();
    ++_itemsMade;
    const auto item = BookItem::create(_books.at(position));
    item->enter(_items, position);
    return item->gobj_copy();
}

}
