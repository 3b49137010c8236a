#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace pagora {

// Determines whether a graphics card renders GL. Called before the toolkit starts and before other threads exist.
class GraphicsCard {
public:
    struct Options {
        // The folder of the kernel's device files.
        std::string devices = "/dev";
        // Caches the renderer's name for the session; empty for no cache.
        std::string answerFile;
        // Returns the name of the renderer; empty when there is none. Called in a child process.
        std::function<std::string()> askRenderer;
        // How long the child process may take.
        std::chrono::milliseconds timeout { 1000 };
    };
    // Those of this system.
    static Options system();

    explicit GraphicsCard(Options options = system());

    // False without a card or with a software renderer.
    bool draws() const;

    // The GL renderer's name on this session's display; empty when there is none. Loads drivers and connects to the
    // display, so it is called in a child process.
    static std::string rendererOfDisplay();

private:
    std::string deviceIdentities() const;
    std::string renderer(const std::string& devices) const;

    Options _options;
};

}
