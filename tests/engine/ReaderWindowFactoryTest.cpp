#include "desktop/gtk/Toplevel.hpp"
#include "page_view/gtk/PageView.hpp"
#include "reader/EpubWindow.hpp"
#include "reader_windows/gtk/ReaderWindowFactoryGtk.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <filesystem>

namespace pagora::test {

using ReaderWindowFactoryTest = ToolkitTest;

TEST_F(ReaderWindowFactoryTest, AWindowThatIsMadeEndsThePreparationOfTheNext)
{
    const TemporaryFolder folder;
    GLibRunLoop runLoop;
    Toplevel toplevel;
    ReaderWindowFactoryGtk windows(folder.path(), toplevel, runLoop);
    windows.prepareNextWindow();
    const auto window = windows.makeEpubWindow();
    auto* const view = static_cast<PageView&>(window->webView()).engineView();
    bool isLoaded = false;
    g_signal_connect(view, "load-changed", G_CALLBACK(+[](WebKitWebView* view, WebKitLoadEvent event, bool* isLoaded) {
        *isLoaded = event == WEBKIT_LOAD_FINISHED;
    }),
        &isLoaded);
    webkit_web_view_load_plain_text(view, "text");
    ASSERT_TRUE(waitUntil([&] { return isLoaded; }));
    g_signal_handlers_disconnect_by_data(view, &isLoaded);
    // No other page was loaded in the meantime.
    EXPECT_FALSE(std::filesystem::exists(folder.path("_engine/warm-page.xhtml")));
}

}
