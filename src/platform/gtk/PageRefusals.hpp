#pragma once

#include <webkit/webkit.h>

namespace pagora {

// Keeps the view's pages from asking the user or the desktop for anything: permissions, dialogs, files, printing, full
// screen, other windows. Of the context menu only "Copy" is left. Holds for as long as the view lives.
void refusePrivileges(WebKitWebView* view);

}
