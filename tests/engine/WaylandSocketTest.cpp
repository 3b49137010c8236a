#include "desktop/gtk/WaylandSocket.hpp"

#include "tests/support/TemporaryFolder.hpp"

#include <glib.h>

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace pagora::test {

namespace {

// Sets environment variables for a test and restores them afterwards.
class WaylandSocket : public testing::Test {
protected:
    ~WaylandSocket() override
    {
        set("WAYLAND_DISPLAY", _display);
        set("XDG_RUNTIME_DIR", _runtime);
    }
    static std::optional<std::string> get(const char* name)
    {
        const char* const value = g_getenv(name);
        return value ? std::optional<std::string>(value) : std::nullopt;
    }
    static void set(const char* name, const std::optional<std::string>& value)
    {
        if (value)
            g_setenv(name, value->c_str(), TRUE);
        else
            g_unsetenv(name);
    }
    std::string prepared(const std::string& display)
    {
        set("WAYLAND_DISPLAY", display);
        prepareWaylandSocket();
        return get("WAYLAND_DISPLAY").value_or("");
    }

    TemporaryFolder _folder;
    std::optional<std::string> _display = get("WAYLAND_DISPLAY");
    std::optional<std::string> _runtime = get("XDG_RUNTIME_DIR");
};

}

TEST_F(WaylandSocket, ElsewhereIsReachedByALinkInTheRuntimeFolder)
{
    set("XDG_RUNTIME_DIR", _folder.path());
    const auto name = prepared("/elsewhere/wayland-7");
    EXPECT_EQ(std::filesystem::read_symlink(_folder.path(name)), "/elsewhere/wayland-7");
    EXPECT_EQ(prepared("/elsewhere/wayland-7"), name);
}

TEST_F(WaylandSocket, EachHasALinkOfItsOwn)
{
    set("XDG_RUNTIME_DIR", _folder.path());
    EXPECT_NE(prepared("/elsewhere/wayland-7"), prepared("/elsewhere/wayland-8"));
}

TEST_F(WaylandSocket, InTheRuntimeFolderKeepsItsName)
{
    set("XDG_RUNTIME_DIR", _folder.path());
    EXPECT_EQ(prepared("wayland-7"), "wayland-7");
}

TEST_F(WaylandSocket, KeepsItsPathWhereNoLinkCanBeMade)
{
    set("XDG_RUNTIME_DIR", _folder.path("missing"));
    EXPECT_EQ(prepared("/elsewhere/wayland-7"), "/elsewhere/wayland-7");
}

}
