#pragma once

#include <webkit/webkit.h>

#include <functional>

namespace pagora {

// Denies the view's pages everything that involves the user or the desktop: permissions, dialogs, file choosers,
// printing, full screen, windows. The context menu has only "Copy". In effect for the lifetime of the view.
void refusePrivileges(WebKitWebView* view);

// Sets the callback for each denied request; null removes it.
void setRefusalHandler(WebKitWebView* view, std::function<void()> handler);

}
