#include "epub/EpubImport.hpp"

#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "catalogue/Settings.hpp"
#include "epub/KnownNames.hpp"
#include "files/CopyIntoFolder.hpp"
#include "files/Files.hpp"

#include <algorithm>
#include <utility>

namespace pagora {

namespace {
constexpr const char* copyMode = "Copy";
constexpr const char* moveMode = "Move";

std::vector<std::string> chosen(const std::vector<std::string>& files, const std::vector<bool>& isChosen)
{
    std::vector<std::string> chosen;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (isChosen[i])
            chosen.push_back(files[i]);
    }
    return chosen;
}
}

class EpubImport::UnderWay {
public:
    explicit UnderWay(EpubImport& import)
        : _import(import)
    {
        const std::scoped_lock lock(_import._counting);
        ++_import._countUnderWay;
    }
    ~UnderWay()
    {
        const std::scoped_lock lock(_import._counting);
        --_import._countUnderWay;
        _import._oneLess.notify_all();
    }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

private:
    EpubImport& _import;
};

EpubImport::EpubImport(ImportHub& hub, const ImportOutlets& outlets)
    : _mainController(hub)
    , _outlets(outlets)
    , _inspection(hub, [this] { return _ended.load(); })
{
}

void EpubImport::onMainThread(std::function<void()> work)
{
    auto& runLoop = _mainController.runLoop();
    if (runLoop.isMainThread())
        work();
    else
        runLoop.postToMainThread(std::move(work));
}

void EpubImport::beginProgress(std::size_t count)
{
    _newestProgress = std::make_shared<std::atomic<std::size_t>>(0);
    onMainThread([outlets = _outlets, count] {
        outlets.processIndicator.setMaxValue(static_cast<double>(count));
        if (outlets.indicatorWindow.isVisible())
            return;
        outlets.progressBar.setMinValue(0);
        outlets.progressBar.setMaxValue(static_cast<double>(count));
        outlets.progressBar.setHidden(false);
        outlets.procText.setHidden(false);
        outlets.stopButton.setHidden(false);
    });
}

void EpubImport::showProgress(std::size_t index, std::size_t count)
{
    // Files that are known pass by faster than the main thread can show them.
    if (_newestProgress->exchange(index + 1) != 0)
        return;
    onMainThread([outlets = _outlets, newest = _newestProgress, count] {
        const auto number = newest->exchange(0);
        outlets.processIndicator.setDoubleValue(static_cast<double>(number));
        outlets.progressBar.setDoubleValue(static_cast<double>(number));
        outlets.procText.setStringValue(
            formatted(_("%d of %lu"), static_cast<int>(number), static_cast<unsigned long>(count)));
    });
}

void EpubImport::endProgress()
{
    onMainThread([outlets = _outlets] {
        outlets.progressBar.setHidden(true);
        outlets.procText.setHidden(true);
        outlets.stopButton.setHidden(true);
    });
}

void EpubImport::draggedEpubs(std::vector<std::string> files)
{
    if (files.empty())
        return;
    _mainController.runLoop().performInBackground(
        [this, files = std::move(files), underWay = std::make_shared<UnderWay>(*this)] { process_Epubs(files); });
}

bool EpubImport::isUnderWay() const
{
    const std::scoped_lock lock(_counting);
    return _countUnderWay > 0;
}

void EpubImport::waitForImports()
{
    std::unique_lock lock(_counting);
    _oneLess.wait(lock, [this] { return _countUnderWay == 0; });
}

void EpubImport::process_Epubs(const std::vector<std::string>& files)
{
    if (!booksFromFilesArray(files).empty())
        _mainController.runLoop().performOnMainThread([this] { _mainController.refreshBookView(); });
    showFaultyBooks();
}

void EpubImport::showFaultyBooks()
{
    const auto lines = _mainController.faultyBooks().takeAll();
    if (lines.empty())
        return;
    onMainThread([outlets = _outlets, text = joined(lines, "\n")] {
        outlets.errorList.setStringValue(text);
        outlets.errorWin.makeKeyAndOrderFront();
    });
}

