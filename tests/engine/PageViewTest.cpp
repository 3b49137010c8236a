#include "tests/engine/PageViewTest.hpp"

#include "running/Task.hpp"

#include <glibmm/main.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>

namespace pagora::test {

namespace {

Task<void> keepResult(WebView& view, std::string script, std::shared_ptr<std::optional<std::string>> result)
{
    *result = co_await view.evaluateScript(script);
}

void writeFile(const std::string& path, const std::string& content)
{
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

}

int RecordingDelegate::count(Report::Kind kind, std::uint64_t load) const
{
    return static_cast<int>(std::count_if(reports.begin(), reports.end(),
        [&](const Report& report) { return report.kind == kind && report.source.load == load; }));
}

bool RecordingDelegate::documentIsThere(std::uint64_t load) const
{
    return count(Report::Kind::Finished, load) > 0;
}

PageViewTest::PageViewTest()
    : _book(_folder.path("books/a book"))
    , _engine()
{
    std::filesystem::create_directories(_book);
    _window.set_decorated(false);
    show(PageKind::Columns);
}

PageViewTest::~PageViewTest()
{
    embed(nullptr);
}

void PageViewTest::show(PageKind kind, double scriptTimeout)
{
    embed(nullptr);
    _engine = std::make_unique<PageEngine>(
        PageEngine::Options { _folder.path("books"), _folder.path("caches"), scriptTimeout, _confinement });
    embed(_engine->makePageView(kind));
}

void PageViewTest::showWithShortTimeout(PageKind kind)
{
    const auto start = std::chrono::steady_clock::now();
    show(kind);
    loadDocument("<p>Plain</p>");
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    show(kind, std::max(2.0, 4 * taken.count()));
}

void PageViewTest::embed(std::unique_ptr<PageView> view)
{
    _window.unset_child();
    _view = std::move(view);
    _delegate = {};
    if (!_view)
        return;
    _view->setDelegate(&_delegate);
    _view->setBookFolder(_book);
    _view->widget().set_size_request(width, height);
    _window.set_child(_view->widget());
    _window.present();
    ASSERT_TRUE(waitUntil([&] { return _view->frame().width == width; }));
}

bool PageViewTest::waitUntil(const std::function<bool()>& condition, double seconds)
{
    bool isOver = false;
    auto end = Glib::signal_timeout().connect([&] { return isOver = true; }, static_cast<unsigned>(seconds * 1000));
    auto tick = Glib::signal_timeout().connect([] { return true; }, 5);
    while (!condition() && !isOver)
        Glib::MainContext::get_default()->iteration(true);
    end.disconnect();
    tick.disconnect();
    return condition();
}

std::string PageViewTest::evaluate(const std::string& script)
{
    auto result = std::make_shared<std::optional<std::string>>();
    const auto task = keepResult(*_view, script, result);
    EXPECT_TRUE(waitUntil([&] { return result->has_value(); })) << script;
    return result->value_or("no answer");
}

void PageViewTest::settle()
{
    evaluate("var settled = false; requestAnimationFrame(() => requestAnimationFrame(() => settled = true)); 0");
    EXPECT_TRUE(waitUntil([&] { return evaluate("settled") == "true"; }));
}

Url PageViewTest::write(const std::string& name, const std::string& content)
{
    writeFile(_book + "/" + name, content);
    return Url::file(_book + "/" + name);
}

Url PageViewTest::writeOutside(const std::string& name, const std::string& content)
{
    writeFile(_folder.path("outside/" + name), content);
    return Url::file(_folder.path("outside/" + name));
}

std::string PageViewTest::document(const std::string& body, const std::string& head, const std::string& attributes)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><html xmlns=\"http://www.w3.org/1999/xhtml\"" + attributes
        + "><head><title>A chapter</title>" + head + "</head><body>" + body + "</body></html>";
}

std::string PageViewTest::paragraphs(int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "<p id=\"p" + std::to_string(i) + "\">Paragraph " + std::to_string(i);
        for (int sentence = 0; sentence < 3 + i * 7 % 11; ++sentence)
            text += " All happy chapters are alike; each unhappy chapter is unhappy in its own way.";
        text += "</p>";
    }
    return text;
}

std::uint64_t PageViewTest::load(const Url& url)
{
    _view->loadRequest(url);
    // On a slow machine the engine may be restarted, which adds a load.
    EXPECT_TRUE(waitUntil([&] { return _delegate.documentIsThere(_view->currentLoad()); })) << url.text();
    return _view->currentLoad();
}

std::uint64_t PageViewTest::loadDocument(const std::string& body, const std::string& head)
{
    return load(write("chapter.xhtml", document(body, head)));
}

std::uint64_t PageViewTest::loadCompletely(const Url& url)
{
    const std::uint64_t number = load(url);
    EXPECT_TRUE(waitUntil([&] { return _delegate.count(Kind::FrameFinished, number) > 0; }));
    return number;
}

void PageViewTest::layOut(int columns)
{
    const int columnWidth = static_cast<int>(double(width) / columns - 40 * columns);
    std::string script = columns < 2
        ? "document.body.style.webkitColumnWidth = '" + std::to_string(columnWidth) + "px';"
        : "document.body.style.webkitColumnWidth = 'auto';document.body.style.webkitColumnCount = '"
            + std::to_string(columns) + "';";
    script += "document.body.style.webkitColumnGap = '40px';document.body.style.margin = '0px';"
              "document.body.style.padding = '40px 20px';document.body.style.fontFamily = 'Georgia';"
              "document.body.style.overflow = 'hidden';document.body.style.height = '"
        + std::to_string(height - 80) + "px';";
    evaluate(script);
}

}
