#pragma once

#include <glib.h>

#include <functional>

namespace pagora {

// Runs the default main loop until the condition is true.
inline void serveUntil(const std::function<bool()>& condition)
{
    while (!condition())
        g_main_context_iteration(nullptr, TRUE);
}

// Runs the default main loop for this time.
inline void serveFor(unsigned milliseconds)
{
    bool isOver = false;
    g_timeout_add_once(
        milliseconds, [](gpointer over) { *static_cast<bool*>(over) = true; }, &isOver);
    serveUntil([&] { return isOver; });
}

}
