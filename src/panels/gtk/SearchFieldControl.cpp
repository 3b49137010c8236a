#include "panels/gtk/SearchFieldControl.hpp"

#include <utility>

namespace pagora {

namespace {

void call(gpointer, gpointer action)
{
    if (const auto& run = *static_cast<std::function<void()>*>(action))
        run();
}

}

SearchFieldControl::SearchFieldControl(Gtk::Widget& entry)
    : WidgetControl(entry)
    , _entry(GTK_EDITABLE(entry.gobj()))
{
    g_signal_connect(_entry, "activate", G_CALLBACK(call), &_search);
    g_signal_connect(_entry, "stop-search", G_CALLBACK(call), &_leave);
    g_signal_connect(_entry, "changed", G_CALLBACK(call), &_changed);
}

SearchFieldControl::~SearchFieldControl()
{
    g_signal_handlers_disconnect_by_data(_entry, &_search);
    g_signal_handlers_disconnect_by_data(_entry, &_leave);
    g_signal_handlers_disconnect_by_data(_entry, &_changed);
}

void SearchFieldControl::setStringValue(const std::string& text)
{
    gtk_editable_set_text(_entry, text.c_str());
}

std::string SearchFieldControl::stringValue() const
{
    return gtk_editable_get_text(_entry);
}

void SearchFieldControl::setActions(std::function<void()> search, std::function<void()> leave)
{
    _search = std::move(search);
    _leave = std::move(leave);
}

}
