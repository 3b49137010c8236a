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
        // File that caches the renderer's name for the session; empty for no cache.
        std::string answerFile;
        // Returns the name of the renderer; empty if there is none. Called in a child process.
        std::function<std::string()> askRenderer;
        // Time limit for the child process.
        std::chrono::milliseconds timeout { 1000 };
    };
    // Returns the options for this system.
    static Options system();

    explicit GraphicsCard(Options options = system());

    // Returns false if there is no card or the renderer is in software.
    bool draws() const;

    // Returns the name of the GL renderer on this session's display; empty if there is none. Loads drivers and connects
    // to the display, so it is called in a child process.
    static std::string rendererOfDisplay();

private:
    std::string deviceIdentities() const;
    std::string renderer(const std::string& devices) const;

    Options _options;
};

}
