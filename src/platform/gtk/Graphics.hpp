#pragma once

#include <gio/gio.h>

namespace pagora {

// Where the toolkit is told to draw by the processor (GSK_RENDERER=cairo), keeps it from loading what draws by a
// graphics card, which is never used then and takes time and memory at each start. Before the toolkit starts, and
// before there are other threads.
void leaveOutUnusedGraphics();

// Programs that are started with it do not come to know of that. The caller owns it.
GAppLaunchContext* makeLaunchContext();

}
