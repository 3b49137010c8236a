#pragma once

#include "platform/Surroundings.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <sigc++/sigc++.h>
#include <sys/types.h>

namespace pagora {

// Ends the page processes that hold too much memory. The engine measures a page only between its scripts, so that one
// whose script never ends would take all there is. Belongs to the engine's context. Main thread.
class PageMemoryWatch {
public:
    // Watches the program's page processes for as long as the context lives, in the place of the watch that it had.
    // `limit` counts the bytes that a process does not share with others.
    static void attach(WebKitWebContext* context, std::uint64_t limit);
    // Whether a page process was ended since the last time that it was asked.
    static bool takeEnded(WebKitWebContext* context);

    explicit PageMemoryWatch(std::uint64_t limit, Surroundings where = surroundings());
    ~PageMemoryWatch();
    PageMemoryWatch(const PageMemoryWatch&) = delete;
    PageMemoryWatch& operator=(const PageMemoryWatch&) = delete;

    // Looks once; done every second.
    void look();

private:
    // The processes below this one.
    void lookBelow(pid_t parent, int depth);
    void check(pid_t process);

    std::uint64_t _limit;
    Surroundings _where;
    bool _hasEnded = false;
    sigc::connection _timer;
};

}
