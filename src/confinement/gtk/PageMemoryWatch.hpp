#pragma once

#include "base/Surroundings.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <sigc++/sigc++.h>

namespace pagora {

// Kills engine processes that exceed their memory limit. The engine checks a page only between its scripts, so an
// endless script could allocate all memory, and it does not limit what pages store in the network process. Belongs to
// the web context. Main thread only.
class PageMemoryWatch {
public:
    // Limits in bytes of private memory plus shared memory without files.
    struct Limits {
        // For a page process.
        std::uint64_t page;
        // For the network process. Above it the page processes are killed too, because one of them has filled it.
        std::uint64_t network;
    };
    // Watches the engine processes for the lifetime of the context. Replaces an earlier watch.
    static void attach(WebKitWebContext* context, Limits limits);
    // Returns whether a page process was killed since the last call.
    static bool takeEnded(WebKitWebContext* context);

    explicit PageMemoryWatch(Limits limits, Surroundings where = surroundings());
    ~PageMemoryWatch();
    PageMemoryWatch(const PageMemoryWatch&) = delete;
    PageMemoryWatch& operator=(const PageMemoryWatch&) = delete;

    // Checks all processes once. Called repeatedly.
    void look();

private:
    void lookEvery(unsigned milliseconds);

    Limits _limits;
    Surroundings _where;
    // The processor time of the engine processes at the last check, in clock ticks.
    std::uint64_t _work = 0;
    bool _hasEnded = false;
    sigc::connection _timer;
};

}
