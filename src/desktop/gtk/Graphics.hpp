#pragma once

#include "desktop/gtk/GraphicsCard.hpp"

#include <gio/gio.h>

namespace pagora {

// Decides what the toolkit and the page engine draw with. Where no graphics card draws and the person has not chosen
// (GSK_RENDERER), the processor draws without GL. What draws by GL and is not used is not loaded; it would take time
// and memory at each start. Before the toolkit starts, and before there are other threads.
void prepareGraphics(const GraphicsCard& card = GraphicsCard());

// Programs that are started with it do not get these decisions. The caller owns it.
GAppLaunchContext* makeLaunchContext();

}
