#include "desktop/gtk/GraphicsCard.hpp"

#include "files/Files.hpp"

#include <glib.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pagora {

namespace {

// The environment variables that, besides the devices, determine the GL renderer.
constexpr std::array settings = { "DISPLAY", "WAYLAND_DISPLAY", "GDK_BACKEND", "LIBGL_ALWAYS_SOFTWARE",
    "GALLIUM_DRIVER", "MESA_LOADER_DRIVER_OVERRIDE", "DRI_PRIME" };

// Names of software renderers, in lower case.
constexpr std::array softwareRenderers = { "llvmpipe", "softpipe", "swrast", "software rasterizer" };

std::string variable(const char* name)
{
    const char* const value = g_getenv(name);
    return value ? value : "";
}

// Returns a text that changes when a driver is reloaded. Empty for a missing device.
std::string identity(const std::string& path)
{
    struct stat file = {};
    if (stat(path.c_str(), &file) != 0)
        return {};
    return path + ' ' + std::to_string(file.st_ino) + ' ' + std::to_string(file.st_ctim.tv_sec) + ' ';
}

// Reads until the other end is closed or the timeout has passed.
std::string readAll(int file, std::chrono::milliseconds timeout)
{
    const auto end = std::chrono::steady_clock::now() + timeout;
    std::string text;
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
        pollfd state = { file, POLLIN, 0 };
        if (left <= 0 || poll(&state, 1, static_cast<int>(left)) <= 0)
            return {};
        std::array<char, 256> part {};
        const ssize_t size = read(file, part.data(), part.size());
        if (size <= 0)
            return text;
        text.append(part.data(), static_cast<std::size_t>(size));
    }
}

std::string answerOfChild(const std::function<std::string()>& ask, std::chrono::milliseconds timeout)
{
    std::array<int, 2> ends {};
    if (pipe(ends.data()) != 0)
        return {};
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        writeAll(ends[1], ask());
        _exit(0);
    }
    close(ends[1]);
    std::string answer = child > 0 ? readAll(ends[0], timeout) : "";
    close(ends[0]);
    if (child > 0) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    return answer;
}

}

GraphicsCard::Options GraphicsCard::system()
{
    Options options;
    if (const std::string runtime = variable("XDG_RUNTIME_DIR"); !runtime.empty())
        options.answerFile = runtime + "/" PAGORA_IDENTIFIER ".graphics";
    options.askRenderer = rendererOfDisplay;
    return options;
}

GraphicsCard::GraphicsCard(Options options)
    : _options(std::move(options))
{
}

// Returns a text that identifies the graphics devices; empty if there are none. Some drivers use
// device files with other names.
std::string GraphicsCard::deviceIdentities() const
{
    std::string found = identity(_options.devices + "/nvidiactl") + identity(_options.devices + "/dxg");
    auto names = folderEntries(_options.devices + "/dri").value_or(std::vector<std::string>());
    std::ranges::sort(names);
    for (const auto& name : names) {
        if (name.starts_with("renderD"))
            found += identity(_options.devices + "/dri/" + name);
    }
    return found;
}

std::string GraphicsCard::renderer(const std::string& devices) const
{
    std::string key = devices;
    for (const char* const name : settings)
        key += std::string(name) + '=' + variable(name) + ' ';
    key += '\n';
    if (!_options.answerFile.empty()) {
        const auto kept = readFile(_options.answerFile);
        if (kept && kept->starts_with(key))
            return kept->substr(key.size());
    }
    std::string name = answerOfChild(_options.askRenderer, _options.timeout);
    // A failed query is not cached, so the next start repeats it.
    if (!name.empty() && !_options.answerFile.empty())
        writeFile(_options.answerFile, key + name);
    return name;
}

bool GraphicsCard::draws() const
{
    const std::string devices = deviceIdentities();
    if (devices.empty())
        return false;
    std::string name = renderer(devices);
    std::ranges::transform(name, name.begin(), g_ascii_tolower);
    return std::ranges::none_of(
        softwareRenderers, [&name](const char* each) { return name.find(each) != std::string::npos; });
}

}