std::vector<std::string> EpubImport::booksFromFilesArray(const std::vector<std::string>& files, HandedOver handedOver)
{
    if (files.empty())
        return {};
    // A batch that waits for another keeps the mode of its own time.
    const auto mode = handedOver == HandedOver::Yes
        ? copyMode
        : _mainController.defaults().stringForKey(defaults_keys::DragDropMode).value_or("");
    const UnderWay underWay(*this);
    std::scoped_lock batch(_batch);
    auto& catalogue = _mainController.catalogue();
    const auto isNew = newOnes(files);
    beginProgress(files.size());
    _cancelled = false;

    std::vector<std::string> imported;
    {
        ImportAhead ahead(_mainController.workspace(), chosen(files, isNew),
            mode == copyMode || mode == moveMode ? _mainController.folders().libPath : "",
            [this] { return _ended.load(); });
        for (std::size_t i = 0; i < files.size() && !_cancelled && !_ended; ++i) {
            showProgress(i, files.size());
            std::scoped_lock inspecting(_inspecting);
            // Files that are passed over leave it as it is.
            if (isNew[i] || i == 0 || !_scratchIsEmpty)
                emptyScratch();
            const auto book = isNew[i] ? importFile(files[i], mode, ahead.take(files[i])) : nullptr;
            if (!book)
                continue;
            imported.push_back(*book->epubPath());
            catalogue.append(book, entryFromBook(*book), lastPathComponent(*book->epubPath()));
        }
    }
    endProgress();
    if (!imported.empty()) {
        flushFolder(_mainController.folders().libPath);
        catalogue.save(_mainController.defaults());
    }
    return imported;
}

std::vector<bool> EpubImport::newOnes(const std::vector<std::string>& files)
{
    const KnownNames knownNames(_mainController.catalogue().knownNames());
    std::vector<bool> isNew;
    isNew.reserve(files.size());
    for (const auto& file : files)
        isNew.push_back(!knownNames.hold(lastPathComponent(file)));
    return isNew;
}

void EpubImport::emptyScratch()
{
    _inspection.emptyScratch();
    _scratchIsEmpty = true;
}

BookInfoPtr EpubImport::inspect(const std::string& file, const ScaledCover* cover)
{
    _scratchIsEmpty = false;
    return _inspection.getBookInfo(file, StopOnErrors::Yes, cover);
}

BookInfoPtr EpubImport::getBookInfo(const std::string& archivePath, StopOnErrors stopOnErrors)
{
    const std::scoped_lock inspecting(_inspecting);
    _scratchIsEmpty = false;
    return _inspection.getBookInfo(archivePath, stopOnErrors);
}

BookInfoPtr EpubImport::bookFromOwnFile(const std::string& path)
{
    std::scoped_lock inspecting(_inspecting);
    emptyScratch();
    return inspect(path);
}

BookInfoPtr EpubImport::importFile(const std::string& file, const std::string& mode, const ImportAhead::Results& ahead)
{
    auto book = inspect(file, ahead.cover ? &*ahead.cover : nullptr);
    if (!book)
        return nullptr;
    const auto& libPath = _mainController.folders().libPath;
    const auto folder = deletingLastPathComponent(file);
    if (folder == libPath || (mode != copyMode && mode != moveMode))
        return book;

    const auto name = lastPathComponent(file);
    auto& workspace = _mainController.workspace();
    const auto copy = ahead.copy ? ahead.copy->takeName() : workspace.copyFiles(folder, libPath, { name }).front();
    const auto destination = archiveOf(file, copy);
    if (mode == moveMode && copy && !workspace.isOnMountedVolume(file) && !isSameFile(file, destination)
        && (!ahead.copy || flushFolder(libPath)))
        removeItem(file);
    book->setEpubPath(destination);
    return book;
}

std::string EpubImport::archiveOf(const std::string& file, const std::optional<std::string>& copy) const
{
    const auto& libPath = _mainController.folders().libPath;
    if (copy)
        return appendingPathComponent(libPath, *copy);
    // Where the copy failed, a file of that name is another book's.
    const auto expected = appendingPathComponent(libPath, lastPathComponent(file));
    return fileExists(expected) ? file : expected;
}

BookInfoPtr EpubImport::bookFromSingleFile(const std::string& path, bool& copied)
{
    copied = false;
    std::scoped_lock inspecting(_inspecting);
    removeLeftCopies();
    auto book = inspect(path);
    if (!book)
        return nullptr;
    const auto& libPath = _mainController.folders().libPath;
    const auto name = lastPathComponent(path);
    const auto before = folderEntries(libPath).value_or(std::vector<std::string> {});
    const auto copies = _mainController.workspace().copyFiles(deletingLastPathComponent(path), libPath, { name });
    const auto& copy = copies.front();
    copied = copy && std::find(before.begin(), before.end(), *copy) == before.end();
    book->setEpubPath(archiveOf(path, copy));
    return book;
}

void EpubImport::removeSingleCopy(const std::string& path)
{
    {
        std::scoped_lock lock(_leaving);
        _leftCopies.push_back(path);
    }
    _mainController.runLoop().performInBackground([this] {
        std::scoped_lock inspecting(_inspecting);
        removeLeftCopies();
    });
}

void EpubImport::removeLeftCopies()
{
    std::scoped_lock lock(_leaving);
    for (const auto& copy : std::exchange(_leftCopies, {})) {
        if (!_mainController.catalogue().holdsArchive(copy))
            removeItem(copy);
    }
}

}
