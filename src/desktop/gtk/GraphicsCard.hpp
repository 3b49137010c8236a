#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace pagora {

// Finds out whether a graphics card draws what programs draw by GL. Before the toolkit starts, and before there are
// other threads.
class GraphicsCard {
public:
    struct Options {
        // The folder of the kernel's device files.
        std::string devices = "/dev";
        // Keeps the name of the renderer until the person's session ends. Empty: it is not kept.
        std::string answerFile;
        // Returns the name of the renderer; empty when there is none. Called in a child process.
        std::function<std::string()> askRenderer;
        // How long the child process may take.
        std::chrono::milliseconds timeout { 1000 };
    };
    // Those of this system.
    static Options system();

    explicit GraphicsCard(Options options = system());

    // False where there is no card, or where GL is known to be drawn by the processor.
    bool draws() const;

    // The name of the renderer that GL has on the display of this session; empty when it has none. It loads the
    // drivers and connects to the display, so it is called in a child process.
    static std::string rendererOfDisplay();

private:
    std::string deviceIdentities() const;
    std::string renderer(const std::string& devices) const;

    Options _options;
};

}
