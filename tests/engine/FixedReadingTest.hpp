#pragma once

#include "base/Log.hpp"
#include "base/Resource.hpp"
#include "desktop/gtk/Toplevel.hpp"
#include "fixed/FixedLayoutWindowController.hpp"
#include "fixed/PreparedPages.hpp"
#include "fixed/gtk/FixedWindowGtk.hpp"
#include "reader_windows/gtk/ReaderWindowFactoryGtk.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/engine/PageFaults.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeReaderHub.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/WitnessServer.hpp"

#include <gtkmm/settings.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

namespace pagora::test {

inline std::string ownScript(const std::string& name)
{
    return resourceBytes("/org/pagora/Pagora/scripts/" + name + ".js").value_or("");
}

// Returns the answers of the scaling script for a page of 600 by 800 at half its size, in a view of 500 by 500.
inline std::string statedScript(const std::string& name)
{
    if (name != "rescaling")
        return {};
    return "var Xscale = 0.5; function init() {} function scale() {}"
           "function getWidth(of) { return of === 'win' ? '500' : '600'; }"
           "function getHeight(of) { return of === 'win' ? '500' : '800'; }";
}

inline std::string page(const std::string& body, const std::string& viewport = "width=600, height=800")
{
    return "<html xmlns='http://www.w3.org/1999/xhtml'><head><title>Page</title><meta name='viewport' content='"
        + viewport + "'/><style>body{margin:0}</style></head><body>" + body + "</body></html>";
}

// Records the colour in the middle of the right half of a widget in each frame.
class SeenColors {
public:
    explicit SeenColors(GtkWidget* widget)
        : _widget(widget)
        , _clock(gtk_widget_get_frame_clock(widget))
        , _handler(g_signal_connect(_clock, "after-paint", G_CALLBACK(&SeenColors::frameDrawn), this))
    {
    }
    ~SeenColors() { g_signal_handler_disconnect(_clock, _handler); }
    SeenColors(const SeenColors&) = delete;
    SeenColors& operator=(const SeenColors&) = delete;

    const std::set<std::uint32_t>& colors() const { return _colors; }

private:
    static void frameDrawn(GdkFrameClock*, gpointer self)
    {
        auto& seen = *static_cast<SeenColors*>(self);
        g_autoptr(GdkPaintable) paintable = gtk_widget_paintable_new(seen._widget);
        const int width = gdk_paintable_get_intrinsic_width(paintable);
        const int height = gdk_paintable_get_intrinsic_height(paintable);
        GtkSnapshot* snapshot = gtk_snapshot_new();
        gdk_paintable_snapshot(paintable, snapshot, width, height);
        GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
        if (!node)
            return;
        std::uint32_t pixel = 0;
        cairo_surface_t* surface = cairo_image_surface_create_for_data(
            reinterpret_cast<unsigned char*>(&pixel), CAIRO_FORMAT_ARGB32, 1, 1, sizeof pixel);
        cairo_t* context = cairo_create(surface);
        cairo_translate(context, -0.75 * width, -0.5 * height);
        gsk_render_node_draw(node, context);
        cairo_destroy(context);
        cairo_surface_destroy(surface);
        gsk_render_node_unref(node);
        seen._colors.insert(pixel & 0xFFFFFF);
    }

    GtkWidget* _widget;
    GdkFrameClock* _clock;
    gulong _handler;
    std::set<std::uint32_t> _colors;
};

// A fixed-layout reader in a window, with pages written by the test.
class FixedReadingTest : public ToolkitTest {
protected:
    FixedReadingTest() { std::filesystem::create_directories(_book); }
    ~FixedReadingTest() override
    {
        _seen.reset();
        _controller.reset();
        settle();
    }

    Url write(const std::string& name, const std::string& content)
    {
        std::ofstream(_book + "/" + name, std::ios::binary) << content;
        return Url::file(_book + "/" + name);
    }
    // Pages whose files contain their numbers, from 1.
    std::vector<Url> writePages(int count)
    {
        std::vector<Url> pages;
        for (int i = 1; i <= count; ++i)
            pages.push_back(write("page" + std::to_string(i) + ".xhtml", page("<h1>" + std::to_string(i) + "</h1>")));
        return pages;
    }

