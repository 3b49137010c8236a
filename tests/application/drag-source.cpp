// A drag source for files: drag-source [--copy-only] FILE... A drag can start anywhere in the window.

#include <gtk/gtk.h>

#include <cstring>

namespace {

struct Offer {
    GSList* files = nullptr;
    GdkDragAction actions = static_cast<GdkDragAction>(GDK_ACTION_COPY | GDK_ACTION_MOVE | GDK_ACTION_LINK);
    GtkWidget* window = nullptr;
};

GdkContentProvider* prepare(GtkDragSource*, double, double, gpointer data)
{
    auto* const offer = static_cast<Offer*>(data);
    GdkFileList* const list = gdk_file_list_new_from_list(offer->files);
    GdkContentProvider* const provider = gdk_content_provider_new_typed(GDK_TYPE_FILE_LIST, list);
    g_boxed_free(GDK_TYPE_FILE_LIST, list);
    return provider;
}

void show(Offer& offer)
{
    offer.window = gtk_window_new();
    gtk_window_set_title(GTK_WINDOW(offer.window), "Drag Source");
    gtk_window_set_decorated(GTK_WINDOW(offer.window), FALSE);
    gtk_window_set_default_size(GTK_WINDOW(offer.window), 200, 120);
    GtkWidget* const handle = gtk_label_new("Drag from here");
    GtkDragSource* const source = gtk_drag_source_new();
    gtk_drag_source_set_actions(source, offer.actions);
    g_signal_connect(source, "prepare", G_CALLBACK(prepare), &offer);
    gtk_widget_add_controller(handle, GTK_EVENT_CONTROLLER(source));
    gtk_window_set_child(GTK_WINDOW(offer.window), handle);
    gtk_window_present(GTK_WINDOW(offer.window));
}

}

int main(int argumentCount, char** arguments)
{
    gtk_init();
    Offer offer;
    for (int i = 1; i < argumentCount; ++i) {
        if (std::strcmp(arguments[i], "--copy-only") == 0)
            offer.actions = GDK_ACTION_COPY;
        else
            offer.files = g_slist_append(offer.files, g_file_new_for_commandline_arg(arguments[i]));
    }
    show(offer);
    while (g_list_model_get_n_items(gtk_window_get_toplevels()) > 0)
        g_main_context_iteration(nullptr, TRUE);
    g_slist_free_full(offer.files, g_object_unref);
    return 0;
}
