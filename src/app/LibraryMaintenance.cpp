#include "app/LibraryMaintenance.hpp"

#include "app/LibraryFiles.hpp"
#include "base/Log.hpp"
#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "catalogue/PendingRemovals.hpp"
#include "files/CopyIntoFolder.hpp"
#include "files/Files.hpp"

namespace pagora {

namespace {

constexpr const char* emptyMode = "empty";
constexpr const char* moveMode = "move";

}

LibraryMaintenance::LibraryMaintenance(
    const Platform& platform, LibraryState& state, LibraryViews& views, EpubImport& import)
    : _platform(platform)
    , _state(state)
    , _views(views)
    , _import(import)
{
}

Task<void> LibraryMaintenance::resetAppSettings()
{
    auto& defaults = _platform.defaults;
    auto& window = _platform.libraryWindow;
    _state.launch.beginReset();
    if (_import.isUnderWay()) {
        auto idle = _platform.runLoop.performInBackground([this] { _import.waitForImports(); });
        co_await idle;
    }
    const auto files = PendingRemovals(defaults).without(booksIn(_state.folders.libPath));
    for (const auto& key : defaults.allKeys())
        defaults.removeObject(key);
    _state.keptPages.removeAll();
    if (!files.empty()) {
        _state.catalogue.clear();
        _views.refreshBookView(_state.catalogue.bookList());
        window.processLabel().setStringValue(_("Resetting ePub data!"));
        window.indicatorWindow().center();
        window.indicatorWindow().orderFront();
        auto imported = _platform.runLoop.performInBackground([this, files] { _import.booksFromFilesArray(files); });
        co_await imported;
    }
    defaults.setObject(defaults_keys::Default, true);
    defaults.setObject(defaults_keys::DragDropMode, "Copy");
    defaults.setObject(defaults_keys::BundleVersion, _platform.program.bundleVersion);
    _state.catalogue.save(defaults);
    window.indicatorWindow().orderOut();
    window.mainWindow().makeKeyAndOrderFront();
    _views.refreshBookView(_state.catalogue.bookList());
    _import.showFaultyBooks();
    _state.launch.endReset();
}

Task<void> LibraryMaintenance::resetEpubLibrary(std::string folder, std::string mode)
{
    const auto imported = std::make_shared<bool>(false);
    auto work = _platform.runLoop.performInBackground([this, folder, mode, imported] {
        auto files = bringIn(folder, mode);
        for (auto& book : booksIn(_state.folders.libPath))
            files.push_back(std::move(book));
        *imported = !files.empty();
        _import.booksFromFilesArray(files);
    });
    co_await work;
    if (*imported)
        _views.refreshBookView(_state.catalogue.bookList());
}

std::vector<std::string> LibraryMaintenance::bringIn(const std::string& folder, const std::string& mode)
{
    if (mode == emptyMode)
        return {};
    const auto& libPath = _state.folders.libPath;
    auto names = bookNamesIn(folder);
    const auto copies = _platform.workspace.copyFiles(folder, libPath, names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto source = appendingPathComponent(folder, names[i]);
        auto book = appendingPathComponent(libPath, copies[i].value_or(names[i]));
        // Files that could not be copied stay.
        if (mode == moveMode && copies[i] && !isSameFile(source, book))
            removeItem(source);
        names[i] = std::move(book);
    }
    return names;
}

Task<void> LibraryMaintenance::killTempItems()
{
    auto removed
        = _platform.runLoop.performInBackground([tempPath = _state.folders.tempPath] { removeItem(tempPath); });
    co_await removed;
    _state.catalogue.save(_platform.defaults);
}

void LibraryMaintenance::showLibFolderInFinder()
{
    _platform.workspace.selectFile(_state.folders.libPath);
}

void LibraryMaintenance::testAction()
{
    log("Tester Action ******************");
}

}
