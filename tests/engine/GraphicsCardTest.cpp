#include "desktop/gtk/GraphicsCard.hpp"

#include "desktop/gtk/Graphics.hpp"
#include "files/Files.hpp"
#include "tests/support/ForkedTest.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtk/gtk.h>

#include <unistd.h>

namespace pagora::test {

namespace {

class GraphicsCardTest : public testing::Test {
protected:
    void addDevice(const std::string& name)
    {
        createFolder(_folder.path("dev/dri"));
        ASSERT_TRUE(writeFile(_folder.path("dev/" + name), ""));
    }

    // A graphics card whose renderer is named by `askRenderer`.
    GraphicsCard card(std::function<std::string()> askRenderer) const
    {
        return GraphicsCard({ _folder.path("dev"), _folder.path("answer"), std::move(askRenderer), _timeout });
    }
    GraphicsCard card(const std::string& renderer) const
    {
        return card([renderer] { return renderer; });
    }

    // Never returns, in a child process.
    static std::string hang()
    {
        while (true)
            pause();
    }

    static std::string variable(const char* name)
    {
        const char* const value = g_getenv(name);
        return value ? value : "";
    }

    TemporaryFolder _folder;
    std::chrono::milliseconds _timeout { 60000 };
};

}

TEST_F(GraphicsCardTest, WithoutADeviceNoCardDraws)
{
    EXPECT_FALSE(card("Mesa Intel(R) Graphics").draws());
    addDevice("dri/card0");
    EXPECT_FALSE(card("Mesa Intel(R) Graphics").draws());
}

TEST_F(GraphicsCardTest, CardWithARenderNodeDraws)
{
    addDevice("dri/renderD128");
    EXPECT_TRUE(card("Mesa Intel(R) Graphics").draws());
}

TEST_F(GraphicsCardTest, CardWithADeviceOfItsOwnDraws)
{
    addDevice("nvidiactl");
    EXPECT_TRUE(card("A card/PCIe/SSE2").draws());
}

TEST_F(GraphicsCardTest, DriverThatUsesTheProcessorIsNoCard)
{
    addDevice("dri/renderD128");
    EXPECT_FALSE(card("llvmpipe (LLVM 15.0.6, 256 bits)").draws());
    removeItem(_folder.path("answer"));
    EXPECT_FALSE(card("softpipe").draws());
}

TEST_F(GraphicsCardTest, DriverOfAVirtualDisplayUsesTheProcessor)
{
    addDevice("dri/renderD128");
    EXPECT_FALSE(card(GraphicsCard::rendererOfDisplay).draws());
}

TEST_F(GraphicsCardTest, DriverThatHangsIsLeftToTheToolkit)
{
    addDevice("dri/renderD128");
    _timeout = std::chrono::milliseconds(50);
    EXPECT_TRUE(card(hang).draws());
}

TEST_F(GraphicsCardTest, DriverThatCrashesIsLeftToTheToolkit)
{
    addDevice("dri/renderD128");
    EXPECT_TRUE(card([]() -> std::string { _exit(1); }).draws());
}

TEST_F(GraphicsCardTest, DriverIsAskedOnceInASession)
{
    addDevice("dri/renderD128");
    EXPECT_FALSE(card("llvmpipe").draws());
    EXPECT_FALSE(card("Mesa Intel(R) Graphics").draws());
}

TEST_F(GraphicsCardTest, DriverIsAskedAgainWhenADeviceIsAdded)
{
    addDevice("dri/renderD128");
    EXPECT_FALSE(card("llvmpipe").draws());
    addDevice("dri/renderD129");
    EXPECT_TRUE(card("Mesa Intel(R) Graphics").draws());
}

TEST_F(GraphicsCardTest, WithoutACardTheToolkitDrawsByTheProcessor)
{
    inForkedProcess([this] {
        g_unsetenv("GSK_RENDERER");
        prepareGraphics(card(""));
        EXPECT_EQ(variable("GSK_RENDERER"), "cairo");
    });
}

TEST_F(GraphicsCardTest, WithACardTheToolkitChooses)
{
    addDevice("dri/renderD128");
    inForkedProcess([this] {
        g_unsetenv("GSK_RENDERER");
        prepareGraphics(card("Mesa Intel(R) Graphics"));
        EXPECT_EQ(variable("GSK_RENDERER"), "");
    });
}

TEST_F(GraphicsCardTest, ChosenRendererStands)
{
    inForkedProcess([this] {
        g_setenv("GSK_RENDERER", "gl", TRUE);
        prepareGraphics(card(""));
        EXPECT_EQ(variable("GSK_RENDERER"), "gl");
    });
}

TEST_F(GraphicsCardTest, EngineUsesNoGlBesideAToolkitThatDoesNotNoticeIt)
{
    inForkedProcess([this] {
        g_setenv("GSK_RENDERER", "gl", TRUE);
        g_setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "0", TRUE);
        prepareGraphics(card(""));
        EXPECT_EQ(variable("WEBKIT_DISABLE_DMABUF_RENDERER"), gtk_get_minor_version() < 18 ? "1" : "0");
    });
}

TEST_F(GraphicsCardTest, OtherProgramsDoNotGetTheChoice)
{
    inForkedProcess([this] {
        g_unsetenv("GSK_RENDERER");
        g_unsetenv("GDK_DEBUG");
        g_unsetenv("GDK_DISABLE");
        prepareGraphics(card(""));
        GAppLaunchContext* const context = makeLaunchContext();
        char** const environment = g_app_launch_context_get_environment(context);
        EXPECT_EQ(g_environ_getenv(environment, "GSK_RENDERER"), nullptr);
        EXPECT_EQ(g_environ_getenv(environment, "GDK_DEBUG"), nullptr);
        EXPECT_EQ(g_environ_getenv(environment, "GDK_DISABLE"), nullptr);
        g_strfreev(environment);
        g_object_unref(context);
    });
}

}
