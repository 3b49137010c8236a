#pragma once

#include "notebook/MarksPane.hpp"

#include <giomm/listmodel.h>

namespace pagora {

// The lines of the list of marks as a list model of the toolkit. Items are created on request and are empty: rows show
// the line at their position. Main thread only.
//
// The interface is the first base class, so that it is registered before the object is created.
class MarksModel : public Gio::ListModel, public Glib::Object {
public:
    static Glib::RefPtr<MarksModel> create();

    void setLines(const ListedMarks& listed);
    const MarkLines& lines() const { return _lines; }
    // The number of items that were created so far.
    std::size_t itemsMade() const { return _itemsMade; }

protected:
    GType get_item_type_vfunc() override;
    guint get_n_items_vfunc() override;
    gpointer get_item_vfunc(guint position) override;

private:
    MarksModel();
    MarkLines _lines = std::make_shared<const std::vector<MarkLine>>();
    std::size_t _itemsMade = 0;
};

}
