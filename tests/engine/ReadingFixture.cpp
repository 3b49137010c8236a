#include "tests/engine/ReadingFixture.hpp"

#include "base/Path.hpp"
#include "base/Resource.hpp"
#include "files/Files.hpp"

#include <webkit/webkit.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <mutex>
#include <ostream>

namespace pagora::test {

namespace {

constexpr auto identifier = "org.pagora.Test";

GtkWidget* engineBelow(GtkWidget* widget)
{
    if (WEBKIT_IS_WEB_VIEW(widget))
        return widget;
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
        if (auto* const found = engineBelow(child))
            return found;
    }
    return nullptr;
}

std::string scriptResource(const std::string& name)
{
    return resourceBytes("/org/pagora/Pagora/scripts/" + name + ".js").value_or("");
}

Task<void> keepResult(WebView& view, std::string script, std::shared_ptr<std::optional<std::string>> result)
{
    *result = co_await view.evaluateScript(script);
}

std::mutex linesMutex;

}

std::unique_ptr<EpubWindow> KeptReaderWindows::makeEpubWindow()
{
    auto window = _windows.makeEpubWindow();
    last = static_cast<EpubWindowGtk*>(window.get());
    return window;
}

std::unique_ptr<FixedWindow> KeptReaderWindows::makeFixedWindow()
{
    auto window = _windows.makeFixedWindow();
    lastFixed = static_cast<FixedWindowGtk*>(window.get());
    return window;
}

RunningProgram::RunningProgram(const TemporaryFolder& home)
    : defaults(home.path("Data"))
    , readerWindows(home.path("Caches/") + identifier, toplevel, runLoop)
    , controller({ { home.path("Documents"), home.path("Caches"), home.path(), identifier, "1" }, defaults, workspace,
                     runLoop, libraryWindow, readerWindows },
          scriptResource)
{
    libraryWindow.mainWindow().setFrame({ 0, 0, 1100, 760 });
    libraryWindow.mainWindow().makeKeyAndOrderFront();
    controller.applicationWillFinishLaunching();
    controller.applicationDidFinishLaunching();
}

RunningProgram::~RunningProgram()
{
    controller.cancelProcess();
    controller.finishReading();
    controller.applicationWillTerminate();
    runLoop.finishBackgroundWork();
    defaults.synchronize();
}

ReadingTest::ReadingTest()
    : _capture([this](const std::string& line) {
        const std::lock_guard lock(linesMutex);
        _lines.push_back(line);
    })
{
    restart();
}

ReadingTest::~ReadingTest()
{
    _program = nullptr;
    ToolkitTest::settle();
}

void ReadingTest::restart()
{
    _program = nullptr;
    _program = std::make_unique<RunningProgram>(_home);
    EXPECT_TRUE(waitUntil([this] { return !state().launch._initProcessing(); }));
}

void ReadingTest::import(const std::string& archive)
{
    const auto before = bookCount();
    _program->controller.draggedEpubs({ archive });
    EXPECT_TRUE(waitUntil([&] { return bookCount() > before || _program->libraryWindow.errorWin().isVisible(); }));
}

void ReadingTest::open(std::size_t index)
{
    _program->controller.sendDoubleClick(book(index));
    if (book(index)->type() == "fixed")
        settleFixed();
    else
        settle();
}

WebKitWebView* ReadingTest::engineView() const
{
    // All windows of the program share one toplevel.
    auto* const page = engineBelow(GTK_WIDGET(_program->toplevel.window().gobj()));
    return page ? WEBKIT_WEB_VIEW(page) : nullptr;
}

std::string ReadingTest::clipboard()
{
    struct Answer {
        std::string text;
        bool isRead = false;
    } answer;
    gdk_clipboard_read_text_async(
        gtk_widget_get_clipboard(GTK_WIDGET(engineView())), nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            auto& answer = *static_cast<Answer*>(data);
            char* text = gdk_clipboard_read_text_finish(GDK_CLIPBOARD(source), result, nullptr);
            answer.text = text ? text : "";
            answer.isRead = true;
            g_free(text);
        },
        &answer);
    waitUntil([&] { return answer.isRead; });
    return answer.text;
}

