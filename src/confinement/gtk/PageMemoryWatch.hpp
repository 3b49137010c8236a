#pragma once

#include "base/Surroundings.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <sigc++/sigc++.h>

namespace pagora {

// Kills engine processes that exceed their memory limit. The engine checks a page only between its scripts, so a script
// that never ends could allocate all memory, and it does not limit what pages store in the network process. Belongs to
// the web context. Main thread.
class PageMemoryWatch {
public:
    // In bytes: private memory plus shared memory without files.
    struct Limits {
        // Of a page process.
        std::uint64_t page;
        // Of the network process. Above it the page processes are killed too, because one of them has filled it.
        std::uint64_t network;
    };
    // Watches the engine processes for the lifetime of the context. Replaces an earlier watch.
    static void attach(WebKitWebContext* context, Limits limits);
    // Whether a page process was killed since the last call.
    static bool takeEnded(WebKitWebContext* context);

    explicit PageMemoryWatch(Limits limits, Surroundings where = surroundings());
    ~PageMemoryWatch();
    PageMemoryWatch(const PageMemoryWatch&) = delete;
    PageMemoryWatch& operator=(const PageMemoryWatch&) = delete;

    // Checks once; called repeatedly.
    void look();

private:
    void lookEvery(unsigned milliseconds);

    Limits _limits;
    Surroundings _where;
    // The processor time of the engine processes at the last look, in clock ticks.
    std::uint64_t _work = 0;
    bool _hasEnded = false;
    sigc::connection _timer;
};

}
