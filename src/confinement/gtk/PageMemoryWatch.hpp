#pragma once

#include "base/Surroundings.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <sigc++/sigc++.h>

namespace pagora {

// Ends the engine's processes that hold too much memory. The engine measures a page only between its scripts, so that
// one whose script never ends would take all there is, and it lets pages keep what they like in the process that loads
// files. Belongs to the engine's context. Main thread.
class PageMemoryWatch {
public:
    // In bytes: what a process has for itself, and what it shares by way of memory rather than of files.
    struct Limits {
        // Of a page process.
        std::uint64_t page;
        // Of the one that loads for all pages. Past it the pages are ended too, for one of them has filled it.
        std::uint64_t network;
    };
    // Watches the program's engine processes for as long as the context lives, in the place of the watch that it had.
    static void attach(WebKitWebContext* context, Limits limits);
    // Whether a page process was ended since the last time that it was asked.
    static bool takeEnded(WebKitWebContext* context);

    explicit PageMemoryWatch(Limits limits, Surroundings where = surroundings());
    ~PageMemoryWatch();
    PageMemoryWatch(const PageMemoryWatch&) = delete;
    PageMemoryWatch& operator=(const PageMemoryWatch&) = delete;

    // Looks once; done again and again.
    void look();

private:
    void lookEvery(unsigned milliseconds);

    Limits _limits;
    Surroundings _where;
    bool _hasEnded = false;
    sigc::connection _timer;
};

}
