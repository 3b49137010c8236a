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
        : _count(import._countUnderWay)
    {
        ++_count;
    }
    ~UnderWay()
    {
        --_count;
        _count.notify_all();
    }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

private:
    std::atomic<int>& _count;
};

class EpubImport::Progress {
public:
    Progress(EpubImport& import, std::size_t count)
        : _import(import)
        , _count(count)
    {
        _import.onMainThread([outlets = _import._outlets, count] {
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
    ~Progress()
    {
        _import.onMainThread([outlets = _import._outlets] {
            outlets.progressBar.setHidden(true);
            outlets.procText.setHidden(true);
            outlets.stopButton.setHidden(true);
        });
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Called when the batch starts a file. If the main thread is late, it shows only the newest number.
    void show(std::size_t index)
    {
        if (_newest->exchange(index + 1) != 0)
            return;
        _import.onMainThread([outlets = _import._outlets, newest = _newest, count = _count] {
            const auto number = newest->exchange(0);
            outlets.processIndicator.setDoubleValue(static_cast<double>(number));
            outlets.progressBar.setDoubleValue(static_cast<double>(number));
            outlets.procText.setStringValue(
                formatted(_("%d of %lu"), static_cast<int>(number), static_cast<unsigned long>(count)));
        });
    }

private:
    EpubImport& _import;
    std::size_t _count;
    // The number that the main thread has not shown yet; 0 for none.
    std::shared_ptr<std::atomic<std::size_t>> _newest = std::make_shared<std::atomic<std::size_t>>(0);
};

EpubImport::EpubImport(ImportHub& hub, const ImportOutlets& outlets)
    : _mainController(hub)
    , _outlets(outlets)
    , _inspector(hub, [this] { return _ended.load(); })
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

void EpubImport::draggedEpubs(std::vector<std::string> files)
{
    if (files.empty())
        return;
    _mainController.runLoop().performInBackground(
        [this, files = std::move(files), underWay = std::make_shared<UnderWay>(*this)] { process_Epubs(files); });
}

void EpubImport::waitForImports()
{
    for (int count = _countUnderWay; count != 0; count = _countUnderWay)
        _countUnderWay.wait(count);
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
    // A batch that waited for another one uses the mode that was set when it was started.
    const auto mode = handedOver == HandedOver::Yes
        ? copyMode
        : _mainController.defaults().stringForKey(defaults_keys::DragDropMode).value_or("");
    const UnderWay underWay(*this);
    std::scoped_lock batch(_batch);
    auto& catalogue = _mainController.catalogue();
    const auto isNew = newOnes(files);
    std::vector<std::string> imported;
    {
        Progress progress(*this, files.size());
        _cancelled = false;
        ImportPrefetch ahead(_mainController.workspace(), chosen(files, isNew),
            mode == copyMode || mode == moveMode ? _mainController.folders().libPath : "",
            [this] { return _ended.load(); });
        for (std::size_t i = 0; i < files.size() && !_cancelled && !_ended; ++i) {
            progress.show(i);
            const auto inspector = _inspector.lock();
            // Skipped files do not change the scratch folder.
            if (isNew[i] || i == 0 || !inspector->scratchIsEmpty)
                inspector->emptyScratch();
            const auto book = isNew[i] ? importFile(*inspector, files[i], mode, ahead.take(files[i])) : nullptr;
            if (!book)
                continue;
            imported.push_back(*book->epubPath());
            catalogue.append(book, entryFromBook(*book), lastPathComponent(*book->epubPath()));
        }
    }
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

void EpubImport::Inspector::emptyScratch()
{
    process.emptyScratch();
    scratchIsEmpty = true;
}

BookInfoPtr EpubImport::Inspector::inspect(const std::string& file, const ScaledCover* cover)
{
    scratchIsEmpty = false;
    return process.getBookInfo(file, StopOnErrors::Yes, cover);
}

BookInfoPtr EpubImport::getBookInfo(const std::string& archivePath, StopOnErrors stopOnErrors)
{
    const auto inspector = _inspector.lock();
    inspector->scratchIsEmpty = false;
    return inspector->process.getBookInfo(archivePath, stopOnErrors);
}

BookInfoPtr EpubImport::bookFromOwnFile(const std::string& path)
{
    const auto inspector = _inspector.lock();
    inspector->emptyScratch();
    return inspector->inspect(path);
}

BookInfoPtr EpubImport::importFile(
    Inspector& inspector, const std::string& file, const std::string& mode, const ImportPrefetch::Results& ahead)
{
    auto book = inspector.inspect(file, ahead.cover ? &*ahead.cover : nullptr);
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
    // If the copy failed, a file with that name belongs to another book.
    const auto expected = appendingPathComponent(libPath, lastPathComponent(file));
    return fileExists(expected) ? file : expected;
}

EpubImport::SingleBook EpubImport::bookFromSingleFile(const std::string& path)
{
    const auto inspector = _inspector.lock();
    removeLeftCopies(*inspector);
    SingleBook single { inspector->inspect(path) };
    if (!single.book)
        return {};
    const auto& libPath = _mainController.folders().libPath;
    const auto name = lastPathComponent(path);
    const auto before = folderEntries(libPath).value_or(std::vector<std::string> {});
    const auto copies = _mainController.workspace().copyFiles(deletingLastPathComponent(path), libPath, { name });
    const auto& copy = copies.front();
    single.isCopied = copy && std::find(before.begin(), before.end(), *copy) == before.end();
    single.book->setEpubPath(archiveOf(path, copy));
    return single;
}

void EpubImport::removeSingleCopy(const std::string& path)
{
    _leftCopies.lock()->push_back(path);
    _mainController.runLoop().performInBackground([this] { removeLeftCopies(*_inspector.lock()); });
}

void EpubImport::removeLeftCopies(const Inspector&)
{
    const auto leftCopies = _leftCopies.lock();
    for (const auto& copy : std::exchange(*leftCopies, {})) {
        if (!_mainController.catalogue().holdsArchive(copy))
            removeItem(copy);
    }
}

}
