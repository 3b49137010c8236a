#include "app/StartUp.hpp"

#include "app/LibraryFiles.hpp"
#include "base/Log.hpp"
#include "base/Path.hpp"
#include "catalogue/PendingRemovals.hpp"
#include "files/Files.hpp"

namespace pagora {

using namespace defaults_keys;

StartUp::StartUp(const Platform& platform, LibraryState& state, LibraryViews& views, EpubImport& import)
    : _platform(platform)
    , _state(state)
    , _views(views)
    , _import(import)
{
}

Task<void> StartUp::initPagoraData()
{
    auto& window = _platform.libraryWindow;
    const auto& program = _platform.program;
    layOutLibraryFolder();
    const PendingRemovals pending(_platform.defaults);
    const auto removals = pending.paths();
    const auto files = pending.without(booksIn(_state.folders.libPath));
    window.activateIgnoringOtherApps();
    if (!files.empty()) {
        window.indicatorWindow().center();
        window.indicatorWindow().orderFront();
    }
    _views.showFirstView();
    _state.windows.fullScreenMode = false;
    _state.folders.tempPath = appendingPathComponent(program.cachesFolder, program.bundleIdentifier);
    checkVersion();
    loadCatalogue();
    co_await clearFolders();
    if (!removals.empty())
        co_await finishRemovals(removals);
    storeStartUpDefaults(_platform.defaults);
    _platform.defaults.setObject(BundleVersion, program.bundleVersion);
    _platform.defaults.synchronize();
    _state.settings = ReaderSettings::load(_platform.defaults);
    _state.folders._booksPath = appendingPathComponent(_state.folders.tempPath, "_books");
    _state.folders._dataPath = appendingPathComponent(_state.folders.tempPath, "_data");
    if (auto* menu = window.toolBarMenu())
        pagora::trimToolbarMenu(*menu);

    if (!files.empty()) {
        auto imported = _platform.runLoop.performInBackground([this, files] { _import.booksFromFilesArray(files); });
        co_await imported;
    }
    window.indicatorWindow().orderOut();
    _views.refreshBookView(_state.catalogue.bookList());
    if (const auto lines = _state.faultyBooks.takeAll(); !lines.empty()) {
        window.errorList().setStringValue(joined(lines, "\n"));
        window.errorWin().orderFront();
    }
    _state.launch.libraryIsLoaded();
    _platform.defaults.setObject(PreviousSuccessfulLaunch, true);
}

void StartUp::layOutLibraryFolder()
{
    auto& libPath = _state.folders.libPath;
    libPath = appendingPathComponent(_platform.program.documentsFolder, "ePubLibrary");
    if (fileExists(libPath))
        return;
    if (const auto created = createFolder(libPath); !created)
        log("ERROR: " + created.reason());
}

void StartUp::checkVersion()
{
    auto& defaults = _platform.defaults;
    const bool launchedWell
        = !defaults.hasKey(PreviousSuccessfulLaunch) || defaults.boolForKey(PreviousSuccessfulLaunch);
    const auto storedVersion = launchedWell ? defaults.stringForKey(BundleVersion).value_or("") : "";
    if (_platform.program.bundleVersion == storedVersion)
        return;
    for (const auto& key : defaults.allKeys())
        defaults.removeObject(key);
    _state.keptPages.removeAll();
    defaults.synchronize();
}

void StartUp::loadCatalogue()
{
    _state.catalogue.clear();
    const auto stored = _platform.defaults.objectForKey(BookData);
    if (!stored || !stored->array() || stored->array()->empty()) {
        // Discards records of values that were removed.
        if (_platform.records)
            _platform.records->take({});
        return;
    }
    _state.catalogue.setBookData(*stored->array());
    _state.catalogue.bookDataToList(_platform.records.get());
}

Task<void> StartUp::clearFolders()
{
    auto renewed = _platform.runLoop.performInBackground([folders = _state.folders] {
        const auto& tempPath = folders.tempPath;
        if (fileExists(tempPath))
            removeItem(tempPath);
        createFolder(tempPath);
        removeUnfinishedFiles(folders.libPath);
    });
    co_await renewed;
}

Task<void> StartUp::finishRemovals(std::vector<std::string> archives)
{
    auto finished = _platform.runLoop.performInBackground([this, archives] {
        for (const auto& archive : archives) {
            if (fileExists(archive) && !_state.catalogue.holdsArchive(archive))
                _platform.workspace.recycleFiles(deletingLastPathComponent(archive), { lastPathComponent(archive) });
        }
    });
    co_await finished;
    PendingRemovals(_platform.defaults).remove(archives);
}

void trimToolbarMenu(Menu& menu)
{
    for (int index = 0; index < menu.numberOfItems(); ++index) {
        if (index == 2 || index >= 4)
            menu.setItemHidden(index, true);
    }
    menu.insertSeparator(2);
}

}
