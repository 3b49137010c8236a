#include "confinement/gtk/PageRefusals.hpp"

#include <memory>
#include <utility>

namespace pagora {

namespace {

constexpr auto handlerKey = "pagora-refusal-handler";

void tell(WebKitWebView* view)
{
    using Handler = std::function<void()>;
    if (const auto* const handler = static_cast<Handler*>(g_object_get_data(G_OBJECT(view), handlerKey))) {
        // The handler may be replaced during the call.
        const auto call = *handler;
        call();
    }
}

gboolean refuse(WebKitWebView* view)
{
    tell(view);
    return TRUE;
}

gboolean denyPermission(WebKitWebView* view, WebKitPermissionRequest* request, gpointer)
{
    webkit_permission_request_deny(request);
    tell(view);
    return TRUE;
}

gboolean denyPermissionState(WebKitWebView* view, WebKitPermissionStateQuery* query, gpointer)
{
    webkit_permission_state_query_finish(query, WEBKIT_PERMISSION_STATE_DENIED);
    tell(view);
    return TRUE;
}

gboolean answerDialog(WebKitWebView* view, WebKitScriptDialog* dialog, gpointer)
{
    const auto type = webkit_script_dialog_get_dialog_type(dialog);
    // A page cannot prevent the user from leaving it, so leaving is confirmed. Other questions are cancelled.
    if (type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM || type == WEBKIT_SCRIPT_DIALOG_CONFIRM)
        webkit_script_dialog_confirm_set_confirmed(dialog, type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM);
    tell(view);
    return TRUE;
}

gboolean cancelFileChooser(WebKitWebView* view, WebKitFileChooserRequest* request, gpointer)
{
    webkit_file_chooser_request_cancel(request);
    tell(view);
    return TRUE;
}

gboolean cancelAuthentication(WebKitWebView* view, WebKitAuthenticationRequest* request, gpointer)
{
    webkit_authentication_request_cancel(request);
    tell(view);
    return TRUE;
}

gboolean keepCopyOnly(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*, gpointer)
{
    for (guint i = webkit_context_menu_get_n_items(menu); i-- > 0;) {
        WebKitContextMenuItem* item = webkit_context_menu_get_item_at_position(menu, i);
        if (webkit_context_menu_item_get_stock_action(item) != WEBKIT_CONTEXT_MENU_ACTION_COPY)
            webkit_context_menu_remove(menu, item);
    }
    // An empty menu is not shown.
    return webkit_context_menu_get_n_items(menu) == 0;
}

}

void refusePrivileges(WebKitWebView* view)
{
    g_signal_connect(view, "permission-request", G_CALLBACK(denyPermission), nullptr);
    g_signal_connect(view, "query-permission-state", G_CALLBACK(denyPermissionState), nullptr);
    g_signal_connect(view, "script-dialog", G_CALLBACK(answerDialog), nullptr);
    g_signal_connect(view, "run-file-chooser", G_CALLBACK(cancelFileChooser), nullptr);
    g_signal_connect(view, "authenticate", G_CALLBACK(cancelAuthentication), nullptr);
    g_signal_connect(view, "context-menu", G_CALLBACK(keepCopyOnly), nullptr);
    for (const char* signal :
        { "print", "enter-fullscreen", "run-color-chooser", "show-notification", "load-failed-with-tls-errors" })
        g_signal_connect(view, signal, G_CALLBACK(refuse), nullptr);
}

void setRefusalHandler(WebKitWebView* view, std::function<void()> handler)
{
    using Handler = std::function<void()>;
    auto kept = handler ? std::make_unique<Handler>(std::move(handler)) : nullptr;
    g_object_set_data_full(G_OBJECT(view), handlerKey, kept.release(),
        [](gpointer data) { std::default_delete<Handler>()(static_cast<Handler*>(data)); });
}

}
