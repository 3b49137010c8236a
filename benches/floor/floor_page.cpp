// The minimum program that shows a page: a warm web view in a window. Space loads the file, Escape a blank page:
// floor_page FILE WIDTH HEIGHT TEXT-SIZE. TEXT-SIZE is a multiple of the default size.

#include <webkit/webkit.h>

#include <string>

namespace {

struct Page {
    std::string url;
    WebKitWebView* view = nullptr;
};

gboolean keyPressed(GtkEventControllerKey*, guint key, guint, GdkModifierType, gpointer data)
{
    const auto& page = *static_cast<Page*>(data);
    if (key == GDK_KEY_space)
        webkit_web_view_load_uri(page.view, page.url.c_str());
    else if (key == GDK_KEY_Escape)
        webkit_web_view_load_uri(page.view, "about:blank");
    return TRUE;
}

}

int main(int argc, char** argv)
{
    if (argc < 5)
        return 1;
    gtk_init();
    Page page;
    page.url = g_filename_to_uri(argv[1], nullptr, nullptr);
    page.view = WEBKIT_WEB_VIEW(webkit_web_view_new());
    auto* settings = webkit_web_view_get_settings(page.view);
    webkit_settings_set_hardware_acceleration_policy(settings, WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    webkit_settings_set_zoom_text_only(settings, TRUE);
    webkit_web_view_set_zoom_level(page.view, std::stod(argv[4]));
    auto* window = gtk_window_new();
    gtk_window_set_title(GTK_WINDOW(window), "floor");
    gtk_window_set_decorated(GTK_WINDOW(window), FALSE);
    gtk_window_set_default_size(GTK_WINDOW(window), std::stoi(argv[2]), std::stoi(argv[3]));
    gtk_window_set_child(GTK_WINDOW(window), GTK_WIDGET(page.view));
    auto* keys = gtk_event_controller_key_new();
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
    g_signal_connect(keys, "key-pressed", G_CALLBACK(keyPressed), &page);
    gtk_widget_add_controller(window, keys);
    webkit_web_view_load_uri(page.view, "about:blank");
    gtk_window_present(GTK_WINDOW(window));
    auto* loop = g_main_loop_new(nullptr, FALSE);
    g_main_loop_run(loop);
}
