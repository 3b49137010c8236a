#include "app/BookOpening.hpp"

#include "app/LeftPage.hpp"
#include "base/Numbers.hpp"
#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "epub/ContentsTargets.hpp"
#include "epub/PackageLanguage.hpp"
#include "epub/Unpacking.hpp"
#include "files/Files.hpp"

namespace pagora {

namespace {

constexpr const char* reflowable = "default";
constexpr const char* fixedLayout = "fixed";

std::string windowTitle(const BookInfo& book)
{
    return "Pagora - " + book.title().value_or("(null)");
}

}

std::vector<ContentsEntry> tableOfContentFrom(const Value::Array& content)
{
    std::vector<ContentsEntry> entries;
    for (const auto& point : content) {
        const auto text = stringFrom(point.find("text"));
        const auto src = stringFrom(point.find("src"));
        if (!text || text->empty() || !src)
            continue;
        // A fragment may contain slashes, so it is split off before the path is divided.
        const auto hash = src->find('#');
        const auto path = src->substr(0, hash);
        const auto fragment = hash == std::string::npos ? "" : src->substr(hash);
        const auto folder = addingPercentEscapes(deletingLastPathComponent(path));
        auto joinedPath = folder;
        joinedPath.append("/").append(lastPathComponent(path)).append(fragment);
        if (const auto url = Url::fromString(addingPercentEscapes(joinedPath)))
            entries.push_back({ text, *url, low32(static_cast<std::uint64_t>(integerFrom(point.find("level")))) });
    }
    return entries;
}

BookOpening::BookOpening(const Platform& platform, LibraryState& state, ReaderHub& readerHub, ScriptResources scripts)
    : _platform(platform)
    , _state(state)
    , _readerHub(readerHub)
    , _scripts(std::move(scripts))
{
}

BookOpening::~BookOpening()
{
    _stop.request_stop();
}

void BookOpening::open(const BookInfoPtr& book)
{
    _state.windows.open();
    if (!book)
        return;
    cancel();
    _stop = {};
    _opening = run(book);
}

void BookOpening::cancel()
{
    _stop.request_stop();
    _opening = {};
}

Task<void> BookOpening::run(BookInfoPtr book)
{
    _state.reading.currentBook = book;
    if (!hasArchive(*book)) {
        tellOfMissingArchive();
        co_return;
    }
    const auto type = book->type();
    if (type == reflowable)
        showReflowableReader(*book);
    else if (type == fixedLayout)
        showFixedReader(*book);
    _platform.libraryWindow.mainWindow().orderOut();
    if (!isUnpacked(book)) {
        if (_state.reading._epubWindowController)
            _state.reading._epubWindowController->setLoading();
        if (_state.reading._fixedWindowController)
            _state.reading._fixedWindowController->setLoading();
        co_await unpack(book);
    }
    const auto tableOfContent = tableOfContentFrom(contentsOf(*book));
    if (!isPathInside(*book->epubPath(), _state.folders.tempPath))
        _platform.workspace.noteNewRecentDocumentURL(Url::file(*book->epubPath()));

    auto* const window = _state.reading.window();
    if (!window)
        co_return;
    // The readers need the page view's size, which it has once the window is shown.
    auto laidOut = window->laidOut();
    co_await laidOut;
    if (type == reflowable) {
        auto& reader = *_state.reading._epubWindowController->_epubController();
        reader.setBookLanguage(packageLanguage(book->bookPath().value_or("")));
        reader.loadSplits(book->files(), tableOfContent);
    } else
        _state.reading._fixedWindowController->_fixedController()->loadSplits(book->files(), tableOfContent);
    showNavigation(*book, !tableOfContent.empty());
    openMarks(*book);
    if (_state.windows.fullScreenMode && !window->isFullScreen())
        window->toggleFullScreen();
}

// A book that is not in the library does not store marks.
void BookOpening::openMarks(const BookInfo& book)
{
    auto& reading = _state.reading;
    if ((!reading._epubWindowController && !reading._fixedWindowController) || !book.bookPath())
        return;
    const bool isInLibrary = !isPathInside(*book.epubPath(), _state.folders.tempPath);
    const MarkedBook marked { book.isbn().value_or(""), book.title().value_or(""), book.author().value_or("") };
    auto& marks = reading._epubWindowController ? reading._epubWindowController->marks()
                                                : reading._fixedWindowController->marks();
    marks.open(isInLibrary ? book.epubPath() : std::nullopt, marked, *book.bookPath());
}

// Shows the page list of the printed edition, and the navigation document's contents if the NCX has none. Not stored.
void BookOpening::showNavigation(const BookInfo& book, bool hasContents)
{
    const auto unpacked = _unpackedInto.find(book.bookPath().value_or(""));
    if (unpacked == _unpackedInto.end())
        return;
    const auto& navigation = unpacked->second.navigation;
    if (book.type() == reflowable) {
        std::vector<std::string> labels;
        std::vector<Url> pages;
        for (const auto& point : navigation.pages) {
            labels.push_back(point.text);
            pages.push_back(point.target);
        }
        _state.reading._epubWindowController->setPrintedPages(labels, std::move(pages));
    }
    if (hasContents || navigation.contents.empty())
        return;
    std::vector<ContentsEntry> entries;
    for (const auto& point : navigation.contents)
        entries.push_back({ point.text, point.target, point.level });
    if (book.type() == reflowable)
        _state.reading._epubWindowController->_epubController()->showContents(entries);
    else
        _state.reading._fixedWindowController->_fixedController()->showContents(entries);
}

bool BookOpening::hasArchive(const BookInfo& book)
{
    return book.epubPath() && fileExists(*book.epubPath());
}

void BookOpening::tellOfMissingArchive()
{
    _platform.libraryWindow.runAlertPanel(_("ERROR"), _("ePub does not exists!"), _("OK"));
}

void BookOpening::showReflowableReader(BookInfo& book)
{
    _state.reading._epubWindowController = std::make_unique<EpubWindowController>(
        _platform.readerWindows.makeEpubWindow(), _state.reader, _platform.runLoop, _readerHub);
    auto& controller = *_state.reading._epubWindowController;
    auto& window = controller.window();
    window.setTitle(windowTitle(book));
    controller.setBook(book.title().value_or(""), book.author().value_or(""));
    window.setFrame(_platform.libraryWindow.mainWindow().frame());
    if (book.bookPath())
        controller.setBookFolder(*book.bookPath());
    _state.windows.fullScreenMode = _state.windows.epubWinInFullScreen;

    auto& reader = *controller._epubController();
    const auto& settings = _state.settings;
    if (settings.curFontName)
        reader.setCurrentFont(settings.curFontName);
    if (settings.curFontSize >= 0)
        reader.setCurrentFontSize(settings.curFontSize);
    if (settings.curNumOfColumns >= 0)
        reader.setNumberOfColumns(settings.curNumOfColumns);
    if (settings.curColorOption >= 0)
        reader.setCurrentColorOption(settings.curColorOption);
    reader.bgView().setFillColor(reader.getBackgroundColorFor(settings.curColorOption));

    _state.reading.curStorageIndex = book.lastIndex();
    _state.reading.curStorageCap = static_cast<float>(book.lastCap());
    reader.setActiveSplitIndex(_state.reading.curStorageIndex);
    reader.setReadAmount(_state.reading.curStorageCap);
    // A value above 1 is no fraction; it results from turning back in a chapter shorter than two views.
    const bool capIsPlace = book.lastCap() == 1;
    if (const auto place = book.lastPlace(); place && !capIsPlace && *place > 0 && *place < 1) {
        reader.setReadAmount(static_cast<float>(*place));
        reader.setPlaceToKeep(place);
    }
    reader.awaitBook();
    if (!_state.reading._singleEpub())
        LeftPage(_state.keptPages).show(book, reader, controller.webView());
    window.makeKeyAndOrderFront();
}

void BookOpening::showFixedReader(BookInfo& book)
{
    _state.reading._fixedWindowController = std::make_unique<FixedLayoutWindowController>(
        _platform.readerWindows.makeFixedWindow(), _state.reader, _platform.runLoop, _readerHub, _scripts);
    auto& controller = *_state.reading._fixedWindowController;
    if (book.bookPath())
        controller.webView().setBookFolder(*book.bookPath());
    auto& window = controller.window();
    window.setTitle(windowTitle(book));
    controller.setBook(book.title().value_or(""), book.author().value_or(""));
    window.setFrame(_platform.libraryWindow.mainWindow().frame());
    window.makeKeyAndOrderFront();
}

bool BookOpening::isUnpacked(const BookInfoPtr& book) const
{
    if (!book->unPacked() || !isFolder(book->bookPath().value_or("")))
        return false;
    const auto owner = _unpackedInto.find(book->bookPath().value_or(""));
    return owner != _unpackedInto.end() && owner->second.book.lock() == book;
}

Value::Array BookOpening::contentsOf(const BookInfo& book) const
{
    const auto unpacked = _unpackedInto.find(book.bookPath().value_or(""));
    return unpacked == _unpackedInto.end() ? book.content().value_or(Value::Array {}) : unpacked->second.contents;
}

Task<void> BookOpening::unpack(BookInfoPtr book)
{
    if (!book->bookPath())
        co_return;
    const auto folder = *book->bookPath();
    _unpackedInto.erase(folder);
    book->setUnPacked(false);
    const auto contents = std::make_shared<Value::Array>(book->content().value_or(Value::Array {}));
    const auto navigation = std::make_shared<NavigationLists>();
    auto unpacking = _platform.runLoop.performInBackground(
        [lock = _unpacking, stop = _stop.get_token(), unpacked = *book, folder, contents, navigation] {
            std::scoped_lock oneAtATime(*lock);
            if (stop.stop_requested())
                return;
            removeItem(folder);
            createFolder(folder);
            unZipBook(unpacked, stop);
            *contents = withTargetsFound(*contents, folder);
            *navigation = navigationListsOf(folder);
        });
    co_await unpacking;
    book->setUnPacked(true);
    _unpackedInto[folder] = { book, std::move(*contents), std::move(*navigation) };
}

}
