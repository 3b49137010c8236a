#include "reader/gtk/ReaderLayout.hpp"

#include "reader/gtk/ReaderStyle.hpp"

namespace pagora {

ReaderLayout::ReaderLayout(const std::string& name)
{
    loadReaderStyle();
    _builder = Gtk::Builder::create_from_resource("/org/pagora/Pagora/ui/" + name + ".ui");
    _content = _builder->get_widget<Gtk::Overlay>("stage");
}

}
