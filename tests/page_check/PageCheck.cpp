#include "tests/page_check/PageCheck.hpp"

#include "epub/EpubInspection.hpp"
#include "epub/PackageLanguage.hpp"
#include "epub/Unpacking.hpp"
#include "files/Files.hpp"
#include "paging/PageArithmetic.hpp"
#include "paging/PageScripts.hpp"
#include "running/Task.hpp"

#include <glibmm/main.h>

#include <algorithm>
#include <sstream>

namespace pagora::test {

namespace {

constexpr unsigned maxWait = 120;
constexpr std::size_t maxExamples = 12;
constexpr const char* font = "Georgia";

Task<void> keepResult(WebView& view, std::string script, std::shared_ptr<std::optional<std::string>> result)
{
    *result = co_await view.evaluateScript(script);
}

PageGeometry geometry(const PageSetting& setting)
{
    return { double(setting.width), double(setting.height), setting.columns,
        PageGeometry::pageWidthFor(setting.width, setting.columns) };
}

scripts::Layout layoutFor(const PageSetting& setting)
{
    const auto page = geometry(setting);
    scripts::Layout layout;
    layout.font = font;
    layout.pageWidth = page.pageWidth;
    layout.columnHeight = page.columnHeight();
    layout.imageHeight = page.imageHeight();
    return layout;
}

std::string textOf(const PageSetting& setting)
{
    std::ostringstream text;
    text << setting.width << "x" << setting.height << " text " << setting.textSize << " columns " << setting.columns;
    return text.str();
}

}

// Waits until a chapter with all its resources is loaded.
class PageCheck::LoadedPage : public WebViewDelegate {
public:
    void resourceDidFinishLoading(const DataSource& source) override { documentLoad = source.load; }
    void didFinishLoadForFrame(const DataSource& source) override { completeLoad = source.load; }
    void resourceDidFailLoading(const DataSource& source) override
    {
        if (source.isMainResource)
            failedLoad = source.load;
    }
    void resourceWillSendRequest(const Url&, RequestedBy) override { }
    void decidePolicyForMIMEType(const std::string&) override { }
    void didChangeLocationWithinPage(const Url&) override { }
    void didResize() override { }

    std::uint64_t documentLoad = 0;
    std::uint64_t completeLoad = 0;
    std::uint64_t failedLoad = 0;
};

std::vector<PageSetting> pageSettings(const std::vector<std::pair<int, int>>& sizes,
    const std::vector<double>& textSizes, const std::vector<int>& columns)
{
    std::vector<PageSetting> settings;
    for (const auto& [width, height] : sizes) {
        for (const double textSize : textSizes) {
            for (const int count : columns)
                settings.push_back({ width, height, textSize, count });
        }
    }
    return settings;
}

std::string pageFaultsScript()
{
    const std::string folder = PAGE_CHECK_FOLDER;
    return readFile(folder + "/page-glyphs.js").value() + readFile(folder + "/page-faults.js").value();
}

PageCheck::PageCheck()
    : _hub(_folder.path())
    , _script(pageFaultsScript())
    , _page(std::make_unique<LoadedPage>())
{
    createFolder(_hub.layout._dataPath);
    _engine
        = std::make_unique<PageEngine>(PageEngine::Options { _hub.layout._booksPath, _folder.path("caches"), maxWait });
    _view = _engine->makePageView(PageKind::Columns);
    _view->setDelegate(_page.get());
    _window.set_decorated(false);
    _window.set_child(_view->widget());
    _window.present();
}

PageCheck::~PageCheck()
{
    _window.unset_child();
}

bool PageCheck::waitUntil(const std::function<bool()>& condition)
{
    bool isOver = false;
    auto end = Glib::signal_timeout().connect_seconds([&] { return isOver = true; }, maxWait);
    while (!condition() && !isOver)
        Glib::MainContext::get_default()->iteration(true);
    end.disconnect();
    return condition();
}

std::string PageCheck::evaluate(const std::string& script)
{
    const auto result = std::make_shared<std::optional<std::string>>();
    const auto task = keepResult(*_view, script, result);
    waitUntil([&] { return result->has_value(); });
    return result->value_or("");
}

void PageCheck::resize(int width, int height)
{
    _view->widget().set_size_request(width, height);
    _window.set_default_size(width, height);
    waitUntil([&] { return _view->frame().width == width && _view->frame().height == height; });
}

bool PageCheck::load(const Url& chapter, const PageSetting& setting)
{
    _view->setTextSizeMultiplier(setting.textSize);
    _view->setPageStart(
        { scripts::styleSheet(layoutFor(setting), setting.columns), false, setting.columns, _language });
    _view->loadRequest(chapter);
    const auto isOver
        = [&] { return _page->completeLoad == _view->currentLoad() || _page->failedLoad == _view->currentLoad(); };
    waitUntil(isOver);
    if (_page->documentLoad != _view->currentLoad())
        return false;
    const auto size = std::to_string(setting.width) + "x" + std::to_string(setting.height);
    // The page gets its size shortly after its view.
    return waitUntil([&] { return evaluate("innerWidth + 'x' + innerHeight") == size; });
}

void PageCheck::layOut(const PageSetting& setting)
{
    _view->setTextSizeMultiplier(setting.textSize);
    evaluate(scripts::columns(setting.columns, geometry(setting).pageWidth));
    evaluate(scripts::layout(layoutFor(setting)));
    _view->pageIsPrepared();
}

bool PageCheck::count(CheckedPages& checked, const std::string& place)
{
    std::istringstream lines(evaluate(_script));
    long pages = 0;
    long textLines = 0;
    std::string line;
    std::getline(lines, line);
    if (!(std::istringstream(line) >> pages >> textLines))
        return false;
    ++checked.layouts;
    checked.pages += pages;
    checked.lines += textLines;
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        std::string kind;
        std::string field;
        std::getline(fields, kind, '\t');
        std::getline(fields, field, '\t');
        auto& fault = checked.faults[kind];
        fault.count += std::stol(field);
        while (fault.examples.size() < maxExamples && std::getline(fields, field, '\t'))
            fault.examples.push_back(place + ": " + field);
    }
    return true;
}

std::optional<CheckedPages> PageCheck::check(const std::string& archive, const std::vector<PageSetting>& settings)
{
    EpubInspection inspection(_hub);
    const auto book = inspection.getBookInfo(archive, StopOnErrors::Yes);
    inspection.emptyScratch();
    if (!book || book->type() != "default")
        return std::nullopt;
    unZipBook(*book);
    _view->setBookFolder(*book->bookPath());
    _language = packageLanguage(*book->bookPath());

    CheckedPages checked;
    const auto chapters = book->files();
    checked.chapters = static_cast<long>(chapters.size());
    for (auto first = settings.begin(); first != settings.end();) {
        const auto isOfOtherSize = [&](const PageSetting& setting) {
            return setting.width != first->width || setting.height != first->height;
        };
        const auto end = std::find_if(first, settings.end(), isOfOtherSize);
        resize(first->width, first->height);
        for (const auto& chapter : chapters) {
            if (!load(chapter, *first))
                continue;
            for (auto setting = first; setting != end; ++setting) {
                layOut(*setting);
                const auto place = chapter.lastPathComponent() + " at " + textOf(*setting);
                if (count(checked, place))
                    continue;
                // The engine was restarted, perhaps because of low memory.
                if (load(chapter, *first))
                    layOut(*setting);
                if (!count(checked, place))
                    checked.faults["not counted"].add(place);
            }
            if (_progress)
                _progress(archive + ": " + chapter.lastPathComponent());
        }
        first = end;
    }
    return checked;
}

}
