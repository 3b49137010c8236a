#pragma once

#include <webkit/webkit.h>

#include <functional>

namespace pagora {

// Keeps the view's pages from asking the user or the desktop for anything: permissions, dialogs, files, printing, full
// screen, other windows. Of the context menu only "Copy" is left. Holds for as long as the view lives.
void refusePrivileges(WebKitWebView* view);

// Called for each that is refused; null calls nobody.
void setRefusalHandler(WebKitWebView* view, std::function<void()> handler);

}
