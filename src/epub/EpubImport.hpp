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

// Imports files into the library. A batch runs on the calling thread. Batches run one after another, and so do
// inspections, because they share one scratch folder. Controls are used on the main thread only.
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
    bool isUnderWay() const { return _countUnderWay > 0; }
    // Waits until none is under way. Not called on the main thread, which imports wait for.
    void waitForImports();

    // Inspects one archive, without anything else. Any thread.
    BookInfoPtr getBookInfo(const std::string& archivePath, StopOnErrors stopOnErrors);

    // The program ends: stops the running and the waiting batches without finishing the current book. Any thread.
    void end() { _ended = true; }

    struct SingleBook {
        // Null when the file was rejected.
        BookInfoPtr book;
        // Whether a copy was made that is not another book's archive.
        bool isCopied = false;
    };
    // Inspects one file that is to be read and not catalogued, and copies it into the library folder for that reading.
    // Any thread.
    SingleBook bookFromSingleFile(const std::string& path);

    // Inspects a file of the program's own, which is neither catalogued nor copied. Any thread.
    BookInfoPtr bookFromOwnFile(const std::string& path);

    // Removes such a copy after reading, in the background, unless a book of the library uses it. Main thread.
    void removeSingleCopy(const std::string& path);

    // Shows the rejection lines, if there are any, and forgets them. Any thread.
    void showFaultyBooks();

private:
    // Counts one import during its lifetime.
    class UnderWay;
    // The progress display of a batch.
    class Progress;
    // The inspection, with its scratch folder.
    struct Inspector {
        Inspector(InspectionHub& hub, std::function<bool()> isEnded)
            : process(hub, std::move(isEnded))
        {
        }

        InspectionProcess process;
        // Whether no file was inspected since the folder was emptied.
        bool scratchIsEmpty = false;

        void emptyScratch();
        BookInfoPtr inspect(const std::string& file, const ScaledCover* cover = nullptr);
    };

    void onMainThread(std::function<void()> work);
    // Which of the files are not in the library yet.
    std::vector<bool> newOnes(const std::vector<std::string>& files);
    // Null when the file is rejected.
    BookInfoPtr importFile(
        Inspector& inspector, const std::string& file, const std::string& mode, const ImportPrefetch::Results& ahead);
    // The path that a file has in the library folder once it was copied there under the name `copy`.
    std::string archiveOf(const std::string& file, const std::optional<std::string>& copy) const;
    // Takes the inspector as proof that no file is inspected: one might be copied to the same place.
    void removeLeftCopies(const Inspector& inspector);

    ImportHub& _mainController;
    ImportOutlets _outlets;
    std::atomic<bool> _cancelled = false;
    std::atomic<bool> _ended = false;
    // Held by a batch for its whole length.
    std::mutex _batch;
    // Held while a file is inspected.
    Guarded<Inspector> _inspector;
    // How many imports are under way or wait.
    std::atomic<int> _countUnderWay = 0;
    // Copies whose reading has ended and that are still to be removed.
    Guarded<std::vector<std::string>> _leftCopies;
};

}
