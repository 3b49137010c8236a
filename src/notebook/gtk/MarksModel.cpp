#include "notebook/gtk/MarksModel.hpp"

#include <utility>

namespace pagora {

Glib::RefPtr<MarksModel> MarksModel::create()
{
    return Glib::make_refptr_for_instance<MarksModel>(new MarksModel);
}

MarksModel::MarksModel()
    : Glib::ObjectBase(typeid(MarksModel))
{
}

void MarksModel::setLines(const ListedMarks& listed)
{
    const auto before = std::exchange(_lines, listed.lines);
    const auto same = listed.sameAtStart + listed.sameAtEnd;
    const auto removed = static_cast<guint>(before->size() - same);
    const auto added = static_cast<guint>(_lines->size() - same);
    if (removed || added)
        items_changed(static_cast<guint>(listed.sameAtStart), removed, added);
}

GType MarksModel::get_item_type_vfunc()
{
    return Glib::Object::get_type();
}

guint MarksModel::get_n_items_vfunc()
{
    return static_cast<guint>(_lines->size());
}

gpointer MarksModel::get_item_vfunc(guint position)
{
    if (position >= _lines->size())
        return nullptr;
    ++_itemsMade;
    return g_object_new(Glib::Object::get_type(), nullptr);
}

}