bool ReadingTest::pageIsLoading() const
{
    auto* const page = engineView();
    return page && webkit_web_view_is_loading(page);
}

void ReadingTest::settle()
{
    const auto isSettled = [this] {
        return state().reading._epubWindowController && !reader().bookSplits().empty() && reader().isSettled()
            && !pageIsLoading();
    };
    // Pending work may start more work. When the page has then answered a script, all its earlier messages have
    // arrived.
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(waitUntil(isSettled));
        evaluate("0");
    }
    ASSERT_TRUE(waitUntil(isSettled));
}

void ReadingTest::settleFixed()
{
    ASSERT_TRUE(waitUntil([this] {
        return state().reading._fixedWindowController && !fixedReader().bookSplits().empty()
            && fixedReader().isSettled() && !webView().isHidden();
    }));
}

WebView& ReadingTest::webView()
{
    return state().reading._fixedWindowController ? state().reading._fixedWindowController->webView()
                                                  : state().reading._epubWindowController->webView();
}

void ReadingTest::turn(int tag)
{
    reader().changePage(tag);
    settle();
}

void ReadingTest::moveSlider(double value)
{
    gboolean handled = FALSE;
    g_signal_emit_by_name(
        window().parts().widget<Gtk::Scale>("locSlider").gobj(), "change-value", GTK_SCROLL_JUMP, value, &handled);
    settle();
}

void ReadingTest::goToChapter(std::size_t index)
{
    reader().changeChapter(book()->files().at(index));
    settle();
    ASSERT_EQ(reader().activeSplitIndex(), index);
}

bool ReadingTest::isAtEnd()
{
    return reader().activeSplitIndex() + 1 == reader().bookSplits().size()
        && number("window.pageXOffset") + number("window.innerWidth") >= number("document.body.scrollWidth");
}

std::string ReadingTest::evaluate(const std::string& script)
{
    const auto result = std::make_shared<std::optional<std::string>>();
    const auto task = keepResult(webView(), script, result);
    EXPECT_TRUE(waitUntil([&] { return result->has_value(); })) << script;
    return result->value_or("no answer");
}

ReadingTest::Place ReadingTest::place()
{
    const auto text = evaluate("(function () {"
                               "for (let y = 45; y < innerHeight - 40; y += 5) for (const x of [30, innerWidth - 30]) {"
                               "const range = document.caretRangeFromPoint(x, y);"
                               "if (range && range.startContainer.data && range.startContainer.data.trim())"
                               "return range.startContainer.data.substr(range.startOffset, 60);"
                               "} return 'no text'; })()");
    return { reader().activeSplitIndex(), number("window.pageXOffset"), text };
}

std::ostream& operator<<(std::ostream& stream, const ReadingTest::Place& place)
{
    return stream << "chapter " << place.chapter << " at " << place.offset << ": " << place.text;
}

bool ReadingTest::isLogged(const std::string& line) const
{
    const std::lock_guard lock(linesMutex);
    return std::find(_lines.begin(), _lines.end(), line) != _lines.end();
}

std::vector<std::string> corpusBooks()
{
    const char* const folder = std::getenv("PAGORA_CORPUS");
    std::vector<std::string> archives;
    for (const auto& name : folder ? folderEntries(folder).value_or(archives) : archives) {
        if (pathExtension(name) == "epub")
            archives.push_back(appendingPathComponent(folder, name));
    }
    std::sort(archives.begin(), archives.end());
    return archives;
}

std::string readingTestName(const std::string& book)
{
    std::string name;
    for (const char character : deletingPathExtension(lastPathComponent(book)))
        name += std::isalnum(static_cast<unsigned char>(character)) ? character : '_';
    return name;
}

}
