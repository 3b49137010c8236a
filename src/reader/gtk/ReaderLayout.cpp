#include "reader/gtk/ReaderLayout.hpp"

#include "desktop/gtk/StyleSheet.hpp"

namespace pagora {

ReaderLayout::ReaderLayout(const std::string& name)
{
    addStyleSheet("reader.css");
    _builder = Gtk::Builder::create_from_resource("/org/pagora/Pagora/ui/" + name + ".ui");
    _content = _builder->get_widget<Gtk::Overlay>("stage");
}

}
