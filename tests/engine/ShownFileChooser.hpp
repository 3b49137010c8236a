#pragma once

#include <gtk/gtk.h>

namespace pagora::test {

// The toolkit's file dialog, which is used without a portal; null if none is open.
inline GtkFileChooser* shownFileChooser()
{
    GListModel* const windows = gtk_window_get_toplevels();
    for (guint i = 0; i < g_list_model_get_n_items(windows); ++i) {
        g_autoptr(GtkWidget) each = GTK_WIDGET(g_list_model_get_item(windows, i));
        if (GTK_IS_FILE_CHOOSER(each) && gtk_widget_get_mapped(each))
            return GTK_FILE_CHOOSER(each);
    }
    return nullptr;
}

}
