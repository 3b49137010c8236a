#pragma once

#include "desktop/gtk/GraphicsCard.hpp"

#include <gio/gio.h>

namespace pagora {

// Chooses the renderer of the toolkit and the page engine: cairo without GL if no graphics card renders and the user
// has not set GSK_RENDERER. GL libraries that are not used are not loaded, which saves startup time and memory. Called
// before the toolkit starts and before other threads exist.
void prepareGraphics(const GraphicsCard& card = GraphicsCard());

// Returns a launch context without these settings. The caller owns it.
GAppLaunchContext* makeLaunchContext();

}
