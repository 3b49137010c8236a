#pragma once

#include "catalogue/Catalogue.hpp"
#include "controls/Controls.hpp"
#include "desktop/Window.hpp"
#include "desktop/Workspace.hpp"
#include "epub/FaultyBooks.hpp"
#include "epub/ImportPrefetch.hpp"
#include "epub/InspectionProcess.hpp"
#include "running/Guarded.hpp"
#include "running/RunLoop.hpp"
#include "store/UserDefaults.hpp"

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The hub's operations that the import uses.
class ImportHub : public InspectionHub {
public:
    virtual Catalogue& catalogue() = 0;
    virtual UserDefaults& defaults() = 0;
    virtual Workspace& workspace() = 0;
    virtual RunLoop& runLoop() = 0;
    virtual FaultyBooks& faultyBooks() = 0;
    // Refills the library view that is shown. Main thread only.
    virtual void refreshBookView() = 0;
};

// The controls that show the progress of an import and the files that it rejected.
struct ImportOutlets {
    ProgressIndicator& processIndicator;
    ProgressIndicator& progressBar;
    TextField& procText;
    Button& stopButton;
    Window& indicatorWindow;
    Window& errorWin;
    TextField& errorList;
};

// Whether the desktop passed the files to the program. Such files are always copied.
enum class HandedOver : bool { No, Yes };

// Imports files into the library. A batch runs on the calling thread. Batches run one after another, and so do
// inspections, because they share one scratch folder. Accesses controls on the main thread only.
class EpubImport {
public:
    EpubImport(ImportHub& hub, const ImportOutlets& outlets);

    // Imports the files on a background thread and returns immediately. Main thread only.
    void draggedEpubs(std::vector<std::string> files);

    // Imports the files, refreshes the view if books were added, and shows the rejected files. Thread-safe.
    void process_Epubs(const std::vector<std::string>& files);

    // Imports the files that are not in the library yet, in order, until cancelled. Returns the paths of the archives
    // in the library. Thread-safe.
    std::vector<std::string> booksFromFilesArray(
        const std::vector<std::string>& files, HandedOver handedOver = HandedOver::No);

    // Stops the running batch before its next file. Thread-safe.
    void cancelProcess() { _cancelled = true; }

    // Returns whether an import is running or waiting for another.
    bool isUnderWay() const { return _countUnderWay > 0; }
    // Blocks until no import is running. Must not be called on the main thread, because imports wait for it.
    void waitForImports();

    // Only inspects one archive. Thread-safe.
    BookInfoPtr getBookInfo(const std::string& archivePath, StopOnErrors stopOnErrors);

    // Called when the program ends: stops the running and the waiting batches without finishing the current book.
    // Thread-safe.
    void end() { _ended = true; }

    struct SingleBook {
        // Null if the file was rejected.
        BookInfoPtr book;
        // True if a copy was made. False if the archive in the library folder belongs to another book.
        bool isCopied = false;
    };
    // Inspects a file that is read without being added to the library, and copies it into the library folder while it
    // is read. Thread-safe.
    SingleBook bookFromSingleFile(const std::string& path);

    // Inspects a file of the program itself, which is neither added to the library nor copied. Thread-safe.
    BookInfoPtr bookFromOwnFile(const std::string& path);

    // Removes such a copy after reading, in the background, unless a book of the library uses it. Main thread only.
    void removeSingleCopy(const std::string& path);

    // Shows and clears the rejection lines, if there are any. Thread-safe.
    void showFaultyBooks();

private:
    // Counts one import during its lifetime.
    class UnderWay;
    // The progress display of a batch.
    class Progress;
    // The inspection process, with its scratch folder.
    struct Inspector {
        Inspector(InspectionHub& hub, std::function<bool()> isEnded)
            : process(hub, std::move(isEnded))
        {
        }

        InspectionProcess process;
        // True if no file was inspected since the folder was emptied.
        bool scratchIsEmpty = false;

        void emptyScratch();
        BookInfoPtr inspect(const std::string& file, const ScaledCover* cover = nullptr);
    };

    void onMainThread(std::function<void()> work);
    // Returns for each file whether it is not in the library yet.
    std::vector<bool> newOnes(const std::vector<std::string>& files);
    // Returns null if the file is rejected.
    BookInfoPtr importFile(
        Inspector& inspector, const std::string& file, const std::string& mode, const ImportPrefetch::Results& ahead);
    // Returns the path in the library folder of a file that was copied there under the name `copy`.
    std::string archiveOf(const std::string& file, const std::optional<std::string>& copy) const;
    // `inspector` proves that the lock is held: no file is being inspected that could be copied to the same path.
    void removeLeftCopies(const Inspector& inspector);

    ImportHub& _mainController;
    ImportOutlets _outlets;
    std::atomic<bool> _cancelled = false;
    std::atomic<bool> _ended = false;
    // Held while a batch runs.
    std::mutex _batch;
    // Held while a file is inspected.
    Guarded<Inspector> _inspector;
    // Number of running and waiting imports.
    std::atomic<int> _countUnderWay = 0;
    // Copies that are no longer read and must be removed.
    Guarded<std::vector<std::string>> _leftCopies;
};

}
