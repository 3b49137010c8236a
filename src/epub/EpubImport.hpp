#pragma once

#include "catalogue/Catalogue.hpp"
#include "controls/Controls.hpp"
#include "desktop/Window.hpp"
#include "desktop/Workspace.hpp"
#include "epub/FaultyBooks.hpp"
#include "epub/ImportAhead.hpp"
#include "epub/InspectionProcess.hpp"
#include "running/RunLoop.hpp"
#include "store/UserDefaults.hpp"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// What the import needs from the hub.
class ImportHub : public InspectionHub {
public:
    virtual Catalogue& catalogue() = 0;
    virtual UserDefaults& defaults() = 0;
    virtual Workspace& workspace() = 0;
    virtual RunLoop& runLoop() = 0;
    virtual FaultyBooks& faultyBooks() = 0;
    // Refills the library view that is shown. Main thread.
    virtual void refreshBookView() = 0;
};

// The controls that show how an import is going and what it rejected.
struct ImportOutlets {
    ProgressIndicator& processIndicator;
    ProgressIndicator& progressBar;
    TextField& procText;
    Button& stopButton;
    Window& indicatorWindow;
    Window& errorWin;
    TextField& errorList;
};

// Whether the desktop handed the files over; such files are always copied.
enum class HandedOver : bool { No, Yes };

// Brings files into the library. A batch runs on whatever thread calls; batches wait for each other, and inspections
// too, since they share one scratch folder. The controls are only touched on the main thread.
class EpubImport {
public:
    EpubImport(ImportHub& hub, const ImportOutlets& outlets);

    // Imports the files on a background thread and returns at once. Main thread.
    void draggedEpubs(std::vector<std::string> files);

    // Imports the files, refreshes the view when books came in, and shows what was rejected. Any thread.
    void process_Epubs(const std::vector<std::string>& files);

    // Imports the files that are not in the library yet, in order, until it is cancelled. The result is the archives'
    // paths in the library. Any thread.
    std::vector<std::string> booksFromFilesArray(
        const std::vector<std::string>& files, HandedOver handedOver = HandedOver::No);

    // Stops the batch that runs before its next file. Any thread.
    void cancelProcess() { _cancelled = true; }

    // Whether an import is under way or waits for another.
    bool isUnderWay() const;
    // Returns when none is. Not from the main thread, which imports wait for.
    void waitForImports();

    // Inspects one archive, without anything else. Any thread.
    BookInfoPtr getBookInfo(const std::string& archivePath, StopOnErrors stopOnErrors);

    // The program ends: stops the batch that runs, and those that wait, without the book at hand. Any thread.
    void end() { _ended = true; }

    // Inspects one file that is to be read and not catalogued, and copies it into the library folder for that reading;
    // null when it was rejected. `copied` tells whether a copy was made that is not another book's archive. Any thread.
    BookInfoPtr bookFromSingleFile(const std::string& path, bool& copied);

    // Inspects a file of the program's own, which is neither catalogued nor copied. Any thread.
    BookInfoPtr bookFromOwnFile(const std::string& path);

    // Removes such a copy when its reading has ended, unless a book of the library has come to use it. Main thread; the
    // removal follows in the background.
    void removeSingleCopy(const std::string& path);

    // Shows the rejection lines, if there are any, and forgets them. Any thread.
    void showFaultyBooks();

private:
    // One import for as long as it lives.
    class UnderWay;

    void onMainThread(std::function<void()> work);
    void beginProgress(std::size_t count);
    // Numbers that the main thread has not come to show yet give way to the newest.
    void showProgress(std::size_t index, std::size_t count);
    void endProgress();
    // Call these two with `_inspecting` held.
    void emptyScratch();
    BookInfoPtr inspect(const std::string& file, const ScaledCover* cover = nullptr);
    // Which of the files are not in the library yet.
    std::vector<bool> newOnes(const std::vector<std::string>& files);
    // Null when the file is rejected.
    BookInfoPtr importFile(const std::string& file, const std::string& mode, const ImportAhead::Results& ahead);
    // The path that a file has in the library folder once it was copied there under the name `copy`.
    std::string archiveOf(const std::string& file, const std::optional<std::string>& copy) const;
    // Call it with `_inspecting` held.
    void removeLeftCopies();

    ImportHub& _mainController;
    ImportOutlets _outlets;
    InspectionProcess _inspection;
    std::atomic<bool> _cancelled = false;
    std::atomic<bool> _ended = false;
    // A batch holds the first for its whole length, and the second while it inspects a file.
    std::mutex _batch;
    std::mutex _inspecting;
    // Since it was emptied, no file was inspected.
    bool _scratchIsEmpty = false;
    // The number of the file that the batch has come to and that is still to be shown; 0 for none. One a batch.
    std::shared_ptr<std::atomic<std::size_t>> _newestProgress;
    mutable std::mutex _counting;
    std::condition_variable _oneLess;
    int _countUnderWay = 0;
    // Copies whose reading has ended and that are still to be removed.
    std::mutex _leaving;
    std::vector<std::string> _leftCopies;
};

}
