#include "reader_windows/gtk/ReaderWindowFactoryGtk.hpp"

#include "fixed/gtk/FixedWindowGtk.hpp"
#include "fixed/gtk/PreparedPagesGtk.hpp"
#include "page_view/gtk/PageEngine.hpp"
#include "reflowable/gtk/EpubWindowGtk.hpp"

#include <glibmm/main.h>

#include <utility>

namespace pagora {

namespace {

// The interval at which the confinement probe is checked, in milliseconds.
constexpr unsigned probeInterval = 20;

// The page buttons are within these margins. The maximum width fits two columns of book-length lines.
constexpr PageView::PageMargins readingMargins { 16, 1200 };

}

ReaderWindowFactoryGtk::ReaderWindowFactoryGtk(std::string temporaryFolder, Toplevel& toplevel, RunLoop& runLoop)
    : _temporaryFolder(std::move(temporaryFolder))
    , _toplevel(toplevel)
    , _runLoop(runLoop)
{
}

ReaderWindowFactoryGtk::~ReaderWindowFactoryGtk()
{
    _preparation.disconnect();
}

PageEngine& ReaderWindowFactoryGtk::engine()
{
    if (!_engine)
        _engine = std::make_unique<PageEngine>(PageEngine::Options { .booksFolder = _temporaryFolder + "/_books",
            .cachesFolder = _temporaryFolder + "/_engine",
            .confinement = _probe.result() });
    return *_engine;
}

ReaderPage ReaderWindowFactoryGtk::makePage(PageKind kind, const PageView* beside)
{
    auto view = engine().makePageView(kind, beside);
    auto* const page = view.get();
    const auto setFlickHandler
        = [page](std::function<void(double)> handler) { page->setFlickHandler(std::move(handler)); };
    ReaderPage parts { std::move(view), &page->widget(), setFlickHandler };
    parts.takesKeys = [page] { return page->pageTakesKeys(); };
    parts.takesEscape = [page] { return page->pageTakesEscape(); };
    parts.setNamer = [page](std::function<std::string(const std::string&)> namer) { page->setNamer(std::move(namer)); };
    parts.setNotice = [page](const std::string& notice) { page->setNotice(notice); };
    parts.nameMayHaveChanged = [page] { page->nameMayHaveChanged(); };
    parts.runsRightToLeft = [page, kind] { return kind == PageKind::Columns && page->runsRightToLeft(); };
    // Fixed pages have their own background.
    if (kind == PageKind::Columns) {
        page->setMargins(readingMargins);
        parts.runLoop = &_runLoop;
        parts.setPictureHandler
            = [page](std::function<void(const std::string&)> handler) { page->setPictureHandler(std::move(handler)); };
        parts.setGroundHandler = [page](std::function<void(const std::optional<Color>&)> handler) {
            page->setGroundHandler(std::move(handler));
        };
        parts.setBackground = [page](const Color& color) { page->setBackground(color); };
    }
    parts.isConfined = _probe.result() == Confinement::Full;
    return parts;
}

void ReaderWindowFactoryGtk::prepareNextWindow()
{
    _preparation.disconnect();
    if (_probe.isKnown())
        return prepareWhenProbed();
    _preparation = Glib::signal_timeout().connect(
        [this] {
            if (_probe.isKnown())
                prepareWhenProbed();
            return !_probe.isKnown();
        },
        probeInterval);
}

void ReaderWindowFactoryGtk::prepareWhenProbed()
{
    engine().prepareWarmView();
    if (!_nextLayout)
        _nextLayout = std::make_unique<ReaderLayout>(EpubWindowGtk::layoutName);
}

std::unique_ptr<EpubWindow> ReaderWindowFactoryGtk::makeEpubWindow()
{
    _preparation.disconnect();
    const auto prepared = std::exchange(_nextLayout, nullptr);
    auto layout = prepared ? std::move(*prepared) : ReaderLayout(EpubWindowGtk::layoutName);
    return std::make_unique<EpubWindowGtk>(_toplevel, makePage(PageKind::Columns), std::move(layout));
}

std::unique_ptr<FixedWindow> ReaderWindowFactoryGtk::makeFixedWindow()
{
    _preparation.disconnect();
    auto shown = makePage(PageKind::Fixed);
    auto spare = makePage(PageKind::Fixed, static_cast<const PageView*>(shown.webView.get()));
    return std::make_unique<FixedWindowGtk>(_toplevel, PreparedPagesGtk::make(std::move(shown), std::move(spare)));
}

}