    // Opens the pages in a window of this size, and waits for the first one.
    void open(const std::vector<Url>& pages, const ScriptResources& scripts = ownScript, double width = 900,
        double height = 700, const std::optional<std::vector<ContentsEntry>>& contents = std::nullopt)
    {
        auto made = _windows.makeFixedWindow();
        _window = static_cast<FixedWindowGtk*>(made.get());
        _controller = std::make_unique<FixedLayoutWindowController>(std::move(made), _state, _runLoop, _hub, scripts);
        window().setFrame({ 30, 40, width, height });
        window().makeKeyAndOrderFront();
        ASSERT_TRUE(waitUntil([&] { return webView().frame().width > 1; }));
        webView().setBookFolder(_book);
        if (_watchesColors)
            _seen = std::make_unique<SeenColors>(_window->parts().widget<Gtk::Widget>("pagePlace").gobj());
        reader().loadSplits(pages, contents);
        settlePage();
    }
    void settlePage()
    {
        ASSERT_TRUE(waitUntil([&] { return reader().isSettled() && !webView().isHidden(); }));
    }
    // Waits until the page after this one is ready.
    void waitForNextPage()
    {
        ASSERT_TRUE(waitUntil([&] { return dynamic_cast<PreparedPages&>(webView()).isReady(); }));
    }
    void turn(int tag)
    {
        reader().changePage(tag);
        settlePage();
    }

    bool pressInWindow(guint key) { return press(_window->parts().window.window().gobj(), key); }

    Window& window() { return _controller->window(); }
    WebView& webView() { return _controller->webView(); }
    FixedEpubController& reader() { return *_controller->_fixedController(); }
    std::string label() { return _window->locLabel().stringValue(); }
    bool missingPageIsShown() { return _window->parts().widget<Gtk::Widget>("missingPage").get_mapped(); }
    std::string evaluate(const std::string& script)
    {
        auto result = std::make_shared<std::optional<std::string>>();
        const auto read
            = [](WebView& view, std::string text, std::shared_ptr<std::optional<std::string>> into) -> Task<void> {
            *into = co_await view.evaluateScript(text);
        };
        const auto task = read(webView(), script, result);
        EXPECT_TRUE(waitUntil([&] { return result->has_value(); })) << script;
        return result->value_or("no answer");
    }
    // Returns the faults of the page's position in its view; see `PageFaults.hpp`.
    std::string faults() { return evaluate(pageFaults); }
    void expectNoFaults()
    {
        EXPECT_TRUE(waitUntil([&] { return faults().empty(); })) << faults();
    }
    void expectThatThePageFillsItsView()
    {
        EXPECT_TRUE(waitUntil([&] {
            const auto view = webView().frame();
            return std::abs(view.width / view.height - 0.75) < 0.01
                && evaluate("innerWidth") == std::to_string(int(view.width));
        })) << webView().frame().width
            << " x " << webView().frame().height;
        expectNoFaults();
    }
    // Resizes the window and waits until the page has followed.
    void resizeTo(double width, double height)
    {
        window().setFrame({ 30, 40, width, height });
        auto* const shown = GTK_WIDGET(_window->parts().window.window().gobj());
        const auto hasFollowed = [&] {
            return hasSize(shown, width, height) && evaluate(innerSize) == sizeText(webView().frame())
                && faults().empty();
        };
        EXPECT_TRUE(waitUntil(hasFollowed)) << faults();
    }

    TemporaryFolder _home;
    std::string _book = _home.path("cache/_books/book");
    std::vector<std::string> _logged;
    LogCapture _capture { [this](const std::string& line) { _logged.push_back(line); } };
    GLibRunLoop _runLoop;
    FakeReaderHub _hub;
    ReaderState _state;
    Toplevel _toplevel;
    ReaderWindowFactoryGtk _windows { _home.path("cache"), _toplevel, _runLoop };
    bool _watchesColors = false;
    std::unique_ptr<SeenColors> _seen;
    FixedWindowGtk* _window = nullptr;
    std::unique_ptr<FixedLayoutWindowController> _controller;
};

}
